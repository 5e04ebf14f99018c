#include "data/reseau.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "data/etat.h"
#include "data/identite.h"
#include "data/livraison.h"
#include "data/tenus.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace reseau {
namespace {

constexpr std::string_view nom_fichier = "wfichdir.wdo";
constexpr int lignes_vides = 11;
constexpr std::uint64_t longueur_max = 1 << 20;
constexpr int limite_sonde_ms = 2000, limite_copie_ms = 10000;
constexpr int attente_sonde_ms = 100, attente_catalogue_ms = 2000;

struct Connexion {
    bool joignable = false;
    bool au_demarrage = false;         ///< the start waits for the catalogue
    bool catalogue_venu = false;       ///< it has come whole at least once
    bool catalogue_frais = false;      ///< it has come since it was last read
    bool restes_retires = false;       ///< of deliveries that an earlier run did not end
    std::vector<std::string> livrees;  ///< delivered orders whose files could not be deleted
    bool livree_tenue = false;         ///< another program holds one of them
    std::function<void()> au_changement;
};
Connexion connexion;

/// What a pass has tried already: each order once, and the catalogue once.
struct Passe {
    std::vector<std::string> commandes;
    bool catalogue = false;
    bool tenue = false;  ///< another program held an order's file
};
Passe passe_en_cours;

void signale() {
    if (connexion.au_changement) connexion.au_changement();
}

void change_etat(bool joignable) {
    const bool avant = std::exchange(connexion.joignable, joignable);
    if (avant != joignable) signale();
}

void cherche_catalogue();

/// The files of waiting orders, without those that have been delivered and could not be deleted: the router, which has
/// perhaps collected them, gets none twice.
std::vector<std::string> commandes_qui_attendent() {
    std::erase_if(connexion.livrees, [](const std::string& nom) { return !fichiers::existe(nom); });
    std::vector<std::string> noms = livraison::en_attente();
    std::erase_if(noms, [](const std::string& nom) {
        return std::find(connexion.livrees.begin(), connexion.livrees.end(), nom) != connexion.livrees.end();
    });
    return noms;
}

/// The next waiting order that this pass has not tried, also one that was written meanwhile.
std::optional<std::string> commande_suivante() {
    const auto& tentees = passe_en_cours.commandes;
    for (std::string& nom : commandes_qui_attendent()) {
        if (std::find(tentees.begin(), tentees.end(), nom) == tentees.end()) return std::move(nom);
    }
    return std::nullopt;
}

/// Delivers order after order, each within a limit of its own; then what else is missing.
void livre_la_suivante() {
    if (etat::hors_ligne) return;
    const auto nom = commande_suivante();
    if (!nom) return cherche_catalogue();
    passe_en_cours.commandes.push_back(*nom);
    auto sort = std::make_shared<livraison::Sort>(livraison::Sort::reseau_perdu);
    ouvrier::lance(
        {[repertoire = etat::repertoire_reseau, nom = *nom, sort] { *sort = livraison::livre(repertoire, nom); },
         [sort, nom = *nom](ouvrier::Reponse reponse) {
             const bool perdu = reponse == ouvrier::Reponse::hors_delai || *sort == livraison::Sort::reseau_perdu;
             if (!perdu && *sort == livraison::Sort::livree && fichiers::existe(nom)) {
                 connexion.livrees.push_back(nom);
                 connexion.livree_tenue = true;
             }
             passe_en_cours.tenue = passe_en_cours.tenue || *sort == livraison::Sort::tenue;
             signale();
             if (perdu) return change_etat(false);
             livre_la_suivante();
         },
         limite_copie_ms, signale});
}

void cherche_catalogue() {
    if (connexion.catalogue_venu || passe_en_cours.catalogue) return;
    passe_en_cours.catalogue = true;
    auto entier = std::make_shared<bool>(false);
    ouvrier::lance(
        {[repertoire = etat::repertoire_reseau, entier] { *entier = livraison::copie_catalogue(repertoire); },
         [entier](ouvrier::Reponse reponse) {
             if (reponse == ouvrier::Reponse::hors_delai) return change_etat(false);
             connexion.catalogue_venu = connexion.catalogue_venu || *entier;
             connexion.catalogue_frais = connexion.catalogue_frais || *entier;
             livre_la_suivante();
         },
         limite_copie_ms});
}

/// At the start the catalogue comes first; later the orders, which a slow catalogue must not hold up.
void apres_la_sonde(bool repond) {
    if (etat::hors_ligne) return;
    change_etat(repond);
    if (!repond) return;
    passe_en_cours = {};
    if (connexion.au_demarrage) cherche_catalogue();
    if (!passe_en_cours.catalogue) livre_la_suivante();
}

/// Writes the probe; what another program kept from being deleted is deleted on the way.
bool lance_sonde() {
    struct Constat {
        bool repond = false, tenue = false;
        std::vector<std::string> livrees;
    };
    auto constat = std::make_shared<Constat>();
    // Tried once: a slow directory with many files must not pass for an unreachable one every time.
    const auto restes =
        std::exchange(connexion.restes_retires, true) ? std::vector<std::string>() : livraison::en_attente();
    return ouvrier::lance({[repertoire = etat::repertoire_test, record = int{etat::record_test}, constat,
                            livrees = connexion.livrees, restes, date = horloge::jour(horloge::maintenant())] {
                               constat->repond = livraison::ecrit_sonde(repertoire, record, date);
                               constat->livrees = livrees;
                               constat->tenue = livraison::supprime_livrees(constat->livrees);
                               if (constat->repond) livraison::retire_restes(repertoire, restes);
                           },
                           [constat](ouvrier::Reponse reponse) {
                               const bool faite = reponse == ouvrier::Reponse::faite;
                               if (faite) connexion.livrees = std::move(constat->livrees);
                               if (faite) connexion.livree_tenue = constat->tenue;
                               if (faite && !constat->repond) connexion.restes_retires = false;
                               apres_la_sonde(faite && constat->repond);
                           },
                           limite_sonde_ms});
}

}  // namespace

