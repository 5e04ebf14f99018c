// The style file "w_styl72.wdo": the detail choices with their labels and colours, 501 records of 128 bytes.
#pragma once

#include <cstdint>
#include <span>
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

/// Category c, from 0, has the codes premier_code(c) and choix_par_categorie - 1 more, a column of the detail screen;
/// those between the columns are never shown.
inline constexpr int categories = 20, choix_par_categorie = 15, records_par_categorie = 20;
constexpr int premier_code(int categorie) {
    return (categorie + 1) * records_par_categorie;
}
/// The last code that the file holds, and the length of a label.
inline constexpr int code_max = 501;
inline constexpr std::size_t longueur_record = 128, longueur_libelle = 40;

/// The whole file of these choices, each at its code; `jour` is noted as the day of its making.
std::string contenu(std::span<const Style> choix, std::string_view jour);
/// Whether a file of that content counts as initialised; the terminal makes any other one anew.
bool est_initialise(std::string_view contenu);
/// The choices of a file's content, as lis() gives them.
std::vector<Style> depuis(std::string_view contenu);

/// Fills the file with the built-in choices unless it is initialised already. False when it cannot be written.
bool init_styles();
/// All choices, each at its code, 2 to 501; blank where there is none or the file is too short.
std::vector<Style> lis();
/// The headings of the categories 0 to `nombre` - 1, blank where there is none. A file that is not initialised yet is
/// filled before.
std::vector<std::string> titres(int nombre);

}  // namespace styles
