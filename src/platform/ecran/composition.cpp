// From the forms to the list of elements: grounds, captions and pictures of controls and cells, in the order in which
// they are painted.
#include <algorithm>
#include <cmath>

#include "platform/ecran/elements.h"
#include "platform/ecran/placement.h"

namespace ecran {
namespace {

using Sorte = Element::Sorte;

// Lengths of the looks, in design pixels.
constexpr int rayon_boite = 12, barre_boite = 10, flou_ombre = 16, descente_ombre = 12;
constexpr int ombre_touche = 2, bord_choisie = 4, bord_case = 3, creux = 2;
constexpr int bande_ascenseur = 18, largeur_ascenseur = 7, marge_ascenseur = 6, ascenseur_min = 24;
constexpr int retrait_trait = 14, largeur_curseur = 3, intervalle_marque = 6;

constexpr int opacite_voile = 115, opacite_ombre = 115, opacite_touche = 45, opacite_touche_sombre = 78;
constexpr Couleur couleur_ascenseur = 0x9A938A, titre_sans_texte = 0xFFF1E2;
constexpr int police_par_defaut = 12;  ///< points

/// What an element is of its control or cell, in the order of painting.
enum class Part : std::uint8_t { bande, ombre, bord, creux, fond, trait, image, texte, curseur, marque, coche };

Couleur nuance(Couleur c, int vers, int pourcent) {
    const auto canal = [=](int decalage) {
        const int v = (c >> decalage) & 0xFF;
        return (v + (vers - v) * pourcent / 100) << decalage;
    };
    return canal(16) | canal(8) | canal(0);
}
Couleur assombrit(Couleur c, int pourcent) {
    return nuance(c, 0, pourcent);
}
/// Ground of a key that is held down; what cannot get darker gets lighter.
Couleur enfonce(Couleur c) {
    return contraste(c, palette::noir) < 2 ? nuance(c, 255, 22) : assombrit(c, 16);
}
Couleur bord_de(Couleur fond) {
    if (fond == palette::blanc) return palette::trait;
    return fond == palette::encre ? fond : assombrit(fond, 12);
}

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
        fond_de_forme(f);
        std::uint64_t rang = 0;
        for (const auto& c : f.controles) {
            ordre_ = numero_forme_ + ++rang * pas_controle;
            if (c->visible) controle(*c);
            coupe_ = ecran_;
        }
    }

  private:
    static constexpr std::uint64_t pas_cellule = 1ULL << 8, pas_controle = 1ULL << 32, pas_forme = 1ULL << 52;
    static constexpr std::uint64_t cellule_max = (1ULL << 24) - 1;

    std::vector<Element>& sortie_;
    Placement p_;
    const Appui& appui_;
    Zone ecran_, coupe_;  ///< nothing is painted outside the latter
    const Forme* forme_ = nullptr;
    std::uint64_t numero_forme_ = 0, ordre_ = 0;  ///< the latter without the part

    /// Every element goes through here; what cannot be seen is left out.
    Element* ajoute(Part part, Sorte sorte, const Zone& cadre, const Zone& zone, Couleur couleur) {
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
        if (Element* e = ajoute(part, Sorte::aplat, z, z, couleur)) e->opacite = opacite;
    }

    void rond(Part part, const Zone& z, int rayon, Couleur couleur, unsigned coins = tous_coins) {
        Element* e = ajoute(part, Sorte::rond, z, z, couleur);
        if (e == nullptr) return;
        e->rayon = std::max(0, rayon);
        e->coins = coins;
    }

    /// A picture of em size `cote` around a point, not painted outside `dans`.
    void icone(Part part, const Zone& dans, char32_t glyphe, int cote, int x, int y, Couleur couleur) {
        const int r = cote / 2 + 1;
        const Zone cadre = {x - r, y - r, x + r, y + r};
        Element* e = ajoute(part, Sorte::icone, cadre, intersection(cadre, dans), couleur);
        if (e == nullptr) return;
        e->glyphe = glyphe;
        e->taille = cote;
    }

    void fond_de_forme(const Forme& f);
    void ombre_portee(const Zone& z);

    void controle(const Controle& c);
    void fond(const Zone& z, const Aspect& a, bool appuye);
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
    };
    void contenu(const Sujet& s);
    void texte(const Sujet& s, const Zone& place);
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
    void ascenseur(const Vue& v);

    bool presse(const Controle& c, int l, int k) const {
        return appui_.forme == forme_ && appui_.touche == Touche{const_cast<Controle*>(&c), l, k};
    }
};

