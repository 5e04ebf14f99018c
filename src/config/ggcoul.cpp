#include "config/ggcoul.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "config/nuances.h"
#include "config/reglette.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/peinture/placement.h"
#include "platform/systeme/texte.h"

namespace ggcoul {
namespace {

using namespace ecran;
using formes::px;

constexpr int nb_numeros = 9;
/// Records that "Par défaut" blanks: the first of each nine.
constexpr int premiers_records[] = {reglages::fonds + 1, reglages::encres + 1, reglages::fonds_anciens + 1,
                                    reglages::encres_anciens + 1};

/// What carries a number, and how it looks when the manager has set nothing.
struct Sorte {
    std::string_view nom;
    Role role;
    Couleur fond = sans_couleur;
};
constexpr Sorte sortes[nb_numeros] = {
    {"Bandeaux", Role::action},
    {"Rangée du bas"_t, Role::action},
    {"Clavier", Role::touche},
    {"Valeurs", Role::touche},
    {"Valider", Role::aller},
    {"Effacer", Role::detruire},
    {"Titres de liste", Role::touche_douce},
    {"Touches", Role::touche, palette::chiffres[8]},
    {"Listes", Role::touche},
};

/// Of what lies between banner and function row: where it is lower, smaller keys leave room for all.
constexpr int hauteur_basse = px(340);

constexpr int lignes_palette = 2, colonnes_palette = 6;
constexpr std::array<Couleur, 12> couleurs_palette = {palette::chiffres[0], palette::chiffres[1], palette::chiffres[2],
                                                      palette::chiffres[3], palette::chiffres[4], palette::chiffres[5],
                                                      palette::chiffres[6], palette::chiffres[7], palette::chiffres[8],
                                                      palette::chiffres[9], palette::encre,       palette::noir};

constexpr double saturation_vive = 0.7, saturation_grise = 0.1, clarte_moyenne = 0.5, clarte_extreme = 0.05;

constexpr int anneau = px(6), vide_anneau = px(2);  ///< around the key that is being coloured

enum CaseBarre { defaut = 0, annule = 4, valide = 5 };
const formes::ToucheDeBarre barre[6] = {{"Par défaut"_t, image_defaut, Role::detruire},
                                        {},
                                        {},
                                        {},
                                        {"Annuler", image_fermer, Role::action},
                                        formes::touche_valide};

/// Cell i of an area cut into rows and columns.
Cadre part(const Cadre& zone, int lignes, int colonnes, int i) {
    const int l = zone.largeur + rythme, h = zone.hauteur + rythme, c = i % colonnes, r = i / colonnes;
    const int x = l * c / colonnes, y = h * r / lignes;
    return {zone.gauche + x, zone.haut + y, l * (c + 1) / colonnes - x - rythme, h * (r + 1) / lignes - y - rythme};
}

/// The parts of the right, or lower, half.
struct Panneau {
    Cadre onglets, palette, teinte, clarte, carte;
};

/// The parts of the card: a key as the number shows it, the contrast, and what there is to say of it.
struct Exemple {
    Cadre touche, prix, mesure, avis;
};

class Choix {
  public:
    Choix() {
        forme_.nom = "ggcoul";
        formes::encadre(forme_, "Choix des couleurs", formes::version);
        lis();
        construit();
        branche();
        choisit(numero_);
    }

    void montre() { montre_modal(forme_); }

  private:
    struct Paire {
        Couleur fond = sans_couleur, encre = sans_couleur;
        bool operator==(const Paire&) const = default;
    };

    Forme forme_;
    std::array<Paire, nb_numeros + 1> reglees_, lues_;  ///< as chosen here, and as the store has them; from 1
    int numero_ = 1;
    bool du_texte_ = false;   ///< the text is being coloured, not the ground
    nuances::Nuance nuance_;  ///< of the colour in hand; keeps its hue where a colour has none

    void lis() {
        for (int n = 1; n <= nb_numeros; ++n) {
            paire(n) = {depuis_bgr(reglages::couleur(reglages::fonds + n)),
                        depuis_bgr(reglages::couleur(reglages::encres + n))};
        }
        lues_ = reglees_;
    }

    Paire& paire(int n) { return reglees_[static_cast<std::size_t>(n)]; }
    static const Sorte& sorte(int n) { return sortes[n - 1]; }

