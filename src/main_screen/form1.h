// The main screen: start-up, refresh, the functions of the bottom row, quitting.
#pragma once

#include <string_view>

#include "platform/ecran/controles.h"

namespace form1 {

/// Loads the main screen, runs the start-up sequence and serves until the program ends (by ecran::FinDuProgramme).
void montre_form1();

/// The main screen's form, loaded for the whole run.
ecran::Forme& forme();

/// Gives the main screen and all that lies on it the working size.
void place_ecran();

/// The start-up sequence again, on the visible screen; ends on the home page.
void recharge();
/// Titles of the home page and of the server page.
void titre_accueil();
/// Draws the home page with its function row, and sends the waiting orders when the network answers.
void affiche_menu();
/// Brings the top banner up to date: who, which table, how many covers and lines, and the total.
void affiche_etat();

/// Puts a passing text in its place, during a wait.
void annonce_etat(std::string_view texte);

/// "FIN", "GRILLE", "TABLE", "SERVEUR" or "NOTE"; anything else does nothing.
void appel_fonctions(std::string_view mode);

}  // namespace form1