// --- Forms

void Composition::fond_de_forme(const Forme& f) {
    const Zone z = p_.zone({0, 0, f.cadre.largeur, f.cadre.hauteur});
    if (f.voile) {
        const Zone sous_le_bandeau = {0, p_.pixels(hauteur_bandeau), ecran_.droite, ecran_.bas};
        aplat(Part::bande, sous_le_bandeau, palette::encre, opacite_voile);
    }
    const int r = p_.px(rayon_boite);
    if (f.role == Role::boite) {
        ombre_portee(z);
        const int barre = p_.px(barre_boite);
        rond(Part::bord, {z.gauche, z.haut, z.droite, std::min(z.bas, z.haut + barre + r)}, r, palette::bleu,
             coins_hauts);
        rond(Part::fond, {z.gauche, z.haut + barre, z.droite, z.bas}, r, fond_de(f.role), coins_bas);
    } else if (f.role == Role::clavier) {
        ombre_portee(z);
        rond(Part::fond, z, r, fond_de(f.role), coins_hauts);
    } else if (fond_de(f.role) != sans_couleur) {
        aplat(Part::fond, z, fond_de(f.role));
    }
}

void Composition::ombre_portee(const Zone& z) {
    const int flou = p_.px(flou_ombre), y = p_.px(descente_ombre);
    const Zone boite = {z.gauche, z.haut + y, z.droite, z.bas + y};
    Element* e = ajoute(Part::ombre, Sorte::ombre, boite, retreci(boite, -3 * flou), palette::noir);
    if (e == nullptr) return;
    e->rayon = flou;
    e->opacite = opacite_ombre;
}

// --- Grounds

void Composition::controle(const Controle& c) {
    const Zone z = p_.zone(c.cadre);
    if (z.vide()) return;
    const bool appuye = !c.est_grille() && presse(c, -1, -1);
    fond(z, c.aspect, appuye);
    if (c.est_grille()) return grille(c, z);
    const Sujet s = {z, c.aspect, c.aspect.police, c.aspect.gras};
    if (c.genre == Genre::champ) return saisie(s, c.curseur);
    if (c.genre == Genre::case_) return case_a_cocher(s, c.coche);
    contenu(s);
}

void Composition::fond(const Zone& z, const Aspect& a, bool appuye) {
    const Couleur couleur = teintes(a).fond;
    if (couleur == sans_couleur) return;
    switch (a.role) {
        case Role::rien:
        case Role::papier:
        case Role::bandeau:
        case Role::ligne:
            return aplat(Part::fond, z, couleur);
        case Role::entete:
            return rond(Part::fond, z, p_.pixels(coin), couleur, coins_hauts);
        case Role::vide:
        case Role::clavier:
            return rond(Part::fond, z, p_.pixels(coin), couleur);
        case Role::pastille:
            return pastille(z, couleur);
        case Role::champ:
            return encadre(z, couleur, palette::bleu, 1);
        case Role::choisie:
            if (!appuye) ombre_de_touche(z, couleur);
            return encadre(z, appuye ? enfonce(couleur) : couleur, palette::vert, bord_choisie);
        default:
            return panneau(z, couleur, est_touche(a.role) || a.role == Role::titre_groupe, appuye);
    }
}

void Composition::encadre(const Zone& z, Couleur couleur, Couleur bord, int epaisseur) {
    const int e = p_.px(epaisseur), r = p_.pixels(coin);
    if (Element* cadre = ajoute(Part::bord, Sorte::cadre, z, z, bord)) {
        cadre->rayon = r;
        cadre->decalage = e;
    }
    rond(Part::fond, retreci(z, e), r - e, couleur);
}

/// A key or a card: border and ground. A key casts a narrow shadow; held down it has none, and its upper edge does.
void Composition::panneau(const Zone& z, Couleur couleur, bool touche, bool appuye) {
    if (!appuye) {
        if (touche) ombre_de_touche(z, couleur);
        return encadre(z, couleur, bord_de(couleur), 1);
    }
    const int r = p_.pixels(coin);
    rond(Part::bord, z, r, assombrit(couleur, 34));
    const Zone dedans = retreci(z, p_.px(1));
    rond(Part::fond, {dedans.gauche, dedans.haut + p_.px(creux), dedans.droite, dedans.bas}, r - p_.px(1),
         enfonce(couleur));
}

