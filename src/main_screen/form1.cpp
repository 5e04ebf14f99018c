#include "main_screen/form1.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "config/ch_outils.h"
#include "config/clavv.h"
#include "config/moduclav.h"
#include "config/reglages.h"
#include "config/w_prog.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/nombres.h"
#include "data/reseau.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/clav_num.h"
#include "dialogs/eta_com.h"
#include "dialogs/formes.h"
#include "dialogs/menufor.h"
#include "dialogs/mini_97.h"
#include "dialogs/sai_menu.h"
#include "main_screen/attend_tempo.h"
#include "main_screen/demarrage.h"
#include "main_screen/guet.h"
#include "main_screen/note.h"
#include "main_screen/pages.h"
#include "main_screen/touches.h"
#include "platform/ecran/boucle.h"
#include "platform/ecran/images.h"
#include "platform/ecran/polices.h"
#include "platform/texte.h"

namespace form1 {
namespace {

using namespace ecran;
using formes::px;

constexpr std::string_view marque = "2021-05-19a";
constexpr std::string_view code_outils = "5826";
constexpr int police_etat = 12, police_etat_etroite = 11;
constexpr int hauteur_command = 390, haut_command1 = 870;  ///< twips, the latter from the form's bottom edge

std::unique_ptr<Forme> ecran_principal;

void ouvre_outils() {
    if (reglages::texte(reglages::sans_mot_de_passe) != "OUI") {
        const auto code = clav_num::demande(clav_num::mode_cache, "Mot de passe d'accès aux outils"_t);
        if (code != code_outils) return;
    }
    ch_outils::montre_ch_outils();
    recharge();
}

void bascule_reseau() {
    const bool change = mini_97::demande(etat::hors_ligne ? "Voulez vous connecter le Wifi ?"_t
                                                          : "Voulez vous déconnecter le Wifi ?"_t);
    if (change) etat::hors_ligne = !etat::hors_ligne;
    recharge();
}

void recharge_sur_place() {
    demarrage::execute();
    guet::reprend();
    reseau::passe();
    pages::redessine();
}

/// An open dialog is left in peace.
void recharge_si_seul() {
    if (forme_du_dessus() == ecran_principal.get()) recharge_sur_place();
}

/// Waking up, the tablet looks for the network again.
void au_reveil_du_systeme() {
    recharge_si_seul();
    reseau::passe();
    guet::reveil();
}

/// The technician watches a wait for the network; at its end, unless broken off, the tablet looks for it again.
void attend_le_reseau() {
    attend_tempo::montre_attend_tempo();
    if (!attend_tempo::abandon) recharge_sur_place();
}

void montre_service() {
    etat::service = true;
    for (int n = 1; n <= 7; ++n) forme()("Command" + std::to_string(n)).visible = true;
    forme()("logoserv").au_maintien = attend_le_reseau;
}

void montre_note() {
    eta_com::montre_eta_com();
    note::calcule_total();
    affiche_etat();
    if (std::exchange(etat::commande_envoyee, false)) recharge();
}

/// The technician's buttons.
struct Command {
    std::string_view nom, texte;
    int gauche, largeur;  ///< design pixels
    void (*agit)();
};
void revient_accueil() {
    etat::page_programme = 0;
    recharge();
}
/// The editor opens on the page shown; what it was left on is no page for a waiter.
void ouvre_programme() {
    w_prog::montre_w_prog();
    revient_accueil();
}
void ouvre_menu_exemple() {
    complements::prend(sai_menu::menu_exemple());
    sai_menu::montre_sai_menu();
}
void arrete_sans_question() {
    moduclav::quitte();
}
const Command commands[] = {
    {"Command1", "O", 0, 40, ouvre_programme},         {"Command2", "F", 50, 40, arrete_sans_question},
    {"Command3", "M", 0, 40, revient_accueil},         {"Command4", "C", 100, 40, clavv::montre_clavv},
    {"Command5", "N", 150, 40, montre_note},           {"Command6", "Command6", 200, 90, menufor::montre_menufor},
    {"Command7", "Menu", 300, 60, ouvre_menu_exemple},
};

/// A service picture of the top banner.
struct Service {
    std::string_view nom;
    int image;
    void (*agit)();
};
const Service services[] = {
    {"logoserv", image_wifi, bascule_reseau},
    {"logil", image_outils, ouvre_outils},
    {"logo", image_maison, recharge_sur_place},
};

void construit() {
    Forme& f = *ecran_principal;
    f.nom = "Form1";
    moduclav::bandeaux(f, "", "");
    f("label_haut").au_maintien = montre_service;
    f("label_bas").au_toucher = formes::demande_reinitialisation;
    f.ajoute({"label_etat", -1, Genre::etiquette, {}, "", Role::rien, police_etat, true, Alignement::droite, 0});
    f("label_etat").aspect.encre = palette::jaune;
    f("label_etat").laisse_passer = true;
    for (const Service& s : services) {
        Controle& c = f.ajoute({s.nom, -1, Genre::image, {}, "", Role::rien, 0, false, Alignement::centre, 0});
        c.aspect.image = s.image;
        c.aspect.encre = palette::blanc;
        c.au_toucher = s.agit;
    }
    pages::construit(f);
    for (const Command& k : commands) {
        Controle& c =
            f.ajoute({k.nom, -1, Genre::bouton, {}, k.texte, Role::touche_douce, 9, true, Alignement::centre, 0});
        c.visible = false;
        c.au_toucher = k.agit;
    }
    if (etat::service) montre_service();
    guet::ajoute(f, recharge_si_seul);
}

void place_services() {
    const bool etroit = formes::est_etroit();
    const int pas = px(etroit ? 44 : 72), largeur = formes::largeur();
    int gauche = largeur - 3 * pas;
    forme()("label_etat").aspect.police = etroit ? police_etat_etroite : police_etat;
    for (const Service& s : services) {
        forme()(s.nom).cadre = {gauche, 0, pas, hauteur_bandeau};
        gauche += pas;
    }
}

/// What lies on the banners is seen on whatever colour the manager gives them.
void accorde_au_bandeau() {
    const Couleur fond = forme()("label_haut").aspect.fond;
    const bool propre = fond != sans_couleur;
    for (const Service& s : services) forme()(s.nom).aspect.encre = propre ? encre_lisible(fond) : palette::blanc;
    forme()("label_etat").aspect.encre = propre ? encre_lisible(fond) : palette::jaune;
    forme()("Label_num").aspect.encre = propre ? encre_lisible(fond) : palette::pale;
}

/// Who, which table, how many covers and lines, and the total; the narrow screen has room for abbreviations.
std::string texte_etat() {
    if (!pages::a_des_serveurs()) return "Aucun catalogue";
    if (etat::nom_serveur.empty()) return "Choisissez votre nom";
    const std::string_view point = " · "_t;
    std::string t = etat::nom_serveur;
    const auto ajoute = [&](const std::string& s) { t += std::string(point) + s; };
    const std::string table(texte::colonnes(etat::table_couverts, 3, 3));
    const std::string couverts(texte::rogne(texte::colonnes(etat::table_couverts, 6, 2)));
    if (nombres::lis(table) != 0) ajoute("Table " + table);
    if (nombres::lis(couverts) != 0) {
        ajoute(couverts + (formes::est_etroit() ? " couv." : nombres::lis(couverts) == 1 ? " couvert" : " couverts"));
    }
    const int n = std::min<int>(etat::nb_lignes_note, etat::lignes_note_max);
    ajoute(std::to_string(n) + (formes::est_etroit() ? " l." : n > 1 ? " lignes" : " ligne"));
    ajoute(etat::total_note);
    return t;
}

/// The state takes the room that its text needs, left of the service pictures; the title keeps the rest.
void partage_bandeau() {
    Controle& c = forme()("label_etat");
    const int droite = forme()("logoserv").cadre.gauche - px(formes::est_etroit() ? 8 : 24);
    const int voulu = largeur_en_twips(c.aspect.police, true, c.texte()) + px(2);
    const int gauche = std::max(droite - voulu, formes::largeur() / 5);
    c.cadre = {gauche, 0, droite - gauche, hauteur_bandeau};
    forme()("label_haut").aspect.marge_droite = formes::largeur() - gauche;
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
        !mini_97::demande("La note n'a pas pu être gardée dans prov.txt, fermer quand même ?"_t))
        return;
    moduclav::quitte();
}

void change_table() {
    ch_numtab::montre_ch_numtab();
    recharge();
}

void montre_serveurs() {
    etat::numero_page = 0;
    pages::affiche_serveurs();
}

struct Fonction {
    std::string_view mode;
    void (*agit)();
};
const Fonction fonctions[] = {
    {"FIN", quitte},       {"GRILLE", ouvre_programme}, {"TABLE", change_table}, {"SERVEUR", montre_serveurs},
    {"NOTE", montre_note},
};

/// The window was closed: the quit path, where nothing else is being asked. Before the first page there is nothing to
/// save and nothing to ask.
void ferme_par_le_systeme() {
    if (!demarrage::est_fait()) moduclav::quitte();
    if (forme_du_dessus() == ecran_principal.get()) quitte();
}

}  // namespace

