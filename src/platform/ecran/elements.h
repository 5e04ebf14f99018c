// What is to be seen, as a flat list: each turn the painter makes it anew from the forms and compares it with the one
// it painted last.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ecran/peintre.h"
#include "platform/ecran/toile.h"

namespace ecran {

struct Element {
    enum class Sorte : std::uint8_t { aplat, rond, texte, champ, icone };
    Sorte sorte = Sorte::aplat;
    Zone zone;  ///< nothing of it lies outside
    Couleur couleur = 0;
    int opacite = 255;
    int rayon = 0;  ///< of a rounded rectangle
    Coins coins = tous;
    Police police = Police::normale;
    int taille = 0;  ///< em size in pixels
    Alignement alignement = Alignement::centre;
    std::string texte;
    char32_t glyphe = 0;
    int decalage = 0;  ///< pixels by which a field's text is moved to the left

    bool operator==(const Element&) const = default;
    /// Hides what lies below its zone.
    bool est_opaque() const { return sorte == Sorte::aplat && opacite == 255; }
};

/// The list for a stack of forms upon a screen of that size in pixels.
void fait_la_liste(std::span<Forme* const> pile, const Appui& appui, int largeur, int hauteur, double echelle,
                   std::vector<Element>& liste);

/// Draws one element.
void dessine(const Element& e, Toile& toile);

}  // namespace ecran
