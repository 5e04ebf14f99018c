// The key grid of the main screen and the function row below it: where the keys lie, what they show, and their codes.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/controles/controles.h"

namespace grille {

inline constexpr int nb_touches = 100;

/// Key codes by key number, 1 to nb_touches; entry 0 stays empty.
inline std::array<std::string, nb_touches + 1> codes;
/// Key codes of the function row by column.
inline std::array<std::string, 10> codes_barre;

/// What is told of touches on the keys and on the function row, and of a cell of the latter that is held.
struct Gestes {
    void (*touche)(int k);
    void (*barre)(int colonne);
    bool (*barre_tenue)(int colonne);
};
/// Adds the keys `btx`, their companions `btt` and counts `btn`, the function row `g2` and what lies on it.
void construit(ecran::Forme& forme, const Gestes& gestes);
/// Lays the function row out for the working size.
void place();
/// Takes all keys off the grid.
void raz_touches();

/// The grid's cells, as the settings say, within bounds.
int colonnes();
int lignes();

/// The cells that a key covers, from the top left; it is cut at the grid's edge.
struct Cases {
    int colonne = 0, ligne = 0, largeur = 1, hauteur = 1;
};
/// Shows key k, a plain one, and gives its look: it is coloured before a price or a picture is put upon it.
ecran::Aspect& pose_touche(int k, const Cases& cases, std::string_view code, std::string_view texte, int police);
/// A price along the bottom of key k.
void pose_prix(int k, std::string_view prix);
/// A picture of the set above the caption of key k, 0: none, and perhaps the mark in the key's corner.
void pose_image(int k, int image, bool marque);

/// In the upper right corner of key k how many of its article the note holds; empty: none.
void pose_compte(int k, std::string_view nombre);

/// Fills the function row: six key codes, each followed by "|", and six groups of six characters whose first two are
/// the picture number.
void init_g2(std::string_view codes_touches, std::string_view images);

}  // namespace grille
