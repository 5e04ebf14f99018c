// What is to be seen, as a flat list of simple shapes: each turn the painter makes it anew from the forms and compares
// it with the one that it painted last, or with others that it keeps.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/controles/controles.h"
#include "platform/peinture/toile.h"

namespace ecran {

struct Element {
    enum class Sorte : std::uint8_t {
        aplat,   ///< a rectangle
        rond,    ///< a rectangle with round corners
        ombre,   ///< the soft shadow of a box: `cadre` is the box, `rayon` the blur
        pied,    ///< the narrow shadow of a key: `cadre` is the key, `decalage` how much lower the shadow lies
        texte,   ///< a caption, broken and shrunk to fit
        saisie,  ///< a field's text: one line, never shrunk, moved left by `decalage`
        icone,   ///< a glyph of the icon font in the middle of `cadre`
    };
    std::uint64_t ordre = 0;      ///< place of form, control, cell and part: grows along the list, and stays the same
    std::uint64_t empreinte = 0;  ///< of all that follows; two elements with the same one look the same
    Sorte sorte = Sorte::aplat;
    Zone cadre;  ///< pixels; the shape's own rectangle
    Zone zone;   ///< nothing of it is painted outside
    Couleur couleur = 0;
    int opacite = opaque;
    int rayon = 0;
    unsigned coins = tous_coins;
    std::string_view texte;  ///< lies in the form, valid during the turn in which the list was made
    Police police = Police::normale;
    int taille = 0;  ///< em size in pixels
    Alignement alignement = Alignement::centre;
    int lignes_max = 0;  ///< of a caption, 0: as many as fit; it is broken into 2 only below two thirds of its size
    char32_t glyphe = 0;
    int decalage = 0;  ///< pixels, of a field's text or a key's shadow

    /// Hides all that lies below its zone.
    bool couvre() const { return sorte == Sorte::aplat && opacite >= opaque; }
    /// A caption or a picture: hardly a row of it is like the one above.
    bool est_ecrit() const { return sorte == Sorte::texte || sorte == Sorte::saisie || sorte == Sorte::icone; }
};

/// Makes the list for a stack of forms upon a screen of that size in pixels; see Peintre::peint().
void compose(std::span<Forme* const> pile, const Appui& appui, int largeur, int hauteur, double echelle,
             std::vector<Element>& liste);

/// A caption that shares its size with others of its form: its place in the list, and the room that counts for this.
struct Accordee {
    std::size_t rang;
    Zone mesure;
};
/// Gives captions of one form that share a size the largest one at which nine of ten fit in at most three lines, not
/// below seven tenths of the one set; the others shrink alone.
void accorde(std::vector<Element>& liste, std::span<const Accordee> legendes);

/// A line of a caption as it is painted: its size, and where it begins on its base line, pixels.
struct LignePeinte {
    std::string_view texte;
    int taille;
    float x, y;
};
/// The lines of a caption in their places, one after another.
void parcourt_lignes(const Element& legende, const std::function<void(const LignePeinte&)>& ligne);

/// A number that tells an element's looks from all others'.
std::uint64_t empreinte(const Element& e);

/// Marks the rows at which a shape does not look as in the row above. `rangs` are those from `haut` on.
void marque_rangs(const Element& forme, int haut, std::span<std::uint8_t> rangs);

/// Draws one element.
void dessine(const Element& e, const Toile& toile);

}  // namespace ecran
