// The list of known tables.
#pragma once

namespace lis_tbb {

/// Shows the tables of the catalogue. Out: etat::texte_dialogue the chosen number in three digits, empty without
/// choice.
void montre_lis_tbb();

}  // namespace lis_tbb
