// Colours, margins and the other constants of the looks, in one place. A screen names a colour by its role.
#pragma once

#include <cstdint>

#include "platform/systeme/texte.h"

namespace ecran {

/// A colour as 0xRRGGBB, or sans_couleur: "as the role says".
using Couleur = std::int32_t;
inline constexpr Couleur sans_couleur = -1;

/// A colour as the files hold it, red in the low byte, and back. A number below 0 is no colour; of one too large the
/// three low bytes count.
Couleur depuis_bgr(std::int32_t bgr);
std::int32_t vers_bgr(Couleur couleur);

namespace palette {
inline constexpr Couleur encre = 0x1F2A36, papier = 0xF4F1EB, blanc = 0xFFFFFF, trait = 0xD9D2C6, gris = 0x6B7280,
                         vert = 0x23704F, rouge = 0xA83A2B, ambre = 0xD98E04, bleu = 0x2F5D8A, noir = 0x000000,
                         doux = 0xECE7DE, repos = 0x5A6170, jaune = 0xF0C64F, pale = 0xC9D1D9;
/// The colours of the digits 0 to 9 that the catalogue gives to keys.
inline constexpr Couleur chiffres[10] = {0xFFFFFF, 0xC24B45, 0xD9782D, 0xF0C64F, 0x4F8F5F,
                                         0x2F7F7C, 0x3F72A8, 0x6E569C, 0xB95A86, 0x7C756B};
/// A colour with the name that managers choose it by.
struct Teinte {
    std::string_view nom;
    Couleur couleur;
};
/// The digits' own first, 1 to 9, then lighter and darker ones.
inline constexpr Teinte teintes[] = {
    {"Rouge", chiffres[1]},  {"Orange", chiffres[2]}, {"Jaune", chiffres[3]},
    {"Vert", chiffres[4]},   {"Canard", chiffres[5]}, {"Bleu", chiffres[6]},
    {"Violet", chiffres[7]}, {"Rose", chiffres[8]},   {"Taupe", chiffres[9]},
    {"Brique", rouge},       {"Ambre", ambre},        {"Sapin", vert},
    {"Marine", bleu},        {"Blanc", blanc},        {"Rouge pâle"_t, 0xF3C9C6},
    {"Pêche"_t, 0xF8D9BE},   {"Crème"_t, 0xFBEFC4},   {"Vert pâle"_t, 0xCFE5D3},
    {"Eau"_t, 0xC6E2E0},     {"Ciel"_t, 0xCBDDF0},    {"Lilas", 0xDCD2EA},
    {"Dragée"_t, 0xF0D3DF},  {"Lin", doux},           {"Gris", gris},
    {"Encre", encre},        {"Chocolat", 0x5A3A29},  {"Noir", noir},
};
}  // namespace palette

/// What a control, or a cell, looks like. Gives its ground, text and border; a control's own colours go before.
enum class Role : std::uint8_t {
    rien,           ///< no ground: what lies below shows
    papier,         ///< the ground of a form
    bandeau,        ///< ink, the top and bottom banner
    carte,          ///< a white panel with rounded corners and a thin border
    touche,         ///< a plain white key
    touche_douce,   ///< a key of second rank ("C", "Liste"), warm grey
    action,         ///< an ink key
    aller,          ///< the green key that says go
    detruire,       ///< the red key
    attendre,       ///< the amber key
    note,           ///< the blue key
    vide,           ///< the place of a key that is not there: warm grey, no border, no shadow
    entete,         ///< heading of a list
    ligne,          ///< row of a list
    titre_groupe,   ///< heading row within a list
    pastille,       ///< a white disc with a red text
    choisie,        ///< a plain key that is chosen: green border and a mark
    champ,          ///< text field: white, blue border
    boite,          ///< the ground of a message box: white, blue bar on top, shadow
    clavier,        ///< the ground of the keyboard: warm grey, rounded on top, shadow
    ligne_touchee,  ///< row of a list that was touched last: pale blue
    ligne_choisie,  ///< row of a list that is chosen: blue, with a mark at its end
    repos,          ///< a key that leads no further now: flat, grey, whatever colours it has; it can be touched
    compte,         ///< a white disc with an ink edge and text
    puce,           ///< cell of a list that shows its own colour on a rounded chip
};

/// The ground of a role, sans_couleur when it has none.
Couleur fond_de(Role role);
/// The text colour of a role.
Couleur encre_de(Role role);
/// Whether a role's shape is a key: it shows a press.
bool est_touche(Role role);

/// The contrast from which a text can be read.
inline constexpr double contraste_lisible = 4.5;
/// White, else ink, else black: the first that can be read on `fond`.
Couleur encre_lisible(Couleur fond);
/// Contrast ratio of two colours, 1 to 21, after the relative luminances of sRGB.
double contraste(Couleur a, Couleur b);

/// Lengths in twips (15 to a pixel at scale 1).
inline constexpr int twips_par_pixel = 15;
inline constexpr int twips_par_point = 20;
inline constexpr int rythme = 150;  ///< the distance between two keys
inline constexpr int coin = 150;    ///< radius of a key's corners
inline constexpr int hauteur_bandeau = 390;

}  // namespace ecran
