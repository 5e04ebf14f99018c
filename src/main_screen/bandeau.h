// Makes and owns the main screen's form, "Form1", and what lies on its banners: the titles, the state of the order, the
// service pictures and the technician's buttons. The other modules of the room ask for it by forme(). What a touch on
// the banners does is form1's.
#pragma once

#include <string>
#include <string_view>

#include "platform/controles/controles.h"

namespace bandeau {

/// Makes the form with its banners; the keys lie between the service pictures and the technician's buttons: `touches`
/// adds them.
void construit(void (*touches)(ecran::Forme& forme));
/// The main screen's form, there from construit() to the end of the run.
ecran::Forme& forme();

/// Gives the form and its banners the working size and the manager's colours.
void place();
/// Gives the form the manager's colours, and its upper banner amber while the kitchen has not collected an order.
void colore();
/// Shows the technician's buttons "Command1" to "Command7", or hides them.
void montre_commandes(bool montre);

/// The form's titles, above and below.
void titre(std::string_view haut, std::string_view bas);
/// Titles of the home page and of the server page.
void titre_accueil();
/// Brings the state at the right up to date: who, which table, how many covers and lines, and the total; before them
/// what the kitchen has not collected, in an amber banner and open to a touch.
void affiche_etat();
/// Puts a passing text in its place, during a wait.
void annonce_etat(std::string_view texte);
/// Says for a moment what a touch has done, beside the state, or in its place where the banner is narrow.
void annonce_geste(std::string_view texte);
/// Takes it away before its time if it begins so.
void retire_geste(std::string_view debut);

}  // namespace bandeau
