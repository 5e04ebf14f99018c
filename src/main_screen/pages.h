// The pages of the main screen: the lists of servers, families and articles, and the home page of the key program, each
// with its function row.
#pragma once

#include <string_view>

namespace pages {

enum class Vue { accueil, serveurs, familles, articles };
/// The page that is shown.
Vue vue();

void affiche_serveurs();
void affiche_familles();
void affiche_articles();
/// The home page: page etat::page_programme of the key program.
void dessine_touches();
/// Shows the present page again.
void redessine();

/// Caption of the key that led to a family without a name of its own; it becomes the page's title.
void nomme_sous_groupe(std::string_view nom);

/// The function row of the home page, with the count of waiting orders on the send key.
void barre_accueil();

}  // namespace pages
