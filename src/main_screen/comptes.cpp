#include "main_screen/comptes.h"

#include <map>
#include <string>

#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "main_screen/grille.h"
#include "platform/systeme/texte.h"

namespace comptes {
namespace {

using programme_touches::marque::article;

/// The reference of the article that a key code orders, empty when it orders none.
std::string_view reference(std::string_view code) {
    return code.starts_with(article) ? texte::rogne(lignes::reference(code.substr(article.size()))) : "";
}

}  // namespace

void affiche() {
    std::map<std::string_view, double> pris;
    for (const std::string& ligne : etat::lignes_gardees())
        pris[texte::rogne(lignes::reference(ligne))] += lignes::quantite(ligne).value_or(1);
    for (int k = 1; k <= grille::nb_touches; ++k) {
        const std::string_view r = reference(grille::codes[static_cast<std::size_t>(k)]);
        const auto n = r.empty() ? pris.end() : pris.find(r);
        grille::pose_compte(k, n != pris.end() && n->second > 0 ? nombres::general(n->second) : "");
    }
}

}  // namespace comptes
