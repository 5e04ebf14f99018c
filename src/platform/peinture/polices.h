// The embedded fonts: measures and glyph pictures, kept once made. References stay valid until the next call of the
// same function.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ecran {

enum class Police : std::uint8_t {
    normale,
    grasse,
    images,
    fixe,  ///< all characters equally wide; only for a program that brings it
};
/// The content of a font file, which stays where it is; to be called before `fixe` is used.
void apporte_police_fixe(const unsigned char* octets);

/// A glyph's coverage, one byte a pixel, with its place from the pen position on the base line.
struct Glyphe {
    int gauche = 0, haut = 0;  ///< from the pen to the picture's top left, pixels (haut is negative upwards)
    int largeur = 0, hauteur = 0;
    float avance = 0;  ///< to the next pen position
    std::vector<std::uint8_t> couverture;
};

inline constexpr int quarts = 4;          ///< places of a glyph between two pixels
inline constexpr int taille_max = 600;    ///< of an em, pixels; larger ones are drawn like this one
inline constexpr int taille_lisible = 9;  ///< captions shrink no further, pixels

/// `taille` is the em size in pixels; `quart` moves the picture to the right by quarters of a pixel.
const Glyphe& glyphe(Police police, int taille, char32_t point, int quart = 0);
/// What is painted for a character of the page 1252: itself, or a blank for a control character.
char32_t point_peint(unsigned char octet);
/// Whether the font has a picture of its own for a code point.
bool possede(Police police, char32_t point);

/// Widths in pixels, for characters of the page 1252.
float avance(Police police, int taille, unsigned char octet);
/// How much closer (negative) two neighbours stand; 0 when `avant` is 0.
float crenage(Police police, int taille, unsigned char avant, unsigned char octet);
float largeur_texte(Police police, int taille, std::string_view texte);

/// As above in twips, for a text of `points` (20 twips each).
int largeur_en_twips(int points, bool gras, std::string_view texte);
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
/// What a caption has to fit into.
struct Place {
    int largeur = 0, hauteur = 0;  ///< pixels
    int lignes_max = 0;            ///< 0: as many as fit the height
    int taille_minimale = taille_lisible;
    int taille_d_une_ligne = 0;  ///< at larger sizes it stands in one line or not at all; 0: at none
};
/// Breaks on words (and at line breaks), shrinks what does not fit, then cuts with "…".
const MiseEnLignes& met_en_lignes(Police police, int taille, std::string_view texte, const Place& place);

}  // namespace ecran
