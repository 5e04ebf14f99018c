// What the dialogs share upon moduclav: their place over the main screen, the banners with the reset request, the key
// bar, cards, grids of keys, and keys of choices (details and the courses of menus).
#pragma once

#include <span>
#include <string_view>

#include "dialogs/moduclav.h"
#include "platform/controles/controles.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace formes {

using moduclav::champ_de_saisie;
using moduclav::colore;
using moduclav::colore_chiffre;
using moduclav::contraste_min;
using moduclav::est_etroit;
using moduclav::hauteur;
using moduclav::largeur;
using moduclav::met_couleurs;
using moduclav::pose_texte;
using moduclav::px;
using moduclav::separe_initial;
using moduclav::touche_de_boite;

/// Gives the form the place of the main screen.
void place(ecran::Forme& forme);
/// As above, then the banners with their texts; a touch on `label_bas` is the reset request.
void encadre(ecran::Forme& forme, std::string_view haut, std::string_view bas);
/// Text of the bottom banner of the dialogs.
inline constexpr std::string_view version = "Win_Orvalune 2.01";
/// Asks whether to start anew; on yes the program ends at once and nothing is written.
void demande_reinitialisation();

/// Adds `label_geste` to the upper banner: for 1.5 s it says what a touch has done. It takes `cadre`.
void ajoute_geste(ecran::Forme& forme, const ecran::Cadre& cadre);
void annonce_geste(ecran::Forme& forme, std::string_view texte);

/// The area between the banners and above the key bar, with its margins.
ecran::Cadre contenu();
/// The area of the key bar.
ecran::Cadre cadre_barre();

/// One key of a six-key bar; without text and picture an empty place.
struct ToucheDeBarre {
    std::string_view texte = {};
    int image = 0;
    ecran::Role role = ecran::Role::vide;
    int police = 0;  ///< points, 0: the caption size of the bar
};
/// The keys that several bars have.
inline constexpr ToucheDeBarre touche_bas = {"Bas", ecran::image_bas, ecran::Role::action},
                               touche_haut = {"Haut", ecran::image_haut, ecran::Role::action},
                               touche_precedent = {"Précédent"_t, ecran::image_gauche, ecran::Role::action},
                               touche_suivant = {"Suivant", ecran::image_droite, ecran::Role::action},
                               touche_ferme = {"Fermer", ecran::image_fermer, ecran::Role::action},
                               touche_valide = {"Valider", ecran::image_valider, ecran::Role::aller};
/// Fills a bar of one row; a dialog's own is called `g2`.
void remplit_barre(ecran::Controle& barre, std::span<const ToucheDeBarre> touches);
ecran::Controle& ajoute_barre(ecran::Forme& forme, std::span<const ToucheDeBarre> touches);
/// What the bar of a scrolled list does: a page down, a page up, or its end.
enum BarreDeListe { case_bas = 0, case_haut = 1, case_ferme = 5 };
/// Scrolls `g1` by a page where that key of the bar was touched.
void defile_par_page(ecran::Forme& forme, int touche);
/// A key of the bar rests where it leads no further: its looks alone, a touch does what it always does.
void repose(ecran::Controle& barre, int touche, bool repos);
/// From now on two keys of the bar rest while `g1` is at its end and at its beginning.
void repose_aux_bouts(ecran::Forme& forme, int touche_bas = case_bas, int touche_haut = case_haut);
/// A key that looks as one of a bar, but is a button of its own name.
void ajoute_touche(ecran::Forme& forme, std::string_view nom, const ToucheDeBarre& touche, const ecran::Cadre& cadre);

/// A card with a caption and a value: the names of its controls, and what its caption says.
struct Carte {
    std::string_view carte, titre, valeur, legende = {};
};
/// Where it lies on the form, where its two texts lie, and how they look.
struct PlanCarte {
    ecran::Cadre carte, titre, valeur;
    int police_titre = 0, police_valeur = 0;  ///< points
    ecran::Alignement alignement_titre = ecran::Alignement::centre;
    ecran::Alignement alignement_valeur = ecran::Alignement::centre;
};
/// Builds a card; its caption is grey and lets the touch through.
void ajoute_carte(ecran::Forme& forme, const Carte& carte, const PlanCarte& plan);

/// The plan of a list of rows upon a card.
ecran::Plan liste(std::string_view nom, const ecran::Cadre& cadre, int police);

/// A grid of keys that share its area, all with the same look.
void remplit_touches(ecran::Controle& grille, int lignes, int colonnes, std::span<const std::string_view> faces,
                     int police);

/// The bar of a screen of choices, page by page; its last key closes the form, or does what the screen is for.
enum BarreDeChoix { case_precedent = 0, case_suivant = 1, case_fin = 5 };
void ajoute_barre_de_choix(ecran::Forme& forme, const ToucheDeBarre& fin);
/// Its first two keys rest on the first and on the last page.
void repose_aux_pages(ecran::Forme& forme, bool premiere, bool derniere);
/// The key of a choice; without label the place of one.
void remplit_choix(ecran::Aspect& touche, std::string_view libelle);
/// Marks the keys whose label is taken, and no other.
void marque_choix(ecran::Grille& grille, bool (*est_pris)(std::string_view libelle));
/// Builds a screen of courses: a card with `Label1` (the article) and `Label2` (the course), and below it `g1`, keys of
/// `lignes` rows and two columns, in the font size of the complements. Gives the card's area.
ecran::Cadre construit_menu(ecran::Forme& forme, int lignes);

}  // namespace formes
