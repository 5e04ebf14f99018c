#include "platform/processus.h"

#include "platform/processus_interne.h"

namespace processus {
namespace {

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
    return systeme::identifiant_machine();
}

}  // namespace processus
