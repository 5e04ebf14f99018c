#include "dialogs/formes.h"

#include <algorithm>

#include "dialogs/mini_97.h"
#include "platform/systeme/texte.h"

namespace formes {
namespace {

using namespace ecran;

constexpr int marge = px(10);
constexpr int haut_contenu = px(36), bas_contenu = px(142);  ///< from the form's top and bottom edge
constexpr int haut_barre = px(132), hauteur_barre = px(98);  ///< the bar's top, from the bottom edge
constexpr int espace_barre = px(8);
constexpr int police_barre = 14, police_barre_etroite = 11;
constexpr int etiquette_barre = 2;

Aspect aspect_de(const ToucheDeBarre& touche) {
    Aspect a;
    a.texte = touche.texte;
    a.image = touche.image;
    a.role = touche.role;
    a.gras = true;
    a.police = touche.police != 0 ? touche.police : est_etroit() ? police_barre_etroite : police_barre;
    return a;
}

}  // namespace

void place(Forme& forme) {
    forme.cadre = {0, 0, largeur(), hauteur()};
}

void encadre(Forme& forme, std::string_view haut, std::string_view bas) {
    place(forme);
    moduclav::bandeaux(forme, haut, bas);
    forme("label_bas").au_toucher = demande_reinitialisation;
}

Cadre contenu() {
    return {marge, haut_contenu, std::max(px(60), largeur() - 2 * marge),
            std::max(px(60), hauteur() - haut_contenu - bas_contenu)};
}

Cadre cadre_barre() {
    return {marge, hauteur() - haut_barre, std::max(px(60), largeur() - 2 * marge), hauteur_barre};
}

void remplit_barre(Controle& barre, std::span<const ToucheDeBarre> touches) {
    Grille& g = barre.grille;
    g.dimensionne(1, static_cast<int>(touches.size()));
    g.espace = espace_barre;
    std::transform(touches.begin(), touches.end(), g.cellules.begin(), aspect_de);
}

Controle& ajoute_barre(Forme& forme, std::span<const ToucheDeBarre> touches) {
    const Cadre cadre = cadre_barre();
    Controle& barre = forme.ajoute({.nom = "g2", .genre = Genre::grille, .cadre = cadre, .etiquette = etiquette_barre});
    remplit_barre(barre, touches);
    return barre;
}

void ajoute_touche(Forme& forme, std::string_view nom, const ToucheDeBarre& touche, const Cadre& cadre) {
    Controle& c = forme.ajoute({.nom = nom, .genre = Genre::bouton, .cadre = cadre});
    c.aspect = aspect_de(touche);
    c.etiquette = moduclav::etiquette_de(touche.role, etiquette_barre);
}

void ajoute_carte(Forme& forme, const Carte& carte, const PlanCarte& plan) {
    const Plan plans[] = {
        {.nom = carte.carte, .genre = Genre::forme, .cadre = plan.carte, .role = Role::carte, .etiquette = 4},
        {.nom = carte.titre,
         .cadre = plan.titre,
         .texte = carte.legende,
         .police = plan.police_titre,
         .alignement = plan.alignement_titre},
        {.nom = carte.valeur,
         .cadre = plan.valeur,
         .police = plan.police_valeur,
         .gras = true,
         .alignement = plan.alignement_valeur},
    };
    forme.construit(plans);
    forme(carte.titre).aspect.encre = palette::gris;
    forme(carte.titre).laisse_passer = true;
}

void remplit_touches(Controle& grille, int lignes, int colonnes, std::span<const std::string_view> faces, int police) {
    Grille& g = grille.grille;
    g.dimensionne(lignes, colonnes);
    g.espace = rythme;
    for (std::size_t i = 0; i < g.cellules.size() && i < faces.size(); ++i) {
        Aspect& a = g.cellules[i];
        a.texte = faces[i];
        a.role = Role::touche;
        a.gras = true;
        a.police = police;
    }
}

void demande_reinitialisation() {
    if (mini_97::demande("Confirmez la réinitialisation du logiciel, les données saisies seront perdues ?"_t)) {
        moduclav::quitte();
    }
}

}  // namespace formes
