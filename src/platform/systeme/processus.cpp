#include "platform/systeme/processus.h"

#include "platform/systeme/processus_interne.h"

namespace processus {
namespace {

bool seulement_enregistre = false;
std::string derniere;
std::string machine_simulee = "rejeu";

}  // namespace

bool lance(std::string_view commande, Fenetre fenetre) {
    derniere = commande;
    return seulement_enregistre || systeme::lance(commande, fenetre);
}

std::optional<int> execute(const std::vector<std::string>& mots, std::string_view sortie) {
    return systeme::execute(mots, sortie);
}

std::string repertoire_du_programme() {
    return systeme::repertoire_du_programme();
}

bool montre_fichier(std::string_view chemin) {
    return lance(std::string(systeme::ouvreur) + " \"" + std::string(chemin) + "\"", Fenetre::normale);
}

void enregistre_seulement(bool oui) {
    seulement_enregistre = oui;
}

void simule_machine(std::string_view identifiant) {
    machine_simulee = identifiant;
}

std::string derniere_commande() {
    return derniere;
}

std::string identifiant_machine() {
    return seulement_enregistre ? machine_simulee : systeme::identifiant_machine();
}

}  // namespace processus
