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

inline constexpr int quarts = 4;  ///< places of a glyph between two pixels

/// `taille` is the em size in pixels, kept within 1 to 600; `quart` moves the picture to the right by quarters of a
/// pixel.
const Glyphe& glyphe(Police police, int taille, char32_t point, int quart = 0);
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
/// Breaks on words (and at line breaks), shrinks what does not fit, then cuts with "…". The result stays valid until
/// the next call.
const MiseEnLignes& met_en_lignes(Police police, int taille, std::string_view texte, int largeur, int hauteur);

}  // namespace ecran
