#include "dialogs/choix.h"

#include <algorithm>

#include "data/reglages.h"
#include "dialogs/formes.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace choix {
namespace {

using namespace ecran;
using formes::px;

constexpr int touche_min = px(54);  ///< what a finger does not miss
constexpr int espace_serre = px(5);
constexpr int sous_la_marque = px(24);  ///< where the label of a narrow key begins, its mark being in the corner
constexpr int carte_min = px(50), carte_max = px(80), marge_carte = px(20), bord_carte = px(2);
constexpr int police_titre = 27, police_titre_etroite = 18;

/// The space between keys: tight where the rows would else be too low, or the card.
int espace_pour(int lignes, int hauteur) {
    return hauteur >= lignes * (touche_min + rythme) + carte_min ? rythme : espace_serre;
}

}  // namespace

void ajoute_barre(Forme& forme, Fin fin) {
    formes::ToucheDeBarre barre[6] = {{"Précédent"_t, image_gauche, Role::action},
                                      {"Suivant", image_droite, Role::action}};
    if (fin == Fin::ferme) barre[ferme] = formes::touche_ferme;
    if (fin == Fin::valide) barre[ferme] = {"Valider", image_valider, Role::aller};
    formes::ajoute_barre(forme, barre);
}

void remplit(Aspect& touche, std::string_view libelle) {
    touche = {};
    touche.texte = texte::rogne(libelle);
    touche.role = touche.texte.empty() ? Role::vide : Role::touche;
    touche.gras = true;
    touche.alignement = Alignement::gauche;
}

void marque(Grille& grille, bool (*est_pris)(std::string_view)) {
    for (Aspect& a : grille.cellules) {
        if (a.texte.empty()) continue;
        const bool pris = est_pris(a.texte);
        a.role = pris ? Role::choisie : Role::touche;
        a.marge_haut = pris && a.alignement == Alignement::centre ? sous_la_marque : 0;
    }
}

Cadre construit_menu(Forme& forme, int lignes) {
    const Cadre zone = formes::contenu();
    const int espace = espace_pour(lignes, zone.hauteur);
    Cadre carte = zone;
    carte.hauteur = std::clamp(zone.hauteur - lignes * (touche_min + espace), carte_min, carte_max);
    const bool etroit = formes::est_etroit();
    const int police = etroit ? police_titre_etroite : police_titre;
    const int dessus = carte.haut + bord_carte, dedans = carte.hauteur - 2 * bord_carte;
    Cadre article = {carte.gauche + marge_carte, dessus, carte.largeur * 3 / 8, dedans};
    Cadre service = {carte.gauche + carte.largeur * 2 / 5 - px(4), dessus, carte.largeur * 2 / 5, dedans};
    if (etroit) {
        article.largeur = service.largeur = carte.largeur * 7 / 10;
        article.hauteur = service.hauteur = dedans / 2;
        service.gauche = article.gauche;
        service.haut = article.bas();
    }
    const int haut = carte.bas() + espace;
    const Plan plans[] = {
        {.nom = "Shape1", .genre = Genre::forme, .cadre = carte, .role = Role::carte, .etiquette = 4},
        {.nom = "Label1",
         .cadre = article,
         .police = police,
         .gras = true,
         .alignement = Alignement::gauche,
         .etiquette = 4},
        {.nom = "Label2",
         .cadre = service,
         .police = police,
         .gras = true,
         .alignement = Alignement::gauche,
         .etiquette = 4},
        {.nom = "g1",
         .genre = Genre::grille,
         .cadre = {zone.gauche, haut, zone.largeur, zone.bas() - haut},
         .etiquette = 9},
    };
    forme.construit(plans);
    forme("Label2").aspect.encre = palette::bleu;
    forme("g1").aspect.police = reglages::nombre(reglages::police_complements);
    forme("g1").grille.dimensionne(lignes, 2);
    forme("g1").grille.espace = espace;
    return carte;
}

}  // namespace choix
