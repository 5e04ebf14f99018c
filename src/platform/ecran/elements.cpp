#include "platform/ecran/elements.h"

#include <algorithm>
#include <cmath>

#include "platform/ecran/images.h"
#include "platform/texte.h"

namespace ecran {
namespace {

// Lengths of the looks, in design pixels.
constexpr int rayon_touche = 10, rayon_boite = 14, hauteur_barre_boite = 10;
constexpr int ombre_touche = 2, etendue_ombre = 18;
constexpr int marge_touche = 8, marge_liste = 12, marge_bandeau = 12, marge_champ = 14, retrait_trait = 14;
constexpr int largeur_ascenseur = 5, cote_icone_max = 96;
constexpr int opacite_voile = 107, opacite_ombre = 34;
constexpr Couleur couleur_ascenseur = 0x9C9386;

Couleur assombrit(Couleur c, int pourcent) {
    const auto canal = [=](int decalage) { return (((c >> decalage) & 0xFF) * (100 - pourcent) / 100) << decalage; };
    return canal(16) | canal(8) | canal(0);
}

/// Ground and text as they are shown: an own colour before that of the role, and a readable text upon an own ground.
struct Teintes {
    Couleur fond, encre;
};
Teintes teintes(const Aspect& a) {
    const Couleur fond = a.fond != sans_couleur ? a.fond : fond_de(a.role);
    if (a.encre != sans_couleur) return {fond, a.encre};
    return {fond, a.fond != sans_couleur ? encre_lisible(a.fond) : encre_de(a.role)};
}

bool mince(Role r) {
    return r == Role::rien || r == Role::bandeau || r == Role::ligne || r == Role::entete || r == Role::titre_groupe;
}

class Liste {
  public:
    Liste(std::vector<Element>& sortie, double echelle, const Appui& appui)
        : sortie_(sortie), echelle_(echelle), appui_(appui) {}

    void ecran(int largeur, int hauteur) { aplat({0, 0, largeur, hauteur}, palette::encre); }

    void forme(const Forme& f, int largeur, int hauteur) {
        if (!f.visible) return;
        if (f.voile) {
            aplat({0, en_pixels(hauteur_bandeau), largeur, hauteur}, palette::encre);
            sortie_.back().opacite = opacite_voile;
        }
        origine_x_ = f.cadre.gauche;
        origine_y_ = f.cadre.haut;
        fond_de_forme(f);
        for (const auto& c : f.controles) {
            if (c->visible) controle(f, *c);
        }
    }

  private:
    std::vector<Element>& sortie_;
    double echelle_;
    const Appui& appui_;
    int origine_x_ = 0, origine_y_ = 0;

    int en_pixels(int twips) const { return static_cast<int>(std::lround(twips * echelle_ / twips_par_pixel)); }
    int px(int design) const { return std::max(1, static_cast<int>(std::lround(design * echelle_))); }
    int em(int points) const {
        return static_cast<int>(std::lround(points * twips_par_point * echelle_ / twips_par_pixel));
    }

    Zone zone(const Cadre& c) const {
        return {en_pixels(origine_x_ + c.gauche), en_pixels(origine_y_ + c.haut), en_pixels(origine_x_ + c.droite()),
                en_pixels(origine_y_ + c.bas())};
    }

    Element& ajoute(Element::Sorte sorte, const Zone& z, Couleur couleur) {
        Element& e = sortie_.emplace_back();
        e.sorte = sorte;
        e.zone = z;
        e.couleur = couleur;
        return e;
    }
    void aplat(const Zone& z, Couleur couleur) {
        if (!z.vide()) ajoute(Element::Sorte::aplat, z, couleur);
    }
    Element& rond(const Zone& z, int rayon, Couleur couleur, Coins coins = tous) {
        Element& e = ajoute(Element::Sorte::rond, z, couleur);
        e.rayon = rayon;
        e.coins = coins;
        return e;
    }

    static Zone retreci(const Zone& z, int n) { return {z.gauche + n, z.haut + n, z.droite - n, z.bas - n}; }

    /// A soft shadow around a box: a few rings, each a little larger and all of them faint.
    void ombre(const Zone& z, int rayon) {
        constexpr int anneaux = 6;
        for (int i = anneaux; i >= 1; --i) {
            const int n = px(etendue_ombre) * i / anneaux;
            const Zone anneau = {z.gauche - n, z.haut - n + px(4), z.droite + n, z.bas + n + px(4)};
            rond(anneau, rayon + n, palette::noir).opacite = 10;
        }
    }

