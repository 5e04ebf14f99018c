// What the main screen does as a whole: refresh, the functions of the bottom row, the toolbox, the network switch, the
// technician's buttons, quitting.
#pragma once

#include <string_view>

namespace fonctions {

/// The start-up sequence again, on the visible screen; ends on the home page.
void recharge();
/// The same, and the page stays.
void recharge_sur_place();
/// Draws the home page with its function row, and sends the waiting orders when the network answers.
void affiche_menu();

/// "FIN", "GRILLE", "TABLE", "SERVEUR" or "NOTE"; anything else does nothing.
void appel_fonctions(std::string_view mode);
/// The key that says send: the network again, for what waits. What stays on the tablet all the same is told.
void envoie();
/// It has been found after all: what was told of it is told no more.
void reseau_revenu();
/// The quit path: waiting orders, confirmation, the note saved.
void quitte();

/// Asks for the access code unless the manager has done without, and opens the toolbox.
void ouvre_outils();
/// Shows what became of the orders; the page stays.
void ouvre_suivi();
/// Asks, and sets or clears the offline switch.
void bascule_reseau();
/// The technician watches a wait for the network; at its end, unless broken off, the tablet looks for it again.
void attend_le_reseau();
/// A touch on one of the technician's buttons "Command1" to "Command7".
void commande(std::string_view nom);

}  // namespace fonctions