    /// Both colours as the screens would show them.
    Paire montrees(int n) {
        Aspect a = {.role = sorte(n).role, .fond = sorte(n).fond};
        formes::met_couleurs(a, paire(n).fond, paire(n).encre);
        return {fond_montre(a), encre_montree(a)};
    }

    /// The same, with the text as chosen, be it one that no screen would show.
    Paire choisies(int n) {
        Paire p = montrees(n);
        if (paire(n).encre != sans_couleur) p.encre = paire(n).encre;
        return p;
    }

    Couleur en_main() {
        const Paire p = choisies(numero_);
        return du_texte_ ? p.encre : p.fond;
    }

    // --- controls

    void construit() {
        const Cadre zone = formes::contenu();
        Cadre touches = zone, droite = zone;
        if (formes::est_etroit() && formes::hauteur() >= formes::largeur()) {
            touches.hauteur = zone.hauteur * 33 / 100;
            droite.haut = touches.bas() + rythme;
            droite.hauteur = zone.bas() - droite.haut;
        } else {
            touches.largeur = (zone.largeur - rythme) / 2;
            droite.gauche = touches.droite() + rythme;
            droite.largeur = zone.droite() - droite.gauche;
        }
        ajoute_touches(touches);
        const Panneau p = partage(droite);
        ajoute_onglets(p.onglets);
        ajoute_palette(p.palette);
        reglette::ajoute(forme_, "teinte", "Teinte", p.teinte, [this](double place) { change_teinte(place); });
        reglette::ajoute(forme_, "clarte", "Clarté"_t, p.clarte, [this](double place) { change_clarte(place); });
        ajoute_carte(p.carte);
        formes::ajoute_barre(forme_, barre);
    }

    static Panneau partage(const Cadre& z) {
        int y = z.haut;
        const auto bande = [&](int hauteur) {
            const Cadre c = {z.gauche, y, z.largeur, hauteur};
            y += hauteur + rythme;
            return c;
        };
        const bool etroit = formes::est_etroit();
        const int touche = px(z.hauteur < hauteur_basse ? 40 : 54);
        Panneau p;
        p.onglets = bande(std::max(touche, z.hauteur * 12 / 100));
        p.palette = bande(std::max(2 * touche + rythme, z.hauteur * 23 / 100));
        y += etroit ? 0 : px(5);
        p.teinte = bande(std::max(touche, z.hauteur / 10));
        y += etroit ? 0 : px(10);
        p.clarte = bande(std::max(touche, z.hauteur / 10));
        y += etroit ? 0 : px(5);
        p.carte = {z.gauche, y, z.largeur, std::max(0, z.bas() - y)};
        return p;
    }

    void ajoute_touches(const Cadre& zone) {
        const Plan anneaux[] = {
            {.nom = "Shape1",
             .genre = Genre::forme,
             .role = Role::touche,
             .fond = palette::bleu,
             .laisse_passer = true},
            {.nom = "Shape2",
             .genre = Genre::forme,
             .role = Role::touche,
             .fond = palette::papier,
             .laisse_passer = true},
        };
        forme_.construit(anneaux);
        for (int n = 1; n <= nb_numeros; ++n) ajoute_touche(n, part(zone, 3, 3, n - 1));
    }

    void ajoute_touche(int n, const Cadre& c) {
        const bool etroit = formes::est_etroit();
        const int police_chiffre = etroit ? 18 : 46, police_nom = etroit ? 12 : 16;
        const Cadre bas = {c.gauche, c.haut + c.hauteur * 3 / 5, c.largeur, c.hauteur * 2 / 5};
        const Sorte& s = sorte(n);
        const Plan plans[] = {
            {.nom = "btx",
             .index = n,
             .genre = Genre::bouton,
             .cadre = c,
             .role = s.role,
             .police = police_chiffre,
             .gras = true},
            {.nom = "btt", .index = n, .cadre = bas, .texte = s.nom, .police = police_nom, .laisse_passer = true},
        };
        forme_.construit(plans);
        Controle& touche = forme_("btx", n);
        touche.texte() = std::to_string(n);
        touche.aspect.marge_bas = c.hauteur / 5;
        touche.au_toucher = [this, n] { choisit(n); };
    }

