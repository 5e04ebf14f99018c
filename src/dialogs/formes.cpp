#include "dialogs/formes.h"

#include <algorithm>

#include "config/moduclav.h"
#include "config/reglages.h"
#include "data/etat.h"
#include "dialogs/mini_97.h"
#include "platform/texte.h"

namespace formes {
namespace {

using namespace ecran;

constexpr int marge = px(10);
constexpr int haut_contenu = px(36), bas_contenu = px(142);  ///< from the form's top and bottom edge
constexpr int haut_barre = px(132), hauteur_barre = px(98);  ///< the bar's top, from the bottom edge
constexpr int espace_barre = px(8);
constexpr int police_barre = 14, police_barre_etroite = 11;
constexpr int largeur_etroite = 900;  ///< working widths below this get the narrow layouts

Couleur rgb(std::int32_t bgr) {
    return bgr < 0 ? sans_couleur : ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

/// What a text of this aspect is seen on; where it has no ground of its own, that is a card.
Couleur fond_vu(const Aspect& a) {
    if (a.fond != sans_couleur) return a.fond;
    return fond_de(a.role) != sans_couleur ? fond_de(a.role) : fond_de(Role::carte);
}

/// The colours that the manager has set under a number, 1 to 9.
void met_couleurs_du_numero(Aspect& aspect, int numero) {
    if (numero < 1 || numero > 9) return;
    const auto n = static_cast<std::size_t>(numero);
    met_couleurs(aspect, rgb(etat::fonds_regles[n]), rgb(etat::encres_regles[n]));
}

/// The tag of one cell: the key that says go and the one that destroys have their own, an empty place has none.
int etiquette_de(const Aspect& cellule, int etiquette_grille) {
    switch (cellule.role) {
        case Role::aller:
            return 5;
        case Role::detruire:
            return 6;
        case Role::entete:
            return 7;
        case Role::vide:
        case Role::ligne_touchee:
        case Role::ligne_choisie:
        case Role::puce:
            return 0;
        default:
            return etiquette_grille;
    }
}

}  // namespace

int largeur() {
    return etat::largeur_ecran * twips_par_pixel;
}
int hauteur() {
    return etat::hauteur_ecran * twips_par_pixel;
}
bool est_etroit() {
    return etat::largeur_ecran < largeur_etroite || etat::largeur_ecran < etat::hauteur_ecran;
}

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
    for (int c = 0; c < g.colonnes; ++c) {
        const ToucheDeBarre& t = touches[static_cast<std::size_t>(c)];
        Aspect& a = g.cellule(0, c);
        a = {};
        a.texte = t.texte;
        a.image = t.image;
        a.role = t.role;
        a.gras = true;
        a.police = t.police != 0 ? t.police : est_etroit() ? police_barre_etroite : police_barre;
    }
}

Controle& ajoute_barre(Forme& forme, std::span<const ToucheDeBarre> touches) {
    Controle& barre =
        forme.ajoute({"g2", -1, Genre::grille, cadre_barre(), "", Role::rien, 0, true, Alignement::centre, 2});
    remplit_barre(barre, touches);
    return barre;
}

void ajoute_carte(Forme& forme, const Carte& carte, const PlanCarte& plan) {
    const Plan plans[] = {
        {carte.carte, -1, Genre::forme, plan.carte, "", Role::carte, 0, false, Alignement::centre, 4},
        {carte.titre, -1, Genre::etiquette, plan.titre, carte.legende, Role::rien, plan.police_titre, false,
         plan.alignement_titre, 0},
        {carte.valeur, -1, Genre::etiquette, plan.valeur, "", Role::rien, plan.police_valeur, true,
         plan.alignement_valeur, 0},
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

void met_couleurs(Aspect& aspect, Couleur fond, Couleur encre) {
    if (fond != sans_couleur) {
        aspect.fond = fond;
        aspect.encre = encre_lisible(fond);
    }
    if (encre != sans_couleur && contraste(encre, fond_vu(aspect)) >= contraste_min) aspect.encre = encre;
}

void colore(Forme& forme) {
    for (int n = 1; n <= 9; ++n) {
        const auto i = static_cast<std::size_t>(n);
        etat::fonds_regles[i] = reglages::couleur(reglages::fonds + n);
        etat::encres_regles[i] = reglages::couleur(reglages::encres + n);
    }
    for (auto i = forme.controles.rbegin(); i != forme.controles.rend(); ++i) {
        Controle& c = **i;
        if (c.etiquette == 0) continue;
        met_couleurs_du_numero(c.aspect, c.etiquette);
        for (Aspect& a : c.grille.cellules) met_couleurs_du_numero(a, etiquette_de(a, c.etiquette));
    }
}

void colore_chiffre(Aspect& aspect, int chiffre) {
    aspect.role = Role::touche;
    aspect.fond = aspect.encre = sans_couleur;
    if (chiffre < 1 || chiffre > 9) return;
    aspect.fond = palette::chiffres[chiffre];
    aspect.encre = encre_lisible(aspect.fond);
    met_couleurs_du_numero(aspect, chiffre);
}

void demande_reinitialisation() {
    if (mini_97::demande("Confirmez la réinitialisation du logiciel, les données saisies seront perdues ?"_t)) {
        moduclav::quitte();
    }
}

}  // namespace formes
