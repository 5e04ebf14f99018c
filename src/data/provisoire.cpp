#include "data/provisoire.h"

#include <algorithm>
#include <string>

#include "data/etat.h"
#include "data/nombres.h"

namespace provisoire {

fichiers::Issue ecrit() {
    std::string t = "#SERV#" + nombres::entier_complete(etat::numero_serveur, 2) + "\r\n";
    t += "#TABL#" + etat::texte_table + "\r\n";
    for (int n = 1; n <= std::min<int>(etat::nb_lignes_note, etat::lignes_note_max); ++n) {
        t += etat::lignes_note[static_cast<std::size_t>(n)] + "\r\n";
    }
    return fichiers::ecrit_tout("prov.txt", t, fichiers::Remplace::oui);
}

}  // namespace provisoire
