// What the note holds, as counts on the keys of the main screen.
#pragma once

namespace comptes {

/// Brings the counts of all shown keys up to date: after a page was drawn and whenever the note has changed.
void affiche();

}  // namespace comptes
