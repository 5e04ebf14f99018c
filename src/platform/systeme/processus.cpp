#include "platform/systeme/processus.h"

#include "platform/systeme/processus_interne.h"

namespace processus {
namespace {

/// What a replay finds in the place of the machine's identifier: it writes the same orders everywhere.
constexpr const char* machine_simulee = "rejeu";

bool seulement_enregistre = false;
std::string derniere;

}  // namespace

bool lance(std::string_view commande, Fenetre fenetre) {
    derniere = commande;
    return seulement_enregistre || systeme::lance(commande, fenetre);
}

void enregistre_seulement(bool oui) {
    seulement_enregistre = oui;
}

std::string derniere_commande() {
    return derniere;
}

std::string identifiant_machine() {
    return seulement_enregistre ? machine_simulee : systeme::identifiant_machine();
}

}  // namespace processus
