// The embedded fonts: measures and glyph pictures, kept once made.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ecran {

enum class Police : std::uint8_t { normale, grasse, images };

/// A glyph's coverage, one byte a pixel, with its place from the pen position on the base line.
struct Glyphe {
    int gauche = 0, haut = 0;  ///< from the pen to the picture's top left, pixels (haut is negative upwards)
    int largeur = 0, hauteur = 0;
    float avance = 0;  ///< to the next pen position
    std::vector<std::uint8_t> couverture;
};

/// `taille` is the em size in pixels.
const Glyphe& glyphe(Police police, int taille, char32_t point);
float largeur_texte(Police police, int taille, std::string_view texte);
/// From the top of the line box to the base line, and the line's height, in pixels.
struct Metrique {
    float ascendante, hauteur;
};
Metrique metrique(Police police, int taille);

/// A caption broken into lines that fit.
struct MiseEnLignes {
    int taille = 0;  ///< em size in pixels after shrinking
    std::vector<std::string> lignes;
};
/// Breaks on words (and at CR LF), shrinks what does not fit down to `taille_minimale`, then cuts with "…".
/// `lignes_max` 0: as many as fit the height.
const MiseEnLignes& met_en_lignes(Police police, int taille, std::string_view texte, int largeur, int hauteur,
                                  int lignes_max = 0);

}  // namespace ecran
