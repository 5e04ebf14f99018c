#include "config/reglette.h"

#include <algorithm>
#include <utility>

#include "dialogs/formes.h"

namespace reglette {
namespace {

using namespace ecran;
using formes::px;

constexpr int pas = 90;  ///< colours that are painted side by side
constexpr int largeur_marque = px(28), debord_marque = px(6), bord_marque = px(2), blanc_marque = px(5);

}  // namespace

void ajoute(Forme& forme, const std::string& nom, std::string_view legende, const Cadre& zone,
            std::function<void(Place)> au_doigt) {
    const bool etroit = formes::est_etroit();
    const int largeur = px(etroit ? 76 : 92), police = etroit ? 14 : 18;
    const Cadre titre = {zone.gauche, zone.haut, largeur, zone.hauteur};
    const Cadre bande = {titre.droite(), zone.haut, zone.largeur - largeur, zone.hauteur};
    const std::string cadre = nom + "_cadre", blanc = nom + "_blanc", place = nom + "_place";
    const Plan plans[] = {
        {.nom = "Label1", .cadre = titre, .texte = legende, .police = police, .alignement = Alignement::gauche},
        {.nom = nom, .genre = Genre::grille, .cadre = bande, .role = Role::carte},
        {.nom = cadre, .genre = Genre::forme, .role = Role::touche, .fond = palette::encre, .laisse_passer = true},
        {.nom = blanc, .genre = Genre::forme, .role = Role::touche, .fond = palette::blanc, .laisse_passer = true},
        {.nom = place, .genre = Genre::forme, .role = Role::touche, .laisse_passer = true},
    };
    forme.construit(plans);
    Controle& c = forme(nom);
    c.grille.dimensionne(1, pas);
    c.au_glisse = [&c, au_doigt = std::move(au_doigt)](int x, int) {
        au_doigt(std::clamp(static_cast<double>(x) / std::max(1, c.cadre.largeur), 0.0, 1.0));
    };
}

void peint(Forme& forme, const std::string& nom, const std::function<Couleur(Place)>& couleur, Place place,
           Couleur en_main) {
    Controle& c = forme(nom);
    for (int i = 0; i < pas; ++i) c.grille.cellule(0, i).fond = couleur((i + 0.5) / pas);
    const Cadre& bande = c.cadre;
    const int gauche = std::clamp(bande.gauche + static_cast<int>(place * bande.largeur) - largeur_marque / 2,
                                  bande.gauche, bande.droite() - largeur_marque);
    const Cadre marque = {gauche, bande.haut - debord_marque, largeur_marque, bande.hauteur + 2 * debord_marque};
    forme(nom + "_cadre").cadre = marque;
    forme(nom + "_blanc").cadre = marque.elargi(-bord_marque);
    forme(nom + "_place").cadre = marque.elargi(-bord_marque - blanc_marque);
    forme(nom + "_place").aspect.fond = en_main;
}

}  // namespace reglette