bool repertoire_connu() {
    return fichiers::existe(nom_fichier);
}

fichiers::Issue lis_repertoire() {
    if (tenus::attend(nom_fichier)) return fichiers::Issue::occupe;
    std::string contenu;
    const auto lecture = tenus::note(nom_fichier, fichiers::lis_tout(nom_fichier, contenu, longueur_max));
    const auto lignes = texte::lignes(contenu);
    if (lecture != fichiers::Issue::occupe)
        etat::repertoire_reseau = lignes.empty() ? "" : std::string(texte::rogne(lignes[0]));
    etat::repertoire_test = etat::repertoire_reseau;
    etat::record_test = 1;
    return lecture;
}

fichiers::Issue ecrit_repertoire(std::string_view repertoire) {
    std::string t = std::string(repertoire) + "\r\n";
    for (int i = 0; i < lignes_vides; ++i) t += " \r\n";
    return fichiers::ecrit_tout(nom_fichier, t, fichiers::Remplace::oui);
}

bool joignable() {
    return connexion.joignable && !etat::hors_ligne;
}

bool a_reprendre() {
    return joignable() && (passe_en_cours.tenue || connexion.livree_tenue);
}

int commandes_en_attente() {
    return static_cast<int>(commandes_qui_attendent().size());
}

void premiere_connexion() {
    if (etat::hors_ligne || !lance_sonde()) return;
    connexion.au_demarrage = true;
    ouvrier::attends(attente_sonde_ms);
    if (connexion.joignable) ouvrier::attends(attente_catalogue_ms);
    connexion.au_demarrage = false;
}

void passe() {
    if (etat::hors_ligne) {
        connexion.joignable = false;
        return;
    }
    static_cast<void>(lance_sonde());
}

bool catalogue_frais() {
    return std::exchange(connexion.catalogue_frais, false);
}

void envoie_identification(std::function<void(bool)> suite) {
    const std::string nom = "00_00_0_" + horloge::jour_et_heure(horloge::maintenant()) + ".txt";
    auto ecrit = std::make_shared<bool>(false);
    const bool lance =
        !etat::hors_ligne &&
        ouvrier::lance(
            {[repertoire = etat::repertoire_reseau, nom, ecrit, contenu = "#ID#" + identite::code() + "\r\n"] {
                 *ecrit = livraison::depose(repertoire, nom, contenu);
             },
             [ecrit, suite](ouvrier::Reponse reponse) { suite(reponse == ouvrier::Reponse::faite && *ecrit); },
             limite_copie_ms,
             [ecrit, suite] {
                 if (*ecrit) suite(true);
             }});
    if (!lance) suite(false);
}

void au_changement(std::function<void()> action) {
    connexion.au_changement = std::move(action);
}

}  // namespace reseau
