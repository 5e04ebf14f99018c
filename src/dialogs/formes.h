// What the dialogs share upon moduclav: their place over the main screen, the banners with the reset request, the key
// bar, cards and grids of keys.
#pragma once

#include <span>
#include <string_view>

#include "dialogs/moduclav.h"
#include "platform/controles/controles.h"
#include "platform/peinture/images.h"

namespace formes {

using moduclav::colore;
using moduclav::colore_chiffre;
using moduclav::contraste_min;
using moduclav::est_etroit;
using moduclav::hauteur;
using moduclav::largeur;
using moduclav::met_couleurs;
using moduclav::px;

/// Gives the form the place of the main screen.
void place(ecran::Forme& forme);
/// As above, then the banners with their texts; a touch on `label_bas` is the reset request.
void encadre(ecran::Forme& forme, std::string_view haut, std::string_view bas);
/// Text of the bottom banner of the dialogs.
inline constexpr std::string_view version = "Win_Orvalune 2.01";

/// The area between the banners and above the key bar, with its margins.
ecran::Cadre contenu();
/// The area of the key bar.
ecran::Cadre cadre_barre();

/// One key of a six-key bar; without text and picture an empty place.
struct ToucheDeBarre {
    std::string_view texte;
    int image = 0;
    ecran::Role role = ecran::Role::vide;
    int police = 0;  ///< points, 0: the caption size of the bar
};
/// Keys of several bars.
inline constexpr ToucheDeBarre touche_bas = {"Bas", ecran::image_bas, ecran::Role::action};
inline constexpr ToucheDeBarre touche_haut = {"Haut", ecran::image_haut, ecran::Role::action};
inline constexpr ToucheDeBarre touche_ferme = {"Fermer", ecran::image_fermer, ecran::Role::action};
/// Fills a bar of one row; a dialog's own is called `g2`.
void remplit_barre(ecran::Controle& barre, std::span<const ToucheDeBarre> touches);
ecran::Controle& ajoute_barre(ecran::Forme& forme, std::span<const ToucheDeBarre> touches);
/// A key that looks as one of a bar, but is a button of its own name.
void ajoute_touche(ecran::Forme& forme, std::string_view nom, const ToucheDeBarre& touche, const ecran::Cadre& cadre);

/// A card with a caption and a value: the names of its controls, and what it says.
struct Carte {
    std::string_view carte, titre, valeur, legende;
};
/// Where it lies on the form, where its two texts lie, and how they look.
struct PlanCarte {
    ecran::Cadre carte, titre, valeur;
    int police_titre = 0, police_valeur = 0;  ///< points
    ecran::Alignement alignement_titre = ecran::Alignement::gauche;
    ecran::Alignement alignement_valeur = ecran::Alignement::gauche;
};
/// Builds a card; its caption is grey and lets the touch through.
void ajoute_carte(ecran::Forme& forme, const Carte& carte, const PlanCarte& plan);

/// A grid of keys that share its area, all with the same look.
void remplit_touches(ecran::Controle& grille, int lignes, int colonnes, std::span<const std::string_view> faces,
                     int police);

/// Asks whether to start anew; on yes the program ends at once and nothing is written.
void demande_reinitialisation();

}  // namespace formes
