#include "config/reglette.h"

#include <algorithm>
#include <utility>

#include "dialogs/formes.h"

namespace reglette {
namespace {

using namespace ecran;
using formes::px;

/// Of a colour; of those at the ends, which are as wide as the corners are round.
constexpr int largeur_couleur = px(3), largeur_bout = px(12);
constexpr int largeur_marque = px(28), debord_marque = px(6), bord_marque = px(2), blanc_marque = px(5);

/// The strip in cells, one for each colour.
void decoupe(Controle& bande) {
    const int entre = std::max(0, bande.cadre.largeur - 2 * largeur_bout), nombre = entre / largeur_couleur;
    Grille& g = bande.grille;
    g.dimensionne(1, nombre + 2);
    g.largeurs.assign(static_cast<std::size_t>(nombre) + 2, largeur_couleur);
    g.largeurs.front() = largeur_bout;
    g.largeurs.back() = bande.cadre.largeur - largeur_bout - nombre * largeur_couleur;
}

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
    decoupe(c);
    c.au_glisse = [&c, au_doigt = std::move(au_doigt)](int x, int) {
        au_doigt(std::clamp(static_cast<double>(x) / std::max(1, c.cadre.largeur), 0.0, 1.0));
    };
}

void peint(Forme& forme, const std::string& nom, const std::function<Couleur(Place)>& couleur, Place place,
           Couleur en_main) {
    Controle& c = forme(nom);
    const Cadre& bande = c.cadre;
    int debut = 0;
    for (std::size_t i = 0; i < c.grille.largeurs.size(); ++i) {
        const int largeur = c.grille.largeurs[i];
        c.grille.cellules[i].fond = couleur((debut + largeur / 2.0) / bande.largeur);
        debut += largeur;
    }
    const int gauche = std::clamp(bande.gauche + static_cast<int>(place * bande.largeur) - largeur_marque / 2,
                                  bande.gauche, bande.droite() - largeur_marque);
    const Cadre marque = {gauche, bande.haut - debord_marque, largeur_marque, bande.hauteur + 2 * debord_marque};
    forme(nom + "_cadre").cadre = marque;
    forme(nom + "_blanc").cadre = marque.elargi(-bord_marque);
    forme(nom + "_place").cadre = marque.elargi(-bord_marque - blanc_marque);
    forme(nom + "_place").aspect.fond = en_main;
}

}  // namespace reglette
