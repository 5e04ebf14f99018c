// The list of elements in the making: forms, controls and cells in the order in which they are painted. Grounds,
// captions and pictures are in composition.cpp, what is special to grids in composition_grille.cpp.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/peinture/elements.h"
#include "platform/peinture/placement.h"

namespace ecran {

/// What an element is of its control or cell, in the order of painting.
enum class Part : std::uint8_t { bande, ombre, bord, fond, trait, colonne, image, texte, curseur, marque, coche };

/// How far a key's shadow reaches below it, design pixels.
inline constexpr int ombre_touche = 2;

/// The colour of a ground that is held down: darker, or lighter when it cannot get darker.
Couleur enfonce(Couleur fond);

/// Turns forms into elements, from the bottom to the top of the stack.
class Composition {
  public:
    Composition(std::vector<Element>& sortie, double echelle, const Appui& appui, const Zone& ecran)
        : sortie_(sortie), p_(echelle), appui_(appui), ecran_(ecran), coupe_(ecran) {
        aplat(Part::fond, ecran, palette::encre);
    }

    void forme(const Forme& f) {
        numero_forme_ += pas_forme;
        if (!f.visible) return;
        forme_ = &f;
        ordre_ = numero_forme_;
        p_.origine(f.cadre.gauche, f.cadre.haut);
        accordees_.clear();
        fond_de_forme(f);
        std::uint64_t rang = 0;
        for (const auto& c : f.controles) {
            ordre_ = numero_forme_ + ++rang * pas_controle;
            if (c->visible) controle(*c);
            coupe_ = ecran_;
        }
        accorde(sortie_, accordees_);
    }

  private:
    static constexpr std::uint64_t pas_cellule = 1ULL << 8, pas_controle = 1ULL << 32, pas_forme = 1ULL << 52;
    static constexpr std::uint64_t cellule_max = (1ULL << 24) - 1;

    std::vector<Element>& sortie_;
    std::vector<Accordee> accordees_;  ///< of the form in the making
    Placement p_;
    const Appui& appui_;
    Zone ecran_, coupe_;  ///< nothing is painted outside the latter
    const Forme* forme_ = nullptr;
    std::uint64_t numero_forme_ = 0, ordre_ = 0;  ///< the latter without the part

    /// Every element goes through here; what cannot be seen is left out.
    Element* ajoute(Part part, Element::Sorte sorte, const Zone& cadre, const Zone& zone, Couleur couleur) {
        const Zone vue = intersection(zone, coupe_);
        if (vue.vide()) return nullptr;
        Element& e = sortie_.emplace_back();
        e.ordre = ordre_ + static_cast<std::uint64_t>(part);
        e.sorte = sorte;
        e.cadre = cadre;
        e.zone = vue;
        e.couleur = couleur;
        return &e;
    }

    void aplat(Part part, const Zone& z, Couleur couleur, int opacite = opaque) {
        if (Element* e = ajoute(part, Element::Sorte::aplat, z, z, couleur)) e->opacite = opacite;
    }

    void rond(Part part, const Zone& z, int rayon, Couleur couleur, unsigned coins = tous_coins) {
        Element* e = ajoute(part, Element::Sorte::rond, z, z, couleur);
        if (e == nullptr) return;
        e->rayon = std::max(0, rayon);
        e->coins = coins;
    }

    /// A picture of em size `cote` around a point, not painted outside `dans`.
    void icone(Part part, const Zone& dans, char32_t glyphe, int cote, int x, int y, Couleur couleur) {
        const int r = cote / 2 + 1;
        const Zone cadre = {x - r, y - r, x + r, y + r};
        Element* e = ajoute(part, Element::Sorte::icone, cadre, intersection(cadre, dans), couleur);
        if (e == nullptr) return;
        e->glyphe = glyphe;
        e->taille = cote;
    }

    void fond_de_forme(const Forme& f);
    void ombre_portee(const Zone& z);

    void controle(const Controle& c);
    void fond(const Zone& z, const Aspect& a, bool appuye);
    void marque_appui(const Controle& c, const Zone& z);
    void encadre(const Zone& z, Couleur couleur, Couleur bord, int epaisseur);
    void panneau(const Zone& z, Couleur couleur, bool touche, bool appuye);
    void ombre_de_touche(const Zone& z, Couleur couleur);
    void pastille(const Zone& z, Couleur couleur);

    /// A control or cell whose ground is painted.
    struct Sujet {
        Zone z;
        const Aspect& aspect;
        int police;  ///< points
        bool gras;
        Rang rang{};
        int debord = 0;  ///< pixels that the caption's accents and tails may stand over the zone, above and below
    };
    void contenu(const Sujet& s);
    void texte(const Sujet& s, const Zone& place) { texte(s, place, place); }
    void texte(const Sujet& s, const Zone& place, const Zone& mesure);
    void choisie(const Sujet& s, Zone place);
    void marque(const Zone& disque);
    void saisie(const Sujet& s, int curseur);
    void case_a_cocher(const Sujet& s, bool coche);

    /// A grid while its cells are composed.
    struct Vue {
        const Controle& c;
        Zone z;      ///< the whole grid
        Zone utile;  ///< where cells are seen
        bool carte;
    };
    void grille(const Controle& c, const Zone& z);
    bool rangee(const Vue& v, int l);
    void cellule(const Vue& v, int l, int k, const Cadre& cadre, const Rang& rang);
    void fond_de_rangee(const Vue& v, const Zone& z, const Aspect& a, bool appuye);
    void lignes_vides(const Vue& v);
    void ascenseur(const Vue& v);

    bool presse(const Controle& c, int l, int k) const {
        return appui_.forme == forme_ && appui_.touche == Touche{const_cast<Controle*>(&c), l, k};
    }
};

}  // namespace ecran
