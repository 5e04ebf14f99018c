// The style file "w_styl72.wdo": the detail choices with their labels and colours, 501 records of 128 bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace styles {

inline constexpr std::string_view nom_fichier = "w_styl72.wdo";

/// One detail choice. Colours have red in the low byte.
struct Style {
    std::string libelle;
    std::int32_t texte = 0, fond = 0xFFFFFF;
};

/// Category c, 0 to 19, begins at this code: its heading, if it has one, then its choices.
constexpr int premier_code(int categorie) {
    return (categorie + 1) * 20;
}

/// Fills the file with the built-in choices unless it is initialised already. False when it cannot be written.
bool init_styles();
/// All choices, each at its code, 2 to 501; blank where there is none or the file is too short.
std::vector<Style> lis();
/// The headings of the categories 0 to `nombre` - 1, blank where there is none.
std::vector<std::string> titres(int nombre);

}  // namespace styles
