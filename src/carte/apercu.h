// Pictures of a card, drawn by the terminal itself: it is started beside, on a directory of its own, and played.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "carte/carte.h"
#include "carte/tableaux.h"

namespace apercu {

/// A picture: what it shows, UTF-8, and its file as it is, empty when the terminal has not drawn it.
struct Image {
    std::string titre, png;
    bool dessinee = true;  ///< false: the title is all
};
struct Section {
    std::string titre;
    std::vector<Image> images;
};
struct Resultat {
    std::vector<Section> sections;
    std::string faute;  ///< why pictures are missing, UTF-8, for people; empty: none is
};

/// Draws servers, home pages, families, menus and details. A "wwinqx42.wdo" in the folder of the sheets, copied from a
/// tablet, gives the format and the grid; else they are those of a tablet of 1280 x 800.
Resultat dessine(const carte::Carte& carte, std::string_view dossier);

/// The page for the manager's browser, UTF-8, all in one: faults first, then the pictures. `dossier`: where the sheets
/// lie, UTF-8.
std::string page(std::string_view dossier, const tableaux::Constats& constats, const Resultat& images);

}  // namespace apercu
