#include "main_screen/grille.h"

#include <algorithm>
#include <cstdint>

#include "data/etat.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "dialogs/formes.h"
#include "main_screen/bandeau.h"
#include "platform/systeme/texte.h"

namespace grille {
namespace {

using namespace ecran;
using formes::px;

constexpr int haut_grille = 500;                     ///< twips, first row of keys
constexpr int marge = px(10), bas_grille = px(140);  ///< the grid's end, from the form's bottom edge
constexpr int hauteur_prix = px(44), police_prix = 13, police_marque = 15;
constexpr std::string_view texte_marque = "N";
constexpr int place_marque = px(26);  ///< what the mark takes at the key's upper right corner
constexpr int police_compte = 15, police_compte_etroite = 11;

Cadre cadre_touche(const Cases& k) {
    const int l = formes::largeur() - 2 * marge + rythme;
    const int h = formes::hauteur() - bas_grille - haut_grille + rythme;
    const auto bord = [](int total, int parts, int i) {
        return static_cast<int>(static_cast<std::int64_t>(total) * i / parts);
    };
    const int gauche = bord(l, colonnes(), k.colonne), haut = bord(h, lignes(), k.ligne);
    const int droite = bord(l, colonnes(), std::min(k.colonne + k.largeur, colonnes())) - rythme;
    const int bas = bord(h, lignes(), std::min(k.ligne + k.hauteur, lignes())) - rythme;
    return {marge + gauche, haut_grille + haut, std::max(0, droite - gauche), std::max(0, bas - haut)};
}

/// The controls of the keys, from 1; the form owns them.
std::array<Controle*, nb_touches + 1> touches_de_la_forme{}, compagnes_de_la_forme{}, comptes_de_la_forme{};

Controle& touche_numero(int k) {
    return *touches_de_la_forme[static_cast<std::size_t>(k)];
}
Controle& compagne(int k) {
    return *compagnes_de_la_forme[static_cast<std::size_t>(k)];
}
Controle& compte(int k) {
    return *comptes_de_la_forme[static_cast<std::size_t>(k)];
}

/// What a picture number says on the function row.
struct Legende {
    int image;
    std::string_view texte;
    Role role;
};
const Legende legendes[] = {
    {11, "Table", Role::action},        {12, "Quitter", Role::detruire}, {13, "Familles", Role::action},
    {15, "Serveurs", Role::action},     {17, "Suivant", Role::action},   {18, "Précédent"_t, Role::action},
    {22, "Note", Role::note},           {23, "Envoyer", Role::aller},    {24, "Familles", Role::action},
    {30, "En attente", Role::attendre},
};

formes::ToucheDeBarre touche_de_barre(int image, std::string_view code) {
    if (image <= 0) return {};
    formes::ToucheDeBarre t{"", image + etat::decalage_images, Role::action};
    for (const Legende& l : legendes) {
        if (l.image != image) continue;
        t.texte = l.texte;
        t.role = l.role;
    }
    if (image == 24 && code == programme_touches::marque::accueil) t.texte = "Accueil";
    return t;
}

}  // namespace

void construit(Forme& forme, const Gestes& gestes) {
    for (int k = 1; k <= nb_touches; ++k) {
        Controle& touche = forme.ajoute({.nom = "btx", .index = k, .genre = Genre::bouton, .role = Role::touche});
        touche.au_toucher = [agit = gestes.touche, k] { agit(k); };
        Controle& dessus = forme.ajoute({.nom = "btt", .index = k, .genre = Genre::image, .laisse_passer = true});
        Controle& compte =
            forme.ajoute({.nom = "btn", .index = k, .role = Role::compte, .gras = true, .laisse_passer = true});
        touches_de_la_forme[static_cast<std::size_t>(k)] = &touche;
        compagnes_de_la_forme[static_cast<std::size_t>(k)] = &dessus;
        comptes_de_la_forme[static_cast<std::size_t>(k)] = &compte;
    }
    const Plan plans[] = {
        {.nom = "g2", .genre = Genre::grille, .gras = true, .etiquette = 2},
        {.nom = "Label_attente",
         .texte = "0",
         .role = Role::pastille,
         .gras = true,
         .visible = false,
         .laisse_passer = true},
        {.nom = "Label_num",
         .texte = "0",
         .police = 10,
         .alignement = Alignement::droite,
         .encre = palette::pale,
         .laisse_passer = true},
    };
    forme.construit(plans);
    forme("g2").a_la_cellule = [agit = gestes.barre](int, int colonne) { agit(colonne); };
    forme("g2").a_la_tenue = [agit = gestes.barre_tenue](int, int colonne) { return agit(colonne); };
}

void place() {
    Forme& f = bandeau::forme();
    const Cadre barre = formes::cadre_barre();
    f("g2").cadre = barre;
    const int cote = px(formes::est_etroit() ? 28 : 38);
    const int droite_case = barre.gauche + (barre.largeur + px(8)) * 5 / 6 - px(8);
    f("Label_attente").cadre = {droite_case - cote - px(7), barre.haut + px(8), cote, cote};
    f("Label_attente").aspect.police = formes::est_etroit() ? 11 : 15;
    f("Label_num").cadre = {formes::largeur() - px(70), formes::hauteur() - hauteur_bandeau, px(60), hauteur_bandeau};
}

void raz_touches() {
    for (int k = 1; k <= nb_touches; ++k) {
        codes[static_cast<std::size_t>(k)].clear();
        touche_numero(k).visible = compagne(k).visible = compte(k).visible = false;
        touche_numero(k).texte().clear();
        compagne(k).aspect = {};
    }
}

int colonnes() {
    return std::clamp(etat::colonnes_grille, 1, reglages::grille_max);
}
int lignes() {
    return std::clamp(etat::lignes_grille, 1, reglages::grille_max);
}

Aspect& pose_touche(int k, const Cases& cases, std::string_view code, std::string_view texte, int police) {
    codes[static_cast<std::size_t>(k)] = code;
    Controle& c = touche_numero(k);
    c.cadre = cadre_touche(cases);
    c.visible = true;
    c.aspect = {
        .texte = std::string(texte), .role = Role::touche, .police = std::max(1, police), .gras = true, .accord = true};
    return c.aspect;
}

void pose_prix(int k, std::string_view prix) {
    Controle& b = touche_numero(k);
    const int hauteur = std::min(hauteur_prix, b.cadre.hauteur / 3);
    b.aspect.marge_haut = b.aspect.marge_bas = hauteur * 3 / 4;
    Controle& c = compagne(k);
    c.cadre = {b.cadre.gauche, b.cadre.bas() - hauteur, b.cadre.largeur, hauteur};
    c.visible = true;
    c.aspect = {.texte = std::string(prix), .encre = b.aspect.encre, .police = police_prix};
}

void pose_image(int k, int image, bool marque) {
    Controle& b = touche_numero(k);
    const bool avec_texte = !texte::rogne(b.texte()).empty();
    if (avec_texte && image > 0) b.aspect.marge_haut = b.cadre.hauteur * 3 / 5;
    Controle& c = compagne(k);
    c.cadre = b.cadre;
    if (avec_texte) c.cadre.hauteur = b.cadre.hauteur * 2 / 3;
    c.visible = true;
    const int n = image > 0 ? image + etat::decalage_images : 0;
    const Couleur encre = b.aspect.encre != sans_couleur ? b.aspect.encre : encre_de(Role::touche);
    if (!marque) {
        c.aspect = {.image = n, .encre = encre};
        return;
    }
    c.aspect = {.texte = std::string(texte_marque),
                .image = n,
                .encre = encre,
                .police = police_marque,
                .gras = true,
                .alignement = Alignement::droite,
                .place_image = PlaceImage::milieu,
                .marge_droite = px(10),
                .marge_bas = std::max(0, c.cadre.hauteur - px(40))};
}

void pose_compte(int k, std::string_view nombre) {
    Controle& c = compte(k);
    c.texte() = nombre;
    c.visible = !nombre.empty() && touche_numero(k).visible;
    if (!c.visible) return;
    const bool etroit = formes::est_etroit();
    const Cadre& touche = touche_numero(k).cadre;
    const int cote = std::min({px(etroit ? 26 : 36), touche.largeur / 2, touche.hauteur / 2});
    const int au_dela = std::max(0, static_cast<int>(nombre.size()) - 2);
    const int largeur = std::min(cote + au_dela * cote / 3, touche.largeur / 2);
    const int bord = px(etroit ? 3 : 8);
    const bool marquee = compagne(k).visible && compagne(k).texte() == texte_marque;
    const int droite = touche.droite() - bord - (marquee ? place_marque : 0);
    c.cadre = {droite - largeur, touche.haut + bord, largeur, cote};
    c.aspect.police = etroit ? police_compte_etroite : police_compte;
}

void init_g2(std::string_view codes_touches, std::string_view images) {
    std::array<formes::ToucheDeBarre, 6> barre;
    for (std::size_t c = 0; c < barre.size(); ++c) {
        const auto fin = codes_touches.find('|');
        codes_barre[c] = codes_touches.substr(0, fin);
        codes_touches = fin == std::string_view::npos ? "" : codes_touches.substr(fin + 1);
        barre[c] =
            touche_de_barre(static_cast<int>(nombres::lis(texte::colonnes(images, 6 * c + 1, 2))), codes_barre[c]);
    }
    formes::remplit_barre(bandeau::forme()("g2"), barre);
    bandeau::colore();
}

}  // namespace grille
