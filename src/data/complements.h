// The line in hand and its remarks, row by row. sel_arti shows them; the detail and menu screens change them too.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace complements {

inline constexpr std::size_t rangs_min = 20;

/// Takes a line in hand: it becomes etat::texte_travail, its remarks the rows, then empty rows up to rangs_min.
void prend(std::string ligne);
/// All rows, blank ones included.
const std::vector<std::string>& rangs();
/// Puts a text into a row, without the characters that a line's syntax needs.
void pose(std::size_t rang, std::string_view texte);
/// Takes a choice back when a row holds just its label, else puts it into the first blank row, if there is one.
void bascule(std::string_view libelle);
/// Whether a row holds just this label.
bool est_pris(std::string_view libelle);
/// Whether a row ends with this label: details are marked so.
bool est_marque(std::string_view libelle);
/// Removes a row; the following ones move up.
void retire(std::size_t rang);

}  // namespace complements