    void ajoute_onglets(const Cadre& zone) {
        for (const int i : {0, 1}) {
            Controle& b = forme_.ajoute({.nom = "bt_coul",
                                         .index = i,
                                         .genre = Genre::bouton,
                                         .cadre = part(zone, 1, 2, i),
                                         .texte = i == 0 ? "Fond" : "Texte",
                                         .role = Role::touche,
                                         .police = 20,
                                         .gras = true});
            b.au_toucher = [this, i] {
                du_texte_ = i == 1;
                choisit(numero_);
            };
        }
    }

    void ajoute_palette(const Cadre& zone) {
        Controle& g = forme_.ajoute({.nom = "g1", .genre = Genre::grille, .cadre = zone, .police = 15});
        g.grille.dimensionne(lignes_palette, colonnes_palette);
        g.grille.espace = rythme;
        for (std::size_t i = 0; i < couleurs_palette.size(); ++i) {
            g.grille.cellules[i] = {.role = Role::touche, .fond = couleurs_palette[i]};
        }
        g.a_la_cellule = [this](int l, int c) { prend(couleurs_palette[forme_("g1").grille.rang(l, c)]); };
    }

    static Exemple partage_carte(const Cadre& c, bool etroit) {
        Exemple e;
        e.touche = {c.gauche, c.haut, c.largeur * (etroit ? 25 : 37) / 100, c.hauteur};
        const int hauteur_prix = std::min(px(46), c.hauteur * 2 / 5);
        e.prix = {c.gauche, c.bas() - hauteur_prix, e.touche.largeur, hauteur_prix};
        const int x = e.touche.droite() + px(etroit ? 10 : 18);
        if (etroit) {
            e.mesure = {x, c.haut, c.largeur * 3 / 10, c.hauteur};
            e.avis = {e.mesure.droite(), c.haut, c.droite() - e.mesure.droite(), c.hauteur};
        } else {
            e.mesure = {x, c.haut, c.droite() - x, c.hauteur * 38 / 100};
            e.avis = {x, e.mesure.bas(), c.droite() - x, c.bas() - e.mesure.bas()};
        }
        return e;
    }

    void ajoute_carte(const Cadre& zone) {
        const bool etroit = formes::est_etroit() || zone.hauteur < px(90);
        const Exemple e = partage_carte(zone.elargi(-px(etroit ? 6 : 14)), etroit);
        const bool avec_prix = e.touche.hauteur >= px(36);
        const int police_avis = etroit ? 11 : e.avis.largeur < px(300) ? 12 : 15;
        const Plan plans[] = {
            {.nom = "Shape3", .genre = Genre::forme, .cadre = zone, .role = Role::carte, .laisse_passer = true},
            {.nom = "Label2",
             .genre = Genre::bouton,
             .cadre = e.touche,
             .texte = "Entrecôte"_t,
             .role = Role::touche,
             .police = etroit ? 14 : 20,
             .gras = true},
            {.nom = "Label3", .cadre = e.prix, .texte = "24.50", .police = etroit ? 11 : 14, .visible = avec_prix},
            {.nom = "Label4",
             .cadre = e.mesure,
             .police = etroit ? 12 : 20,
             .gras = true,
             .alignement = Alignement::gauche},
            {.nom = "Label5",
             .cadre = e.avis,
             .role = Role::attendre,
             .police = police_avis,
             .gras = true,
             .alignement = Alignement::gauche,
             .image = image_attention,
             .place_image = PlaceImage::gauche},
        };
        forme_.construit(plans);
        if (etroit && avec_prix) forme_("Label2").aspect.marge_bas = e.prix.hauteur * 2 / 3;
    }