void Composition::ombre_de_touche(const Zone& z, Couleur couleur) {
    const int r = p_.pixels(coin), descente = p_.px(ombre_touche);
    const Zone vue = {z.gauche, std::max(z.haut, z.bas - r), z.droite, z.bas + descente};
    Element* e = ajoute(Part::ombre, Sorte::pied, z, vue, palette::encre);
    if (e == nullptr) return;
    e->rayon = r;
    e->decalage = descente;
    e->opacite = couleur == palette::encre ? opacite_touche_sombre : opacite_touche;
}

void Composition::pastille(const Zone& z, Couleur couleur) {
    const int d = std::min(z.droite - z.gauche, z.bas - z.haut);
    const int x = (z.gauche + z.droite - d) / 2, y = (z.haut + z.bas - d) / 2;
    rond(Part::fond, {x, y, x + d, y + d}, d / 2, couleur);
}

// --- Captions and pictures

void Composition::contenu(const Sujet& s) {
    const Aspect& a = s.aspect;
    PlaceContenu place = p_.contenu(s.z, a, !legende(a).empty(), s.rang);
    const ImageDeTouche& image = image_de_touche(a.image);
    if (image.glyphe != 0) {
        const Couleur encre = image.teinte != sans_couleur ? image.teinte : teintes(a).encre;
        icone(Part::image, s.z, image.glyphe, place.cote, place.x, place.y, encre);
    }
    if (a.role != Role::choisie) return texte(s, place.texte);
    const PlaceMarque m = p_.marque(s.z, a.alignement);
    if (m.au_bout) place.texte.droite = std::min(place.texte.droite, m.disque.gauche - p_.px(intervalle_marque));
    texte(s, place.texte);
    marque(m.disque);
}

void Composition::texte(const Sujet& s, const Zone& place) {
    const std::string_view t = legende(s.aspect);
    if (t.empty() || place.vide()) return;
    Element* e = ajoute(Part::texte, Sorte::texte, place, s.z, teintes(s.aspect).encre);
    if (e == nullptr) return;
    e->texte = t;
    e->police = s.gras ? Police::grasse : Police::normale;
    e->taille = p_.em(s.police > 0 ? s.police : police_par_defaut);
    e->alignement = s.aspect.alignement;
    e->lignes_max = s.rang.liste || s.aspect.role == Role::bandeau ? 1 : 0;
}

void Composition::marque(const Zone& disque) {
    const int d = disque.droite - disque.gauche;
    rond(Part::marque, disque, d / 2, palette::vert);
    icone(Part::coche, disque, image_de_touche(image_valider).glyphe, d * 4 / 5, disque.gauche + d / 2,
          disque.haut + d / 2, palette::blanc);
}

void Composition::saisie(const Sujet& s, int curseur) {
    const Zone dedans = p_.dans_le_champ(s.z);
    if (dedans.vide()) return;
    const std::string_view t = s.aspect.texte;
    const Police police = s.gras ? Police::grasse : Police::normale;
    const int taille = std::clamp(p_.em(s.police > 0 ? s.police : police_par_defaut), 1,
                                  std::max(1, (dedans.bas - dedans.haut) * 9 / 10));
    const int epaisseur = p_.px(largeur_curseur);
    int x = 0;
    if (curseur > 0) {
        x = static_cast<int>(
            std::lround(largeur_texte(police, taille, t.substr(0, static_cast<std::size_t>(curseur)))));
    }
    const int decalage = std::max(0, x + epaisseur - (dedans.droite - dedans.gauche));
    if (!t.empty()) {
        if (Element* e = ajoute(Part::texte, Sorte::saisie, dedans, dedans, teintes(s.aspect).encre)) {
            e->texte = t;
            e->police = police;
            e->taille = taille;
            e->decalage = decalage;
        }
    }
    if (curseur < 0) return;
    const int milieu = (s.z.haut + s.z.bas) / 2, demi = std::min(taille * 3 / 5, (dedans.bas - dedans.haut) / 2);
    const int gauche = dedans.gauche + x - decalage;
    aplat(Part::curseur, {gauche, milieu - demi, gauche + epaisseur, milieu + demi}, palette::bleu);
}

