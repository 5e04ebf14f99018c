#include "data/reseau.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/etat.h"
#include "data/livraison.h"
#include "platform/horloge.h"
#include "platform/ouvrier.h"
#include "platform/texte.h"

namespace reseau {
namespace {

constexpr std::string_view nom_fichier = "wfichdir.wdo";
constexpr int lignes_vides = 11;
constexpr std::uint64_t longueur_max = 1 << 20;
constexpr int limite_sonde_ms = 2000, limite_copie_ms = 10000;
constexpr int attente_sonde_ms = 100, attente_catalogue_ms = 2000;

struct Connexion {
    bool joignable = false;
    bool catalogue_cherche = false;  ///< the catalogue has come once
    bool catalogue_frais = false;    ///< it has come since it was last read
    std::function<void()> au_changement;
};
Connexion connexion;

void signale() {
    if (connexion.au_changement) connexion.au_changement();
}

void livre_ce_qui_attend(const std::vector<std::string>& deja_tente = {});

void change_etat(bool joignable) {
    const bool avant = std::exchange(connexion.joignable, joignable);
    if (avant != joignable) signale();
}

/// Delivers, and once more when other orders have been written meanwhile.
void livre_ce_qui_attend(const std::vector<std::string>& deja_tente) {
    auto noms = std::make_shared<const std::vector<std::string>>(livraison::en_attente());
    if (noms->empty() || *noms == deja_tente) return;
    auto tenu = std::make_shared<bool>(false);
    ouvrier::lance({[repertoire = etat::repertoire_reseau, noms, tenu] { *tenu = livraison::livre(repertoire, *noms); },
                    [noms, tenu](ouvrier::Reponse reponse) {
                        signale();
                        if (reponse == ouvrier::Reponse::hors_delai || !*tenu) return change_etat(false);
                        if (!etat::hors_ligne) livre_ce_qui_attend(*noms);
                    },
                    limite_copie_ms});
}

void cherche_catalogue() {
    auto entier = std::make_shared<bool>(false);
    ouvrier::lance(
        {[repertoire = etat::repertoire_reseau, entier] { *entier = livraison::copie_catalogue(repertoire); },
         [entier](ouvrier::Reponse reponse) {
             if (reponse == ouvrier::Reponse::hors_delai) return change_etat(false);
             connexion.catalogue_cherche = true;
             connexion.catalogue_frais = connexion.catalogue_frais || *entier;
             if (!etat::hors_ligne) livre_ce_qui_attend();
         },
         limite_copie_ms});
}

void apres_la_sonde(bool repond) {
    if (etat::hors_ligne) return;
    change_etat(repond);
    if (!repond) return;
    if (connexion.catalogue_cherche) {
        livre_ce_qui_attend();
    } else {
        cherche_catalogue();
    }
}

bool lance_sonde() {
    auto repond = std::make_shared<bool>(false);
    const std::string repertoire(texte::rogne(etat::repertoire_test));
    return ouvrier::lance(
        {[repertoire, record = int{etat::record_test}, repond, date = horloge::jour(horloge::maintenant())] {
             *repond = livraison::ecrit_sonde(repertoire, record, date);
         },
         [repond](ouvrier::Reponse reponse) { apres_la_sonde(reponse == ouvrier::Reponse::faite && *repond); },
         limite_sonde_ms});
}

}  // namespace

bool repertoire_connu() {
    return fichiers::existe(nom_fichier);
}

bool lis_repertoire() {
    std::string contenu;
    const bool lu = fichiers::lis_tout(nom_fichier, contenu, longueur_max) == fichiers::Issue::fait;
    const auto lignes = texte::lignes(contenu);
    etat::repertoire_reseau = lignes.empty() ? "" : std::string(lignes[0]);
    etat::repertoire_test = etat::repertoire_reseau;
    etat::record_test = 1;
    return lu;
}

fichiers::Issue ecrit_repertoire(std::string_view repertoire) {
    std::string t = std::string(repertoire) + "\r\n";
    for (int i = 0; i < lignes_vides; ++i) t += " \r\n";
    return fichiers::ecrit_tout(nom_fichier, t, fichiers::Remplace::oui);
}

bool joignable() {
    return connexion.joignable && !etat::hors_ligne;
}

int commandes_en_attente() {
    return static_cast<int>(livraison::en_attente().size());
}

void premiere_connexion() {
    if (etat::hors_ligne || !lance_sonde()) return;
    ouvrier::attends(attente_sonde_ms);
    if (connexion.joignable) ouvrier::attends(attente_catalogue_ms);
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

void au_changement(std::function<void()> action) {
    connexion.au_changement = std::move(action);
}

}  // namespace reseau
