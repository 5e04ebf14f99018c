#include "main_screen/note.h"

#include <algorithm>
#include <limits>

#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/provisoire.h"
#include "dialogs/mini_97.h"
#include "platform/texte.h"

namespace note {

void ajoute_ligne() {
    if (texte::rogne(etat::texte_travail).empty()) return;
    if (etat::nb_lignes_note < std::numeric_limits<std::int16_t>::max()) ++etat::nb_lignes_note;
    if (etat::nb_lignes_note > etat::lignes_note_max) return mini_97::informe("La note est pleine !");
    etat::lignes_note[static_cast<std::size_t>(etat::nb_lignes_note)] = etat::texte_travail;
    calcule_total();
}

void calcule_total() {
    double total = 0;
    for (int n = 1; n <= std::min<int>(etat::nb_lignes_note, etat::lignes_note_max); ++n) {
        const std::string& ligne = etat::lignes_note[static_cast<std::size_t>(n)];
        total += lignes::prix(ligne).value_or(0) * lignes::quantite(ligne).value_or(1);
    }
    etat::total_note = nombres::montant(total);
}

bool ecrit_donnees() {
    return provisoire::ecrit() == fichiers::Issue::fait;
}

void charge_provisoire() {}

}  // namespace note
