#include "main_screen/fonctions.h"

#include <string>
#include <utility>

#include "config/ch_outils.h"
#include "config/w_prog.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/clav_num.h"
#include "dialogs/clavv.h"
#include "dialogs/eta_com.h"
#include "dialogs/menufor.h"
#include "dialogs/mini_97.h"
#include "dialogs/moduclav.h"
#include "dialogs/sai_menu.h"
#include "dialogs/suivi.h"
#include "main_screen/attend_tempo.h"
#include "main_screen/bandeau.h"
#include "main_screen/comptes.h"
#include "main_screen/demarrage.h"
#include "main_screen/guet.h"
#include "main_screen/note.h"
#include "main_screen/pages.h"
#include "platform/systeme/texte.h"

namespace fonctions {
namespace {

constexpr std::string_view code_outils = "5826";
constexpr std::string_view reseau_absent = "Réseau absent"_t;

struct Action {
    std::string_view nom;
    void (*agit)();
};

template <std::size_t Nombre>
void execute(const Action (&actions)[Nombre], std::string_view nom) {
    for (const Action& a : actions) {
        if (a.nom == nom) return a.agit();
    }
}

void montre_serveurs() {
    etat::numero_page = 0;
    pages::affiche_serveurs();
}

void montre_note() {
    eta_com::montre_eta_com();
    note::calcule_total();
    comptes::affiche();
    bandeau::affiche_etat();
    if (std::exchange(etat::commande_envoyee, false)) recharge();
}

void change_table() {
    ch_numtab::montre_ch_numtab();
    recharge();
}

/// The main screen then shows the page that the editor was left on.
void ouvre_programme() {
    w_prog::montre_w_prog();
    recharge();
}

void revient_accueil() {
    etat::page_programme = 0;
    recharge();
}

void ouvre_menu_exemple() {
    complements::prend(sai_menu::menu_exemple());
    sai_menu::montre_sai_menu();
}

void arrete_sans_question() {
    moduclav::quitte();
}

const Action fonctions_de_la_barre[] = {
    {"FIN", quitte},       {"GRILLE", ouvre_programme}, {"TABLE", change_table}, {"SERVEUR", montre_serveurs},
    {"NOTE", montre_note},
};

const Action commandes[] = {
    {"Command1", ouvre_programme},     {"Command2", arrete_sans_question}, {"Command3", revient_accueil},
    {"Command4", clavv::montre_clavv}, {"Command5", montre_note},          {"Command6", menufor::montre_menufor},
    {"Command7", ouvre_menu_exemple},
};

}  // namespace

void recharge() {
    demarrage::execute();
    affiche_menu();
    guet::reprend();
    if (etat::nom_serveur.empty()) montre_serveurs();
}

void recharge_sur_place() {
    demarrage::execute();
    reseau::passe();
    guet::reprend();
    pages::redessine();
}

void affiche_menu() {
    pages::dessine_touches();
    reseau::passe();
    pages::barre_accueil();
}

void appel_fonctions(std::string_view mode) {
    execute(fonctions_de_la_barre, mode);
}

void envoie() {
    recharge();
    const int n = reseau::commandes_en_attente();
    if (n > 0 && !reseau::joignable())
        return bandeau::annonce_geste(std::string(etat::hors_ligne ? "Wifi coupé"_t : reseau_absent) + " : " +
                                      std::to_string(n) + " en attente");
    if (etat::nb_lignes_note > 0) bandeau::annonce_geste("Note non envoyée : touchez Note"_t);
}

void reseau_revenu() {
    bandeau::retire_geste(reseau_absent);
}

void quitte() {
    if (const int n = reseau::commandes_en_attente(); n > 0) {
        if (mini_97::demande("Attention, vous avez " + std::to_string(n) +
                             std::string(" Commande(s) en attente, Envoyer maintenant ?"))) {
            etat::code_touche.clear();
            return recharge();
        }
    }
    if (!mini_97::demande("Confirmez la fermeture de Orvalune ?")) return;
    if (!note::ecrit_donnees() && etat::nb_lignes_note > 0 &&
        !mini_97::demande("La note n'a pas pu être gardée et sera perdue, fermer quand même ?"_t))
        return;
    moduclav::quitte();
}

void ouvre_outils() {
    if (reglages::texte(reglages::sans_mot_de_passe) != "OUI") {
        const auto code = clav_num::demande(clav_num::mode_cache, "Mot de passe d'accès aux outils"_t);
        if (code && *code != code_outils) bandeau::annonce_geste("Mot de passe refusé"_t);
        if (code != code_outils) return;
    }
    ch_outils::montre_ch_outils();
    recharge();
}

/// Who asks wants to know how it is at this moment.
void ouvre_suivi() {
    reseau::passe();
    guet::reprend();
    ecran_suivi::montre_suivi();
    recharge_sur_place();
}

void bascule_reseau() {
    const bool change = mini_97::demande(etat::hors_ligne ? "Voulez vous connecter le Wifi ?"_t
                                                          : "Voulez vous déconnecter le Wifi ?"_t);
    if (change) etat::hors_ligne = !etat::hors_ligne;
    recharge();
}

void attend_le_reseau() {
    attend_tempo::montre_attend_tempo();
    if (!attend_tempo::abandon) recharge_sur_place();
}

void commande(std::string_view nom) {
    execute(commandes, nom);
}

}  // namespace fonctions