void Composition::case_a_cocher(const Sujet& s, bool coche) {
    const Zone boite = p_.case_a_cocher(s.z, !s.aspect.texte.empty());
    const int cote = boite.droite - boite.gauche;
    if (coche) {
        rond(Part::bord, boite, p_.pixels(coin), palette::vert);
        icone(Part::coche, boite, image_de_touche(image_valider).glyphe, cote * 9 / 10, boite.gauche + cote / 2,
              boite.haut + cote / 2, palette::blanc);
    } else {
        encadre(boite, palette::blanc, palette::gris, bord_case);
    }
    ordre_ += pas_cellule;
    texte(s, {boite.droite + (boite.gauche - s.z.gauche), s.z.haut, s.z.droite, s.z.bas});
}

// --- Grids

/// Whether the vectors of a grid are as long as its size says.
bool est_entiere(const Grille& g) {
    const auto lignes = static_cast<std::size_t>(std::max(0, g.lignes));
    const auto colonnes = static_cast<std::size_t>(std::max(0, g.colonnes));
    return lignes > 0 && colonnes > 0 && g.cellules.size() >= lignes * colonnes &&
           (g.largeurs.empty() || g.largeurs.size() >= colonnes) && (g.hauteurs.empty() || g.hauteurs.size() >= lignes);
}

/// Whether all rows are always in view.
bool tient_en_entier(const Grille& g) {
    return g.flots > 1 || (g.hauteur_ligne == 0 && g.hauteurs.empty());
}

bool deborde(const Controle& c) {
    const Grille& g = c.grille;
    return g.defile && !tient_en_entier(g) && g.lignes - g.lignes_fixes > g.lignes_visibles(c.cadre);
}

void Composition::grille(const Controle& c, const Zone& z) {
    const Grille& g = c.grille;
    if (!est_entiere(g)) return;
    Vue v = {c, z, z, c.aspect.role == Role::carte};
    const bool avec_ascenseur = deborde(c);
    if (v.carte) {
        v.utile = retreci(z, p_.px(1));
        if (avec_ascenseur) v.utile.droite -= p_.px(bande_ascenseur);
    } else {
        v.utile.bas += p_.px(ombre_touche);
    }
    const std::uint64_t debut = ordre_;
    const int premiere = tient_en_entier(g) ? 0 : std::max({g.premiere_ligne, g.lignes_fixes, 0});
    for (int l = 0; l < g.lignes; ++l) {
        if (l == g.lignes_fixes && l < premiere) l = premiere;
        ordre_ = debut;
        if (l >= g.lignes || (!rangee(v, l) && l >= premiere)) break;
    }
    ordre_ = debut + cellule_max * pas_cellule;
    coupe_ = ecran_;
    if (avec_ascenseur) ascenseur(v);
}

/// One row; false when nothing of it is in view.
bool Composition::rangee(const Vue& v, int l) {
    const Grille& g = v.c.grille;
    const std::uint64_t debut = ordre_;
    int derniere = g.colonnes - 1;
    while (derniere > 0 && !g.largeurs.empty() && g.largeurs[static_cast<std::size_t>(derniere)] <= 0) --derniere;
    bool vue = false;
    for (int k = 0; k < g.colonnes; ++k) {
        const Cadre cadre = cadre_cellule(v.c, l, k);
        if (cadre.largeur <= 0 || cadre.hauteur <= 0) continue;
        const std::uint64_t numero =
            static_cast<std::uint64_t>(l) * static_cast<std::uint64_t>(g.colonnes) + static_cast<std::uint64_t>(k) + 1;
        ordre_ = debut + std::min(numero, cellule_max) * pas_cellule;
        cellule(v, l, k, cadre, {v.carte, !vue, k == derniere});
        vue = true;
    }
    return vue || tient_en_entier(g);
}

