// The remarks of the line in hand, row by row. sel_arti shows them; the detail and menu screens change them too.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace complements {

inline constexpr std::size_t rangs_min = 20;

/// The rows of a line that is opened: its remarks, then empty rows up to rangs_min.
void charge(std::vector<std::string> segments);
/// All rows, blank ones included.
const std::vector<std::string>& rangs();
/// Puts a text into a row, without the characters that a line's syntax needs.
void pose(std::size_t rang, std::string_view texte);
/// Puts a text into the first blank row, or a new one.
void ajoute(std::string_view texte);
/// Removes a row; the following ones move up.
void retire(std::size_t rang);

}  // namespace complements
