#include "main_screen/form1.h"

#include <string>

#include "data/etat.h"
#include "data/reseau.h"
#include "dialogs/formes.h"
#include "dialogs/moduclav.h"
#include "dialogs/suivi.h"
#include "main_screen/bandeau.h"
#include "main_screen/demarrage.h"
#include "main_screen/fonctions.h"
#include "main_screen/grille.h"
#include "main_screen/guet.h"
#include "main_screen/note.h"
#include "main_screen/pages.h"
#include "main_screen/touches.h"
#include "platform/ecran/boucle.h"

namespace form1 {
namespace {

using namespace ecran;
using bandeau::forme;

bool est_seule() {
    return forme_du_dessus() == &forme();
}

/// An open dialog is left in peace.
void recharge_si_seule() {
    if (est_seule()) fonctions::recharge_sur_place();
}

/// Waking up, the tablet looks for the network again.
void au_reveil_du_systeme() {
    recharge_si_seule();
    reseau::passe();
    guet::reveil();
}

/// The network has answered otherwise than before, orders have left, or the kitchen has collected some. The start's own
/// text stays until the first page.
void au_changement_du_reseau() {
    if (reseau::joignable()) fonctions::reseau_revenu();
    if (pages::vue() == pages::Vue::accueil) pages::barre_accueil();
    if (demarrage::est_fait()) bandeau::affiche_etat();
    ecran_suivi::rafraichit();
    guet::veille();
}

/// The window was closed: the quit path, where nothing else is being asked. Before the first page there is nothing to
/// save and nothing to ask.
void ferme_par_le_systeme() {
    if (!demarrage::est_fait()) moduclav::quitte();
    if (est_seule()) fonctions::quitte();
}

/// The system may stop at any moment: nobody is there to be asked. Before the first page the note of the run before has
/// not been read.
void garde_la_note() {
    if (!demarrage::est_fait()) return;
    static_cast<void>(note::ecrit_donnees());
}

void ajoute_touches(Forme& f) {
    grille::construit(f, {touches::touche, touches::touche_barre, touches::tient_barre});
}

void montre_service(bool montre) {
    etat::service = montre;
    bandeau::montre_commandes(montre);
    forme()("logoserv").au_maintien = nullptr;
    if (montre) forme()("logoserv").au_maintien = fonctions::attend_le_reseau;
}

/// Held again, the title hides what it has shown: one of these keys ends the program without a question.
void bascule_service() {
    montre_service(!forme()("Command1").visible);
}

void construit() {
    bandeau::construit(ajoute_touches);
    Forme& f = forme();
    f.a_la_frappe = touches::tape;
    f("label_haut").au_maintien = bascule_service;
    f("label_bas").au_toucher = formes::demande_reinitialisation;
    f("label_etat").au_maintien = bascule_service;
    f("label_etat").au_toucher = fonctions::ouvre_suivi;
    f("logosuiv").au_toucher = fonctions::ouvre_suivi;
    f("logoserv").au_toucher = fonctions::bascule_reseau;
    f("logil").au_toucher = fonctions::ouvre_outils;
    f("logo").au_toucher = fonctions::recharge_sur_place;
    for (int n = 1; n <= 7; ++n) {
        const std::string nom = "Command" + std::to_string(n);
        f(nom).au_toucher = [nom] { fonctions::commande(nom); };
    }
    montre_service(etat::service);
    guet::ajoute(f, recharge_si_seule);
}

}  // namespace

void montre_form1() {
    construit();
    demarrage::place_ecran();
    charge(forme());
    au_reveil(au_reveil_du_systeme);
    au_changement_d_ecran(fonctions::recharge_sur_place);
    reseau::au_changement(au_changement_du_reseau);
    a_la_fermeture(ferme_par_le_systeme);
    a_l_extinction(garde_la_note);
    fonctions::recharge();
    montre_modal(forme());
}

}  // namespace form1
