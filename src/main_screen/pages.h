// The pages of the main screen: the key grid's geometry, the lists of servers, families and articles, the home page of
// the key program, and the function row.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/controles/controles.h"

namespace pages {

inline constexpr int nb_touches = 100;

/// Key codes by key number, 1 to nb_touches; entry 0 stays empty.
inline std::array<std::string, nb_touches + 1> codes;
/// Key codes of the function row by column.
inline std::array<std::string, 10> codes_barre;

enum class Vue { accueil, serveurs, familles, articles };
/// The page that is shown.
Vue vue();

/// Adds the keys `btx`, their companions `btt`, the function row `g2` and what lies on it; the two are told of touches.
void construit(ecran::Forme& forme, void (*au_toucher)(int touche), void (*a_la_barre)(int colonne));
/// Lays the function row out for the working size.
void place();
/// Takes all keys off the grid.
void raz_touches();

void affiche_serveurs();
void affiche_familles();
void affiche_articles();
/// The home page: page etat::page_programme of the key program.
void dessine_touches();
/// Shows the present page again.
void redessine();

/// Caption of the key that led to a family without a name of its own; it becomes the page's title.
void nomme_sous_groupe(std::string_view nom);

/// Fills the function row: six key codes, each followed by "|", and six groups of six characters whose first two are
/// the picture number.
void init_g2(std::string_view codes_touches, std::string_view images);
/// The function row of the home page, with the count of waiting orders on the send key.
void barre_accueil();

}  // namespace pages
