// The real screens in this process, painted at every turn as before a waiter's eyes, upon a restaurant of any size.
#pragma once

#include <memory>
#include <string>

#include "platform/ecran/boucle.h"

namespace banc {

/// A window that somebody looks at, and no screen behind it: every turn paints.
std::unique_ptr<ecran::Fenetre> cree_fenetre_vue(int largeur, int hauteur);

/// A copy of the demonstration restaurant in the working directory. With `articles` its catalogue is another one: so
/// many of them, the first 96 in "Viandes", the others in twelve families.
void copie_demonstration(int articles);
/// That copy as large as the screen, with 48 keys on a page of articles.
void pose_restaurant(int articles = 0);
/// The text of that catalogue.
std::string catalogue_de(int articles);

/// The clock stands still, programs and network answer at once, as in a replay; nothing is left of another measure.
void simule_le_monde();
void rend_le_monde();

/// Opens the main screen upon the restaurant in the working directory, until the pilot cuts it off.
void ouvre(int largeur, int hauteur, ecran::Pilote& pilote);

}  // namespace banc
