// Validation of an article: quantity, remarks, details of the line in hand.
#pragma once

namespace sel_arti {

/// Shows the line of etat::texte_travail. Out: the completed line, or empty when the waiter erased it.
void montre_sel_arti();

}  // namespace sel_arti