    void fond_de_forme(const Forme& f) {
        const Zone z = zone({0, 0, f.cadre.largeur, f.cadre.hauteur});
        if (f.role == Role::boite) {
            ombre(z, px(rayon_boite));
            rond(z, px(rayon_boite), palette::bleu);
            rond({z.gauche, z.haut + px(hauteur_barre_boite), z.droite, z.bas}, px(rayon_boite), palette::blanc, bas);
        } else if (f.role == Role::clavier) {
            ombre(z, px(rayon_boite));
            rond(z, px(rayon_boite), fond_de(f.role), hauts);
        } else {
            aplat(z, fond_de(f.role));
        }
    }

    bool presse(const Forme& f, const Controle& c, int l, int k) const {
        return appui_.forme == &f && appui_.touche == Touche{const_cast<Controle*>(&c), l, k};
    }

    void controle(const Forme& f, const Controle& c) {
        const Zone z = zone(c.cadre);
        if (z.vide()) return;
        fond(z, c.aspect, !c.est_grille() && presse(f, c, -1, -1));
        if (c.est_grille()) {
            grille(f, c);
        } else if (c.genre == Genre::champ) {
            champ(z, c);
        } else {
            contenu(z, c.aspect, c.aspect.police, c.aspect.gras);
        }
    }

    void fond(const Zone& z, const Aspect& a, bool appuye) {
        const Couleur couleur = teintes(a).fond;
        if (couleur == sans_couleur || z.vide()) return;
        const int r = px(rayon_touche);
        switch (a.role) {
            case Role::rien:
            case Role::papier:
            case Role::bandeau:
            case Role::ligne:
            case Role::titre_groupe:
            case Role::entete:
                return aplat(z, couleur);
            case Role::vide:
                rond(z, r, couleur);
                return;
            case Role::pastille:
                rond(z, (z.bas - z.haut) / 2, couleur);
                return;
            case Role::champ:
                rond(z, r, palette::bleu);
                rond(retreci(z, px(1)), r - 1, couleur);
                return;
            case Role::choisie:
                rond(z, r, palette::vert);
                rond(retreci(z, px(3)), r - 3, appuye ? assombrit(couleur, 10) : couleur);
                return;
            default:
                return panneau(z, couleur, est_touche(a.role), appuye);
        }
    }

    /// A key or a card: border, ground, and under a key a narrow shadow, which goes when it is pressed.
    void panneau(const Zone& z, Couleur couleur, bool touche, bool appuye) {
        const int r = px(rayon_touche);
        if (touche && !appuye) {
            rond({z.gauche, std::max(z.haut, z.bas - 2 * r), z.droite, z.bas + px(ombre_touche)}, r, palette::noir, bas)
                .opacite = opacite_ombre;
        }
        const bool clair = encre_lisible(couleur) != palette::blanc;
        const Couleur bord = couleur == palette::blanc ? palette::trait : assombrit(couleur, clair ? 14 : 18);
        rond(z, r, bord);
        rond(retreci(z, px(1)), r - 1, appuye ? assombrit(couleur, 14) : couleur);
    }

    static std::string peint(const std::string& t, Role role) {
        if (!est_touche(role)) return t;
        if (t == " ") return "Espace";
        return t == "&&" ? "&" : t;
    }

    /// Room for text within a key, a cell or a label.
    Zone place_du_texte(const Zone& z, const Aspect& a) const {
        int cote = mince(a.role) ? 0 : px(marge_touche);
        if (a.role == Role::bandeau && a.alignement != Alignement::centre) cote = px(marge_bandeau);
        if (a.role == Role::ligne || a.role == Role::entete || a.role == Role::titre_groupe) {
            cote = a.alignement == Alignement::centre ? px(4) : px(marge_liste);
        }
        return {z.gauche + cote + en_pixels(a.marge_gauche), z.haut + en_pixels(a.marge_haut), z.droite - cote,
                z.bas - en_pixels(a.marge_bas)};
    }

    void texte(const Zone& z, const std::string& t, int points, bool gras, Alignement alignement, Couleur encre) {
        if (t.empty() || z.vide()) return;
        Element& e = ajoute(Element::Sorte::texte, z, encre);
        e.texte = t;
        e.police = gras ? Police::grasse : Police::normale;
        e.taille = em(points > 0 ? points : 12);
        e.alignement = alignement;
    }

    void icone(const ImageDeTouche& image, int cote, int x, int y, Couleur encre) {
        const int r = cote / 2 + 1;
        Element& e =
            ajoute(Element::Sorte::icone, {x - r, y - r, x + r, y + r}, image.teinte >= 0 ? image.teinte : encre);
        e.glyphe = image.glyphe;
        e.taille = cote;
    }

