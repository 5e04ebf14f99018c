#include "main_screen/demarrage.h"

#include <algorithm>
#include <string>

#include "config/porpay.h"
#include "data/catalogue.h"
#include "data/etat.h"
#include "data/livraison.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "data/styles.h"
#include "data/suivi.h"
#include "data/tenus.h"
#include "dialogs/clavv.h"
#include "dialogs/mini_97.h"
#include "dialogs/moduclav.h"
#include "main_screen/bandeau.h"
#include "main_screen/grille.h"
#include "main_screen/note.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace demarrage {
namespace {

constexpr std::string_view programme_parametres = "orvapara.exe";
/// Pixels. Sizes beyond these make no usable screen: the default stands in. Below the least ones a finger would miss
/// the digits of the password, and nobody could set the size right.
constexpr int largeur_min = 320, hauteur_min = 440, cote_max = 10000;
constexpr int cote_par_defaut = 800;

bool deja_fait = false;           ///< the first run of the sequence is over
reglages::Resolution resolution;  ///< the screen format of this run: a later one counts from the next start
bool format_pris = false;         ///< the screen has its format: another program may have held the store until now
bool grille_prise = false;        ///< the key grid has its size, which holds for this run, too; likewise
bool fichiers_prets = false;      ///< the local files are there; likewise

[[noreturn]] void arrete(std::string_view message) {
    mini_97::informe(message);
    moduclav::quitte();
}

/// A form never outgrows the screen: no finger would reach what sets its size right. A tablet may be turned.
void prend_resolution() {
    const reglages::Resolution r = resolution;
    const auto cote = [](int n, int min, int place) {
        const int voulu = n < min || n > cote_max ? cote_par_defaut : n;
        return std::min(voulu, std::max(min, place / ecran::twips_par_pixel));
    };
    etat::largeur_ecran = cote(r.largeur, largeur_min, ecran::largeur_ecran());
    etat::hauteur_ecran = cote(r.hauteur, hauteur_min, ecran::hauteur_ecran());
}

void prend_tout_l_ecran() {
    etat::largeur_ecran = ecran::largeur_ecran() / ecran::twips_par_pixel;
    etat::hauteur_ecran = ecran::hauteur_ecran() / ecran::twips_par_pixel - porpay::reserve;
    place_ecran();
}

void ouvre_reglages() {
    if (reglages::ouvre()) return;
    prend_tout_l_ecran();
    arrete("Rien ne peut être écrit dans le répertoire de travail, le logiciel s'arrête : prévenez le technicien !"_t);
}

/// What is told before the screen has its format is told in the middle of it all the same.
void prend_la_taille_connue() {
    if (!reglages::resolution_choisie()) return prend_tout_l_ecran();
    resolution = reglages::resolution();
    prend_resolution();
    place_ecran();
}

void verifie_separateur() {
    if (locale_systeme::separateur() == '.') return;
    if (locale_systeme::separateur_en_usage() != '.') locale_systeme::corrige_separateur();
    prend_la_taille_connue();
    arrete("Le logiciel a configuré le point comme séparateur décimal (obligatoire), relancez votre logiciel !"_t);
}

/// The screen format is asked for once; nothing is laid out yet, so it counts at once. While another program holds the
/// store it is not known, and not asked for.
void choisit_format() {
    if (format_pris) return prend_resolution();
    const bool choisi = reglages::resolution_choisie();
    format_pris = choisi || !tenus::est_tenu(reglages::nom_fichier);
    if (!choisi) prend_tout_l_ecran();
    if (!format_pris) return;
    if (!choisi) porpay::montre_porpay();
    resolution = reglages::resolution();
    prend_resolution();
    place_ecran();
}

/// Has the network directory file written: by the parameter program, which then starts this one anew, or by hand.
void cherche_repertoire() {
    if (mini_97::demande("Voulez vous effectuer une recherche du serveur ?")) {
        moduclav::passe_la_main(programme_parametres, processus::Fenetre::normale);
        mini_97::informe("Le programme de paramétrage n'a pas pu être lancé, entrez le répertoire réseau !"_t);
    }
    etat::code_dialogue = mini_97::saisie;
    etat::texte_dialogue = "Entrez le répertoire réseau ?"_t;
    clavv::montre_clavv();
    if (texte::rogne(etat::texte_dialogue).empty())
        arrete("Aucun répertoire réseau n'a été donné, le logiciel s'arrête : relancez-le pour l'entrer !"_t);
    if (reseau::ecrit_repertoire(etat::texte_dialogue) == fichiers::Issue::fait) return;
    arrete("Le répertoire réseau n'a pas pu être enregistré, le logiciel s'arrête : prévenez le technicien !"_t);
}

void prend_grille() {
    if (grille_prise) return;
    etat::colonnes_grille = reglages::nombre(reglages::colonnes_grille);
    etat::lignes_grille = reglages::nombre(reglages::lignes_grille);
    grille_prise = !tenus::est_tenu(reglages::nom_fichier);
}

void prend_repertoire() {
    if (!reseau::repertoire_connu()) cherche_repertoire();
    const fichiers::Issue lecture = reseau::lis_repertoire();
    if (deja_fait || lecture == fichiers::Issue::occupe) return;
    if (lecture == fichiers::Issue::fait && !texte::rogne(etat::repertoire_reseau).empty()) return;
    mini_97::informe(
        "Le répertoire réseau n'est pas donné, les commandes attendront sur la tablette : prévenez le technicien !"_t);
}

void prepare_fichiers() {
    if (fichiers_prets) return;
    if (!deja_fait) {
        const auto local = livraison::liste_locale();
        if (local) livraison::retire_temporaires(*local);
        suivi::charge(local);
    }
    const bool choix = styles::init_styles(), touches = programme_touches::prepare();
    fichiers_prets = !tenus::est_tenu(styles::nom_fichier) && !tenus::est_tenu(programme_touches::nom_fichier);
    if (fichiers_prets && (!choix || !touches))
        mini_97::informe(
            "Les fichiers du logiciel n'ont pas pu être créés dans le répertoire de travail : prévenez le technicien !"_t);
}

void prend_catalogue() {
    if (!deja_fait) {
        bandeau::annonce_etat("Lecture du catalogue…"_t);
        reseau::commence_la_connexion();
        ecran::peint_maintenant();  // meanwhile
        catalogue::charge_catalogue();
        reseau::attend_la_connexion();
    }
    if (!reseau::catalogue_frais() && catalogue::catalogue_charge) return;
    catalogue::charge_catalogue();
}

/// What a held file makes of the screens (no keys, no names) is no fault of the tablet's.
void annonce_tenus() {
    if (deja_fait || tenus::noms().empty()) return;
    std::string noms;
    for (const std::string& nom : tenus::noms()) noms += (noms.empty() ? "" : ", ") + nom;
    const std::string suite = tenus::noms().size() > 1 ? ", le logiciel les lira" : ", le logiciel le lira";
    mini_97::informe("Un autre programme utilise " + noms + suite + std::string(" dès que possible !"_t));
}

}  // namespace

void execute() {
    ouvre_reglages();
    verifie_separateur();
    choisit_format();
    prend_repertoire();
    prepare_fichiers();
    grille::raz_touches();
    place_ecran();
    prend_grille();
    etat::total_note = "0.00";
    prend_catalogue();
    etat::decalage_images = reglages::texte(reglages::grandes_images) == "OUI" ? 50 : 0;
    if (fichiers::existe(note::nom_provisoire) && etat::nb_lignes_note == 0) note::charge_provisoire();
    note::calcule_total();
    annonce_tenus();
    deja_fait = true;
}

void place_ecran() {
    bandeau::place();
    grille::place();
}

bool est_fait() {
    return deja_fait;
}

}  // namespace demarrage
