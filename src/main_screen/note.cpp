#include "main_screen/note.h"

#include <limits>
#include <string>

#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "dialogs/mini_97.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace note {
bool ajoute_ligne() {
    if (texte::rogne(etat::texte_travail).empty()) return false;
    if (etat::nb_lignes_note < std::numeric_limits<std::int16_t>::max()) ++etat::nb_lignes_note;
    if (etat::nb_lignes_note > etat::lignes_note_max) return mini_97::informe("La note est pleine !"), false;
    etat::lignes_note[static_cast<std::size_t>(etat::nb_lignes_note)] = etat::texte_travail;
    calcule_total();
    return true;
}

void calcule_total() {
    etat::total_note = lignes::total(etat::lignes_gardees());
}

bool ecrit_donnees() {
    std::string t = "#SERV#" + nombres::entier_complete(etat::numero_serveur, 2) + "\r\n";
    t += "#TABL#" + etat::texte_table + "\r\n";
    for (const std::string& ligne : etat::lignes_gardees()) t += ligne + "\r\n";
    return fichiers::ecrit_tout(nom_provisoire, t, fichiers::Remplace::oui) == fichiers::Issue::fait;
}

void charge_provisoire() {}

}  // namespace note