    void contenu(const Zone& z, const Aspect& a, int police, bool gras) {
        const Couleur encre = teintes(a).encre;
        const std::string t = peint(a.texte, a.role);
        const ImageDeTouche& image = image_de_touche(a.image);
        Zone pour_texte = place_du_texte(z, a);
        if (image.glyphe != 0) pour_texte = pose_image(z, a, image, t.empty(), encre, pour_texte);
        texte(pour_texte, t, police, gras, a.alignement, encre);
        if (a.role == Role::choisie) {
            icone(image_de_touche(image_valider), px(22), z.droite - px(16), z.haut + px(16), palette::vert);
        }
    }

    /// Draws the picture and gives the room that is left for the text.
    Zone pose_image(const Zone& z, const Aspect& a, const ImageDeTouche& image, bool seule, Couleur encre, Zone reste) {
        const int l = z.droite - z.gauche, h = z.bas - z.haut;
        const double grandeur = image.grande ? 1.25 : 1;
        const auto cote = [&](double part) {
            return std::clamp(static_cast<int>(part * grandeur * std::min(l, h)), 4, px(cote_icone_max));
        };
        switch (a.place_image) {
            case PlaceImage::gauche:
                icone(image, cote(0.5), z.gauche + l / 4, z.haut + h / 2, encre);
                return {z.gauche + l * 36 / 100, z.haut, z.droite - px(marge_touche), z.bas};
            case PlaceImage::droite:
                icone(image, std::min(px(34), h), z.droite - px(40), z.haut + h / 2, encre);
                return {reste.gauche, reste.haut, z.droite - px(66), reste.bas};
            case PlaceImage::seule:
                break;
        }
        if (seule) {
            const bool petite = a.role == Role::rien && h < px(40);
            icone(image, cote(petite ? 0.92 : 0.6), (z.gauche + z.droite) / 2, z.haut + h / 2, encre);
            return reste;
        }
        icone(image, std::min(cote(0.42), l * 6 / 10), (z.gauche + z.droite) / 2, z.haut + h * 36 / 100, encre);
        return {reste.gauche - px(4), z.haut + h * 62 / 100, reste.droite + px(4), z.bas - h * 6 / 100};
    }

    void champ(const Zone& z, const Controle& c) {
        const Zone dedans = {z.gauche + px(marge_champ), z.haut + px(3), z.droite - px(marge_champ), z.bas - px(3)};
        if (dedans.vide()) return;
        const int taille = std::clamp(em(c.aspect.police > 0 ? c.aspect.police : 12), 6, dedans.bas - dedans.haut);
        const auto place =
            static_cast<std::size_t>(std::clamp<int>(c.curseur, 0, static_cast<int>(c.aspect.texte.size())));
        const int x =
            static_cast<int>(std::lround(largeur_texte(Police::normale, taille, c.aspect.texte.substr(0, place))));
        const int decalage = std::max(0, x - (dedans.droite - dedans.gauche - px(3)));
        if (!c.aspect.texte.empty()) {
            Element& e = ajoute(Element::Sorte::champ, dedans, teintes(c.aspect).encre);
            e.texte = c.aspect.texte;
            e.taille = taille;
            e.alignement = Alignement::gauche;
            e.decalage = decalage;
        }
        if (c.curseur < 0) return;
        const int milieu = (z.haut + z.bas) / 2, demi = taille * 3 / 5, bord = dedans.gauche + x - decalage;
        aplat({bord, milieu - demi, bord + px(2), milieu + demi}, palette::bleu);
    }

    void grille(const Forme& f, const Controle& c) {
        const Grille& g = c.grille;
        for (int l = 0; l < g.lignes; ++l) {
            if (g.flots <= 1 && l >= g.lignes_fixes && l < g.premiere_ligne) l = g.premiere_ligne;
            if (l >= g.lignes || !rangee(f, c, l)) break;
        }
        if (g.defile) ascenseur(c);
    }

    /// One row; false when it lies below the grid.
    bool rangee(const Forme& f, const Controle& c, int l) {
        const Grille& g = c.grille;
        bool vue = g.colonnes == 0;
        for (int k = 0; k < g.colonnes; ++k) {
            const Cadre cadre = cadre_cellule(c, l, k);
            if (cadre.largeur == 0) continue;
            if (!vue && g.cellule(l, k).role == Role::entete) bande_entete(c, cadre, l);
            vue = true;
            cellule(f, c, l, k, cadre);
        }
        return vue || g.colonnes == 0 || l < g.lignes_fixes;
    }

    /// The heading row as one band under its cells, rounded where the list is.
    void bande_entete(const Controle& c, const Cadre& premiere, int l) {
        const Zone z = zone({c.cadre.gauche, premiere.haut, c.cadre.largeur, premiere.hauteur});
        const Aspect& a = c.grille.cellule(l, 0);
        const Couleur fond = teintes(a).fond;
        rond({z.gauche + px(1), z.haut + px(1), z.droite - px(1), z.bas}, px(rayon_touche) - 1, fond,
             l == 0 ? hauts : aucun);
    }

