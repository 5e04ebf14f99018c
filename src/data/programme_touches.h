// The key program "progppb.wdo": 5000 records of 256 bytes, 50 pages of 100; lines 1 to 95 of a page are its keys.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace programme_touches {

inline constexpr int nb_pages = 50, lignes_par_page = 95;

/// One key line; the record's bytes as they stand in the file.
struct Ligne {
    std::string record;  ///< may be shorter than a whole record

    std::string_view reference() const;
    std::string_view libelle() const;
    int largeur() const;  ///< cells, the first digit of "LH", at least 1
    int hauteur() const;  ///< cells, the second digit, at least 1
    int image() const;    ///< picture number, 0: none
    bool visible() const;
    int taille() const;            ///< font size in points, 0: that of the families
    std::int32_t couleur() const;  ///< red in the low byte, -1: the plain key
    std::string_view action() const;
};

/// Opens the file and creates it blank when it is missing or not filled. False when it can be neither.
bool prepare();
void ferme();

/// The key lines of a page, line 1 at index 0; empty outside the pages 0 to 49.
std::vector<Ligne> lis_page(int page);

}  // namespace programme_touches