    void branche() {
        forme_("g2").a_la_cellule = [this](int, int c) {
            if (c == defaut) remet_par_defaut();
            if (c == annule) forme_.ferme();
            if (c == valide) enregistre();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    // --- choosing

    void choisit(int n) {
        numero_ = n;
        nuance_ = nuances::depuis(en_main());
        montre_choix();
    }

    void prend(Couleur c) {
        nuance_ = nuances::depuis(c);
        pose(c);
    }

    /// A hue needs some colour to be seen: grey, black and white get a middle one.
    void change_teinte(double place) {
        nuance_.teinte = place * 360;
        if (nuance_.saturation < saturation_grise) nuance_.saturation = saturation_vive;
        if (nuance_.clarte < clarte_extreme || nuance_.clarte > 1 - clarte_extreme) nuance_.clarte = clarte_moyenne;
        pose(nuances::vers_couleur(nuance_));
    }

    void change_clarte(double place) {
        nuance_.clarte = place;
        pose(nuances::vers_couleur(nuance_));
    }

    void pose(Couleur c) {
        (du_texte_ ? paire(numero_).encre : paire(numero_).fond) = c;
        montre_choix();
    }

    void montre_choix() {
        for (int n = 1; n <= nb_numeros; ++n) peint(forme_("btx", n), forme_("btt", n), montrees(n));
        forme_("Shape1").cadre = forme_("btx", numero_).cadre.elargi(anneau);
        forme_("Shape2").cadre = forme_("btx", numero_).cadre.elargi(vide_anneau);
        forme_("bt_coul", 0).aspect.role = du_texte_ ? Role::touche : Role::action;
        forme_("bt_coul", 1).aspect.role = du_texte_ ? Role::action : Role::touche;
        montre_palette();
        montre_reglettes();
        montre_lisibilite();
    }

    static void peint(Controle& touche, Controle& dessous, const Paire& p) {
        touche.aspect.fond = p.fond;
        touche.aspect.encre = dessous.aspect.encre = p.encre;
    }

    void montre_palette() {
        Grille& g = forme_("g1").grille;
        for (std::size_t i = 0; i < couleurs_palette.size(); ++i) {
            const bool choisie = couleurs_palette[i] == en_main();
            g.cellules[i].texte = choisie || i > 9 ? "" : std::to_string(i);
            g.cellules[i].image = choisie ? image_valider : 0;
        }
    }

    void montre_reglettes() {
        const auto teinte = [](double place) {
            return nuances::vers_couleur({place * 360, saturation_vive, clarte_moyenne});
        };
        const auto clarte = [this](double place) {
            return nuances::vers_couleur({nuance_.teinte, nuance_.saturation, place});
        };
        reglette::peint(forme_, "teinte", teinte, nuance_.teinte / 360, en_main());
        reglette::peint(forme_, "clarte", clarte, nuance_.clarte, en_main());
    }

    /// The figure is cut, not rounded: it never says that a contrast is reached which is not.
    void montre_lisibilite() {
        const Paire p = choisies(numero_);
        const double c = contraste(p.fond, p.encre);
        forme_("Label4").texte() = "Contraste " + nombres::montant(std::floor(c * 100) / 100) + " : 1";
        forme_("Label5").visible = c < contraste_lisible;
        forme_("Label5").texte() = c < formes::contraste_min
                                       ? std::string_view("Texte illisible : une autre couleur le remplace")
                                       : std::string_view("Texte peu lisible : il faut au moins 4.5 : 1");
        peint(forme_("Label2"), forme_("Label3"), montrees(numero_));
    }

    // --- the store

    static bool ecrit(int record, Couleur c) {
        const std::string t = c == sans_couleur ? "" : "#I#" + std::to_string(vers_bgr(c));
        return reglages::ecrit(record, t) == fichiers::Issue::fait;
    }

    static void dit_le_refus() { mini_97::informe("Les couleurs n'ont pas pu être enregistrées, recommencez !"_t); }

    void enregistre() {
        bool fait = true;
        for (int n = 1; n <= nb_numeros; ++n) {
            const Paire& lue = lues_[static_cast<std::size_t>(n)];
            if (paire(n).fond != lue.fond) fait = ecrit(reglages::fonds + n, paire(n).fond) && fait;
            if (paire(n).encre != lue.encre) fait = ecrit(reglages::encres + n, paire(n).encre) && fait;
        }
        if (!fait) return dit_le_refus();
        forme_.ferme();
    }

    void remet_par_defaut() {
        if (!mini_97::demande("Remettre toutes les couleurs par défaut ?"_t)) return;
        bool fait = true;
        for (const int premier : premiers_records) {
            for (int i = 0; i < nb_numeros; ++i) fait = ecrit(premier + i, sans_couleur) && fait;
        }
        if (!fait) return dit_le_refus();
        reglees_ = lues_ = {};
        choisit(numero_);
    }
};

}  // namespace

void montre_ggcoul() {
    Choix().montre();
}

}  // namespace ggcoul