void Composition::cellule(const Vue& v, int l, int k, const Cadre& cadre, const Rang& rang) {
    const Grille& g = v.c.grille;
    const Aspect& a = g.cellule(l, k);
    Cadre plein = cadre;
    if (!tient_en_entier(g)) {
        plein.hauteur = g.hauteurs.empty() ? g.hauteur_ligne : g.hauteurs[static_cast<std::size_t>(l)];
    }
    const Zone z = p_.zone(plein);
    const bool appuye = presse(v.c, l, k);
    coupe_ = intersection(v.utile, ecran_);
    const bool touche = est_touche(a.role) || a.role == Role::vide || g.espace > 0;
    if (touche) {
        fond(z, a, appuye);
    } else {
        const bool au_bout = rang.derniere && (a.role == Role::entete || a.role == Role::titre_groupe);
        if (a.role == Role::entete) coupe_ = intersection(v.carte ? retreci(v.z, p_.px(1)) : v.z, ecran_);
        const int gauche = rang.premiere ? std::min(z.gauche, v.utile.gauche) : z.gauche;
        fond_de_rangee(v, {gauche, z.haut, au_bout ? std::max(z.droite, coupe_.droite) : z.droite, z.bas}, a, appuye);
    }
    if (a.trait) {
        const int debut = rang.premiere ? v.z.gauche + p_.px(retrait_trait) : z.gauche;
        const int fin = rang.derniere ? v.utile.droite - p_.px(retrait_trait) : z.droite;
        aplat(Part::trait, {debut, z.bas - p_.px(1), fin, z.bas}, palette::trait);
    }
    const bool rang_de_liste = rang.liste && !touche;
    const Zone vue = {std::max(z.gauche, v.utile.gauche), z.haut, std::min(z.droite, coupe_.droite), z.bas};
    contenu({rang_de_liste ? vue : z,
             a,
             a.police > 0 ? a.police : v.c.aspect.police,
             a.gras || v.c.aspect.gras,
             {rang_de_liste, rang.premiere, rang.derniere}});
}

/// The ground of a row's cell; where it lies in a corner of its card it is rounded like the card.
void Composition::fond_de_rangee(const Vue& v, const Zone& z, const Aspect& a, bool appuye) {
    Couleur couleur = teintes(a).fond;
    if (a.role == Role::titre_groupe && a.fond == sans_couleur && a.texte.empty()) couleur = titre_sans_texte;
    if (appuye) couleur = couleur == sans_couleur ? palette::doux : enfonce(couleur);
    if (couleur == sans_couleur) return;
    const Zone dans = intersection(z, coupe_);
    if (!v.carte) return aplat(Part::fond, dans, couleur);
    const Zone carte = retreci(v.z, p_.px(1));
    unsigned coins = tous_coins;
    if (dans.gauche > carte.gauche) coins &= ~unsigned{haut_gauche | bas_gauche};
    if (dans.droite < carte.droite) coins &= ~unsigned{haut_droite | bas_droite};
    if (dans.haut > carte.haut) coins &= ~unsigned{coins_hauts};
    if (dans.bas < carte.bas) coins &= ~unsigned{coins_bas};
    rond(Part::fond, dans, p_.pixels(coin) - p_.px(1), couleur, coins);
}

/// How much of the list is in view, and where: within a card, else in the margin at the right.
void Composition::ascenseur(const Vue& v) {
    const Grille& g = v.c.grille;
    const int total = g.lignes - g.lignes_fixes, vues = std::min(total, g.lignes_visibles(v.c.cadre));
    const int premiere = std::clamp(g.premiere_ligne - g.lignes_fixes, 0, std::max(0, total - vues));
    const int marge = p_.px(marge_ascenseur), l = p_.px(largeur_ascenseur);
    int haut = v.z.haut + marge;
    if (g.lignes_fixes > 0) haut = p_.zone(cadre_cellule(v.c, g.lignes_fixes - 1, 0)).bas + marge;
    const int course = v.z.bas - marge - haut;
    if (course <= 0) return;
    const auto part = [&](int longueur, int n, int sur) {
        return static_cast<int>(static_cast<std::int64_t>(longueur) * n / std::max(1, sur));
    };
    const int h = std::clamp(part(course, vues, total), std::min(course, p_.px(ascenseur_min)), course);
    const int y = haut + part(course - h, premiere, total - vues);
    const int x = v.carte ? v.z.droite - marge - l : std::min(v.z.droite + p_.px(2), ecran_.droite - l);
    rond(Part::marque, {x, y, x + l, y + h}, l / 2, couleur_ascenseur);
}

}  // namespace

void compose(std::span<Forme* const> pile, const Appui& appui, int largeur, int hauteur, double echelle,
             std::vector<Element>& liste) {
    Composition c(liste, echelle, appui, {0, 0, largeur, hauteur});
    for (const Forme* f : pile) c.forme(*f);
    for (Element& e : liste) e.empreinte = empreinte(e);
}

}  // namespace ecran
