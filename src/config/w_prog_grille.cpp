#include "config/w_prog_grille.h"

#include <algorithm>
#include <string_view>

#include "data/nombres.h"
#include "dialogs/formes.h"
#include "platform/systeme/texte.h"

namespace w_prog_grille {
namespace {

using namespace ecran;
using formes::px;
using programme_touches::Champ;
using programme_touches::Ligne;
using programme_touches::lignes_par_page;

/// Widths in design pixels, on the narrowest and on a wide screen.
struct PlanColonne {
    std::string_view entete;
    Champ champ = Champ::reference;  ///< of column 0 none
    int largeur_min, largeur;
    Alignement alignement = Alignement::centre;
};
constexpr PlanColonne colonnes[nb_colonnes] = {
    {.entete = "N°"_t, .largeur_min = 26, .largeur = 64},
    {.entete = "Ref", .champ = Champ::reference, .largeur_min = 54, .largeur = 188, .alignement = Alignement::gauche},
    {.entete = "Libellé"_t,
     .champ = Champ::libelle,
     .largeur_min = 92,
     .largeur = 214,
     .alignement = Alignement::gauche},
    {.entete = "LH", .champ = Champ::lh, .largeur_min = 54, .largeur = 62},
    {.entete = "Size", .champ = Champ::taille, .largeur_min = 54, .largeur = 70},
    {.entete = "Grap", .champ = Champ::image, .largeur_min = 54, .largeur = 112},
    {.entete = "Visu", .champ = Champ::visible, .largeur_min = 54, .largeur = 72},
    {.entete = "Acte", .champ = Champ::action, .largeur_min = 68, .largeur = 316, .alignement = Alignement::gauche},
    {.entete = "Coul", .champ = Champ::couleur, .largeur_min = 60, .largeur = 142},
};
constexpr int largeur_serree = px(80), police_serree = 8;  ///< a column below that width takes the small letters
constexpr int largeur_ascenseur = px(20), hauteur_ligne = px(57), hauteur_entete = px(44);

std::vector<int> largeurs(int place) {
    int petites = 0, grandes = 0;
    for (const PlanColonne& c : colonnes) {
        petites += px(c.largeur_min);
        grandes += px(c.largeur);
    }
    const double serre = std::min(1.0, static_cast<double>(place) / petites);
    const double part = std::clamp(static_cast<double>(place - petites) / (grandes - petites), 0.0, 1.0);
    std::vector<int> r;
    int reste = place;
    for (const PlanColonne& c : colonnes) {
        r.push_back(static_cast<int>(serre * px(c.largeur_min) + part * px(c.largeur - c.largeur_min)));
        reste -= r.back();
    }
    r[acte] = std::max(px(20), r[acte] + reste);
    return r;
}

void peint_rang(Grille& g, int l) {
    const bool entete = l == 0, touche = l == g.ligne;
    for (int c = 0; c < nb_colonnes; ++c) {
        Aspect& a = g.cellule(l, c);
        a.role = entete ? Role::entete : touche ? Role::ligne_touchee : Role::ligne;
        a.fond = a.encre = sans_couleur;
        a.alignement = colonnes[c].alignement;
        a.gras = entete || c == libelle || (c == numero && touche);
        if (c == numero && !entete && !touche) a.encre = palette::gris;
    }
}

/// The picture and the colour of a key are shown beside their numbers.
void peint_touche(Grille& g, int l) {
    Ligne ligne;
    reprend(g, l, ligne);
    Aspect& grap = g.cellule(l, image);
    grap.image = ligne.image();
    grap.place_image = g.largeurs[image] < largeur_serree ? PlaceImage::seule : PlaceImage::gauche;
    for (const int c : {acte, couleur}) {
        if (g.largeurs[static_cast<std::size_t>(c)] >= largeur_serree) continue;
        g.cellule(l, c).police = police_serree;
        g.cellule(l, c).alignement = Alignement::centre;
    }
    Aspect& coul = g.cellule(l, couleur);
    coul.fond = depuis_bgr(ligne.couleur());
    if (coul.fond != sans_couleur) coul.role = Role::puce;
}

}  // namespace

Champ champ_de(int colonne) {
    return colonnes[colonne].champ;
}

void ajoute(Forme& forme, const Cadre& cadre) {
    const int police = formes::est_etroit() ? 11 : 15;
    Grille& g = forme.ajoute(formes::liste("g1", cadre, police)).grille;
    g.dimensionne(lignes_par_page + 1, nb_colonnes);
    g.largeurs = largeurs(cadre.largeur - largeur_ascenseur);
    g.lignes_fixes = 1;
    g.hauteur_ligne = hauteur_ligne;
    g.hauteurs.assign(static_cast<std::size_t>(g.lignes), hauteur_ligne);
    g.hauteurs[0] = hauteur_entete;
    g.defile = g.quadrillage = true;
    for (int c = 0; c < nb_colonnes; ++c) g.cellule(0, c).texte = colonnes[c].entete;
}

void remplit(Grille& g, const std::vector<Ligne>& lignes) {
    int l = 0;
    for (const Ligne& ligne : lignes) {
        ++l;
        g.cellule(l, numero).texte = nombres::entier_complete(l, 2);
        for (int c = 1; c < nb_colonnes; ++c) g.cellule(l, c).texte = ligne.champ(colonnes[c].champ);
    }
    g.ligne = g.colonne = -1;
    g.premiere_ligne = g.lignes_fixes;
}

void reprend(const Grille& g, int rang, Ligne& ligne) {
    for (int c = 1; c < nb_colonnes; ++c) ligne.pose(colonnes[c].champ, texte::rogne(g.texte(rang, c)));
}

void peint(Grille& g) {
    for (int l = 0; l < g.lignes; ++l) peint_rang(g, l);
    for (int l = g.lignes_fixes; l < g.lignes; ++l) peint_touche(g, l);
}

}  // namespace w_prog_grille