    void cellule(const Forme& f, const Controle& c, int l, int k, const Cadre& cadre) {
        const Grille& g = c.grille;
        const Aspect& a = g.cellule(l, k);
        const Zone z = zone(cadre);
        if (a.role != Role::entete) fond(z, a, presse(f, c, l, k));
        if (a.role == Role::ligne && presse(f, c, l, k)) aplat(retreci(z, px(2)), palette::doux);
        contenu(z, a, a.police > 0 ? a.police : c.aspect.police, a.gras || c.aspect.gras);
        if (!a.trait) return;
        const int debut = z.gauche + (k == 0 ? px(retrait_trait) : 0);
        const int fin = std::min(z.droite, en_pixels(origine_x_ + c.cadre.droite()) - px(retrait_trait));
        aplat({debut, z.bas - px(1), fin, z.bas}, palette::trait);
    }

    /// How much of the list is in view, and where.
    void ascenseur(const Controle& c) {
        const Grille& g = c.grille;
        const int total = g.lignes - g.lignes_fixes, vues = std::min(total, g.lignes_visibles(c.cadre));
        if (total <= vues || total <= 0) return;
        const int premiere = std::max(0, g.premiere_ligne - g.lignes_fixes);
        int haut_liste = 0;
        if (g.lignes_fixes > 0) haut_liste = cadre_cellule(c, g.lignes_fixes - 1, 0).bas() - c.cadre.haut;
        const int course = c.cadre.hauteur - haut_liste - 180;
        const int hauteur = std::max(300, static_cast<int>(static_cast<std::int64_t>(course) * vues / total));
        const int haut =
            static_cast<int>(static_cast<std::int64_t>(course - hauteur) * premiere / std::max(1, total - vues));
        Zone z = zone({c.cadre.droite() - 150, c.cadre.haut + haut_liste + 90 + haut, 75, hauteur});
        z.droite = z.gauche + px(largeur_ascenseur);
        rond(z, px(largeur_ascenseur) / 2, couleur_ascenseur);
    }
};

void dessine_lignes(const Element& e, Toile& toile) {
    const int l = e.zone.droite - e.zone.gauche, h = e.zone.bas - e.zone.haut;
    const MiseEnLignes& m = met_en_lignes(e.police, e.taille, e.texte, l, h);
    const Metrique metriques = metrique(e.police, m.taille);
    float y = static_cast<float>(e.zone.haut) +
              (static_cast<float>(h) - metriques.hauteur * static_cast<float>(m.lignes.size())) / 2 +
              metriques.ascendante;
    for (const std::string& ligne : m.lignes) {
        const float reste = static_cast<float>(l) - largeur_texte(e.police, m.taille, ligne);
        const float part = e.alignement == Alignement::gauche ? 0 : e.alignement == Alignement::droite ? 1 : 0.5F;
        toile.texte(e.police, m.taille, ligne, static_cast<float>(e.zone.gauche) + std::max(0.F, reste) * part, y,
                    e.couleur);
        y += metriques.hauteur;
    }
}

/// One line, never broken nor shrunk; its beginning goes out of sight when the caret would.
void dessine_champ(const Element& e, Toile& toile) {
    const Metrique m = metrique(e.police, e.taille);
    const float y = static_cast<float>(e.zone.haut + e.zone.bas) / 2 - m.hauteur / 2 + m.ascendante;
    toile.texte(e.police, e.taille, e.texte, static_cast<float>(e.zone.gauche - e.decalage), y, e.couleur);
}

}  // namespace

void fait_la_liste(std::span<Forme* const> pile, const Appui& appui, int largeur, int hauteur, double echelle,
                   std::vector<Element>& liste) {
    Liste l(liste, echelle, appui);
    l.ecran(largeur, hauteur);
    for (const Forme* f : pile) l.forme(*f, largeur, hauteur);
}

void dessine(const Element& e, Toile& toile) {
    switch (e.sorte) {
        case Element::Sorte::aplat:
            return toile.voile(e.zone, e.couleur, e.opacite);
        case Element::Sorte::rond:
            return toile.rectangle_rond(e.zone, e.rayon, e.coins, e.couleur, e.opacite);
        case Element::Sorte::icone:
            return toile.icone(e.glyphe, e.taille, (e.zone.gauche + e.zone.droite) / 2, (e.zone.haut + e.zone.bas) / 2,
                               e.couleur);
        case Element::Sorte::texte:
            return dessine_lignes(e, toile);
        case Element::Sorte::champ:
            return dessine_champ(e, toile);
    }
}

}  // namespace ecran