Forme& forme() {
    return *ecran_principal;
}

void montre_form1() {
    ecran_principal = std::make_unique<Forme>();
    construit();
    place_ecran();
    charge(*ecran_principal);
    au_reveil(au_reveil_du_systeme);
    au_changement_d_ecran(recharge_sur_place);
    reseau::au_changement([] {
        if (pages::vue() == pages::Vue::accueil) pages::barre_accueil();
        guet::veille();
    });
    a_la_fermeture(ferme_par_le_systeme);
    a_l_extinction([] { static_cast<void>(note::ecrit_donnees()); });  // nobody is there to be asked
    recharge();
    montre_modal(*ecran_principal);
}

void place_ecran() {
    Forme& f = *ecran_principal;
    formes::place(f);
    moduclav::bandeaux(f, f("label_haut").texte(), f("label_bas").texte());
    place_services();
    pages::place();
    for (const Command& k : commands) {
        f(k.nom).cadre = {px(k.gauche), formes::hauteur() - hauteur_command, px(k.largeur), hauteur_command};
    }
    f("Command1").cadre.haut = formes::hauteur() - haut_command1;
    formes::colore(f);
    accorde_au_bandeau();
}

void recharge() {
    demarrage::execute();
    guet::reprend();
    affiche_menu();
    if (!etat::nom_serveur.empty()) return;
    etat::code_touche = "#FONC#SERVEUR";
    touches::touche(0);
}

void affiche_menu() {
    pages::dessine_touches();
    reseau::passe();
    pages::barre_accueil();
}

void titre_accueil() {
    forme()("label_haut").texte() = "Win_Orvalune " + std::string(marque);
    forme()("label_bas").texte() = "Orvalune";
}

void affiche_etat() {
    Controle& c = forme()("label_etat");
    forme()("logoserv").aspect.image = etat::hors_ligne ? image_wifi_coupe : image_wifi;
    c.texte() = texte_etat();
    partage_bandeau();
}

void annonce_etat(std::string_view texte) {
    forme()("label_etat").texte() = texte;
    partage_bandeau();
}

void appel_fonctions(std::string_view mode) {
    for (const Fonction& f : fonctions) {
        if (f.mode == mode) return f.agit();
    }
}

}  // namespace form1
