// Table number and covers.
#pragma once

namespace ch_numtab {

/// Shows both keypads. Out, when validated: etat::table_couverts and etat::texte_table.
void montre_ch_numtab();

}  // namespace ch_numtab
