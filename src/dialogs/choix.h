// Keys of choices: their looks and the mark of those taken, and the key bar to page through them. Details and the
// courses of menus are shown so.
#pragma once

#include <string_view>

#include "platform/controles/controles.h"

namespace choix {

/// Key bar of these screens.
enum CaseBarre { precedent = 0, suivant = 1, ferme = 5 };
/// Adds the bar; its last key closes the form, or ends the entry: green, with the caption "Valider".
enum class Fin { ferme, valide };
void ajoute_barre(ecran::Forme& forme, Fin fin = Fin::ferme);

/// The key of a choice; without label the place of one.
void remplit(ecran::Aspect& touche, std::string_view libelle);
/// Marks the keys whose label is taken, and no other.
void marque(ecran::Grille& grille, bool (*est_pris)(std::string_view libelle));

/// Builds a screen of courses: a card with `Label1` (the article) and `Label2` (the course), and below it `g1`, keys of
/// `lignes` rows and two columns, in the font size of the complements. Gives the card's area.
ecran::Cadre construit_menu(ecran::Forme& forme, int lignes);

}  // namespace choix
