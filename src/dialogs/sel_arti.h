// Validation of an article: quantity, remarks, details of the line in hand.
#pragma once

namespace sel_arti {

/// Shows the line that complements::prend() has taken in hand. Out: etat::texte_travail is the completed line, or empty
/// when the waiter erased it.
void montre_sel_arti();

}  // namespace sel_arti
