// Text of spreadsheets, CSV: cut into cells, and cells made fit for it. Bytes as they are, whatever their character
// set.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tableur {

using Rangees = std::vector<std::vector<std::string>>;

/// The rows of a text whose lines end with "\n". A cell may stand between quotation marks and then hold line ends and
/// separators; blanks around it are left out. `ferme`: whether the last quotation mark is closed.
Rangees decoupe(std::string_view texte, char separateur, bool& ferme);

/// A row with its end, CR LF. Only the cells that need quotation marks have them.
std::string rangee(const std::vector<std::string>& cases, char separateur);

}  // namespace tableur
