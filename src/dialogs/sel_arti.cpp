#include "dialogs/sel_arti.h"

#include <algorithm>
#include <string>

#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "data/styles.h"
#include "dialogs/clav_num.h"
#include "dialogs/clavv.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "dialogs/sai_detail.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace sel_arti {
namespace {

using namespace ecran;
using formes::px;

constexpr int hauteur_entete = px(44), hauteur_ligne = px(54);
constexpr int police_prix = 20, police_quantite = 54, police_total = 35, police_entete = 16;
constexpr double quantite_max = 9999;  ///< that can be typed, and reached by a held key; single touches go on
constexpr int largeur_dessin = 1280;   ///< design pixels of the wide layout

constexpr int police_lettre = 30, police_lettre_etroite = 24;
constexpr int police_categories = 13, police_categories_etroite = 9;
constexpr int hauteur_categories = px(38), sous_la_lettre = px(26);

enum CaseBarre { efface = 0, detail_a = 1, detail_d = 4, valide = 5 };

/// Places of the article's card and its controls.
struct Places {
    Cadre carte, libelle, prix, moins, quantite, plus, total;
};

Places places_larges(const Cadre& zone) {
    const auto x = [](int pixels) {
        return px(pixels * std::min(etat::largeur_ecran, largeur_dessin) / largeur_dessin);
    };
    const int haut = zone.haut, milieu = formes::largeur() / 2;
    Places p;
    p.carte = {zone.gauche, haut, zone.largeur, px(150)};
    p.libelle = {px(30), haut + px(8), milieu - px(46), px(64)};
    p.prix = {px(30), haut + px(80), milieu - px(46), px(50)};
    p.moins = {milieu, haut + px(20), x(120), px(110)};
    p.quantite = {p.moins.droite() + px(4), haut + px(20), x(160) - px(8), px(110)};
    p.plus = {milieu + x(280), haut + px(20), x(120), px(110)};
    const int gauche_total = p.plus.droite() + px(8);
    p.total = {gauche_total, haut + px(20), zone.droite() - px(16) - gauche_total, px(110)};
    return p;
}

Places places_etroites(const Cadre& zone) {
    const int haut = zone.haut, droite = zone.droite() - px(14);
    Places p;
    p.carte = {zone.gauche, haut, zone.largeur, px(170)};
    p.libelle = {px(26), haut + px(8), droite - px(26) - px(110), px(52)};
    p.prix = {droite - px(104), haut + px(8), px(104), px(52)};
    p.moins = {px(24), haut + px(68), px(96), px(84)};
    p.quantite = {px(124), haut + px(68), px(92), px(84)};
    p.plus = {px(220), haut + px(68), px(96), px(84)};
    p.total = {px(324), haut + px(68), droite - px(324), px(84)};
    return p;
}

class Validation {
  public:
    Validation() {
        forme_.nom = "sel_arti";
        formes::encadre(forme_, "Validation d'un Article", formes::version);
        construit();
        charge();
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    std::string& texte_de(std::string_view nom) { return forme_(nom).texte(); }

    void construit() {
        const Cadre zone = formes::contenu();
        const Places p = formes::est_etroit() ? places_etroites(zone) : places_larges(zone);
        const Cadre liste = {zone.gauche, p.carte.bas() + rythme, zone.largeur, zone.bas() - p.carte.bas() - rythme};
        construit_article(p);
        construit_quantite(p);
        forme_.ajoute(formes::liste("g1", liste, std::max(1, reglages::nombre(reglages::police_remarques))));
        construit_barre();
    }

    /// The letters, and below each in small type what it opens.
    void construit_barre() {
        const bool etroit = formes::est_etroit();
        const int police = etroit ? police_lettre_etroite : police_lettre;
        const formes::ToucheDeBarre barre[6] = {{"Effacer", image_corbeille, Role::detruire},
                                                {.texte = "A", .role = Role::action, .police = police},
                                                {.texte = "B", .role = Role::action, .police = police},
                                                {.texte = "C", .role = Role::action, .police = police},
                                                {.texte = "D", .role = Role::action, .police = police},
                                                formes::touche_valide};
        Controle& g2 = formes::ajoute_barre(forme_, barre);
        const auto titres = styles::titres(2 * (detail_d - detail_a + 1));
        for (int c = detail_a; c <= detail_d; ++c) {
            const auto premiere = static_cast<std::size_t>(2 * (c - detail_a));
            const std::string noms = joint(titres[premiere], titres[premiere + 1]);
            if (noms.empty()) continue;
            g2.grille.cellule(0, c).marge_bas = sous_la_lettre;
            const Cadre touche = cadre_cellule(g2, 0, c);
            Controle& legende = forme_.ajoute({.nom = "Label_detail",
                                               .index = c,
                                               .cadre = {touche.gauche + px(4), touche.bas() - hauteur_categories,
                                                         touche.largeur - px(8), hauteur_categories - px(4)},
                                               .texte = noms,
                                               .police = etroit ? police_categories_etroite : police_categories,
                                               .encre = palette::pale,
                                               .laisse_passer = true});
            legende.aspect.accord = true;
        }
    }

    static std::string joint(const std::string& a, const std::string& b) {
        const std::string_view entre = formes::est_etroit() ? "\r\n" : " · "_t;
        return a.empty() || b.empty() ? a + b : a + std::string(entre) + b;
    }

    /// The manager's colours, and the small type so that it can be read on them.
    void colore() {
        formes::colore(forme_);
        for (int c = detail_a; c <= detail_d; ++c) {
            const Aspect& touche = forme_("g2").grille.cellule(0, c);
            Controle* legende = forme_.cherche("Label_detail", c);
            if (legende != nullptr && touche.encre != sans_couleur) legende->aspect.encre = touche.encre;
        }
    }

    /// The card with the article; `Label7` holds its line as it came.
    void construit_article(const Places& p) {
        const Plan plans[] = {
            {.nom = "Picture1", .genre = Genre::forme, .cadre = p.carte, .role = Role::carte, .etiquette = 4},
            {.nom = "Label7", .visible = false},
            {.nom = "Label1",
             .cadre = p.libelle,
             .police = std::max(1, reglages::nombre(reglages::police_article)),
             .gras = true,
             .alignement = Alignement::gauche,
             .etiquette = 4},
            {.nom = "Label3",
             .cadre = p.prix,
             .police = police_prix,
             .alignement = formes::est_etroit() ? Alignement::droite : Alignement::gauche,
             .encre = palette::gris,
             .etiquette = 4},
        };
        forme_.construit(plans);
    }

    void construit_quantite(const Places& p) {
        const Plan plans[] = {
            {.nom = "bt_gauc",
             .genre = Genre::bouton,
             .cadre = p.moins,
             .role = Role::action,
             .image = image_moins,
             .etiquette = 2},
            {.nom = "Label6",
             .cadre = p.quantite,
             .texte = "1",
             .police = police_quantite,
             .gras = true,
             .etiquette = 4},
            {.nom = "bt_droi",
             .genre = Genre::bouton,
             .cadre = p.plus,
             .role = Role::action,
             .image = image_plus,
             .etiquette = 2},
            {.nom = "Label5",
             .cadre = p.total,
             .police = police_total,
             .gras = true,
             .alignement = Alignement::droite,
             .encre = palette::vert,
             .etiquette = 4},
        };
        forme_.construit(plans);
    }

    void charge() {
        const std::string& ligne = texte_de("Label7") = etat::texte_travail;
        if (const auto q = lignes::quantite_courte(ligne)) texte_de("Label6") = nombres::general(*q);
        texte_de("Label1") = lignes::libelle(ligne);
        if (const auto prix = lignes::prix(ligne)) texte_de("Label3") = nombres::montant(*prix) + " ";
        remplit_complements();
        calcul_total();
    }

    void remplit_complements() {
        const auto& rangs = complements::rangs();
        Grille& g = forme_("g1").grille;
        const int hauteur = std::max(hauteur_ligne, forme_("g1").aspect.police * twips_par_point * 2);
        g.dimensionne(static_cast<int>(rangs.size()) + 1, 1);
        g.lignes_fixes = 1;
        g.hauteur_ligne = hauteur;
        g.hauteurs.assign(rangs.size() + 1, hauteur);
        g.hauteurs[0] = hauteur_entete;
        g.defile = true;
        g.cellule(0, 0) = {.texte = std::string("Informations complémentaires"_t),
                           .role = Role::entete,
                           .police = police_entete,
                           .gras = true,
                           .alignement = Alignement::gauche,
                           .marge_gauche = marge_rang()};
        for (std::size_t i = 0; i < rangs.size(); ++i) remplit_rang(g.cellule(static_cast<int>(i) + 1, 0), rangs[i]);
        colore();
    }

    static int marge_rang() { return px(formes::est_etroit() ? 6 : 10); }

    /// A text can be cancelled: its row ends with a rubber.
    static void remplit_rang(Aspect& a, const std::string& texte) {
        a = {.texte = texte,
             .image = texte::rogne(texte).empty() ? 0 : image_gomme,
             .role = Role::ligne,
             .alignement = Alignement::gauche,
             .place_image = PlaceImage::droite,
             .marge_gauche = marge_rang(),
             .trait = true};
    }

    void branche() {
        forme_("bt_droi").au_toucher = [this] { change_quantite(+1); };
        forme_("bt_gauc").au_toucher = [this] {
            if (nombres::lis(texte_de("Label6")) >= 2) change_quantite(-1);
        };
        forme_("bt_droi").se_repete = [this] { return nombres::lis(texte_de("Label6")) < quantite_max; };
        forme_("bt_gauc").se_repete = [] { return true; };
        forme_("Label6").au_toucher = [this] { saisit_quantite(); };
        forme_("g1").a_la_cellule = [this](int ligne, int) {
            if (ligne >= 1) touche_complement(ligne);
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) { touche_barre(colonne); };
    }

    void change_quantite(int pas) {
        texte_de("Label6") = nombres::entier_complete(nombres::lis(texte_de("Label6")) + pas, 1);
        calcul_total();
    }

    /// A whole number that the keypad gives; an empty entry changes nothing, another is told.
    void saisit_quantite() {
        const std::string saisie = clav_num::demande("", "Entrez la quantité"_t).value_or("");
        const bool entier = saisie.find_first_not_of("0123456789") == std::string::npos;
        const double n = nombres::lis(saisie);
        if (saisie.empty()) return;
        if (!entier || n < 1 || n > quantite_max)
            return mini_97::informe("Une quantité va de 1 à 9999, elle reste ce qu'elle était !"_t);
        texte_de("Label6") = nombres::entier_complete(n, 1);
        calcul_total();
    }

    void calcul_total() {
        const double total = nombres::lis(texte_de("Label3")) * nombres::lis(texte_de("Label6"));
        texte_de("Label5") = nombres::montant(total) + " ";
    }

    /// A row that holds a text may be cancelled; else it is typed on the keyboard.
    void touche_complement(int ligne) {
        const auto rang = static_cast<std::size_t>(ligne - 1);
        const std::string texte = complements::rangs()[rang];
        const std::string rogne(texte::rogne(texte));
        if (!rogne.empty() && mini_97::demande("Voulez vous annuler la ligne \r\n" + rogne + " ?")) {
            complements::retire(rang);
            return remplit_complements();
        }
        etat::code_dialogue = mini_97::saisie;
        etat::texte_dialogue = texte + "|" + texte;
        clavv::montre_clavv();
        complements::pose(rang, etat::texte_dialogue);
        remplit_complements();
    }

    void touche_barre(int colonne) {
        if (colonne == efface) {
            if (!mini_97::demande("Confirmez l'effacement de cette ligne ?")) return;
            etat::texte_travail.clear();
            forme_.ferme();
        } else if (colonne == valide) {
            valide_donnees();
            forme_.ferme();
        } else if (colonne >= detail_a && colonne <= detail_d) {
            etat::debut_detail = static_cast<std::int16_t>(2 * colonne - 2);
            sai_detail::montre_sai_detail();
            remplit_complements();
        }
    }

    void valide_donnees() {
        etat::texte_travail =
            lignes::validee(texte_de("Label7"), nombres::lis(texte_de("Label6")), complements::rangs());
    }
};

}  // namespace

void montre_sel_arti() {
    Validation().montre();
}

}  // namespace sel_arti
