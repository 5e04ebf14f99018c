#include "data/livraison.h"

#include "data/commande.h"
#include "platform/fichiers.h"

namespace livraison {
namespace {

using fichiers::Issue;

constexpr std::string_view motif_attente = "*.-a-", fichier_sonde = "Test.res";
constexpr std::size_t longueur_sonde = 64;
constexpr std::string_view fichiers_du_catalogue[] = {"w_styl72.wdo", "orvalune.wdo", "worvalune.wdo"};

/// A failure of the network as a whole, not of one file.
bool coupe_la_passe(Issue i) {
    return i == Issue::absent || i == Issue::panne || i == Issue::plein;
}

/// The order's file is in the network directory, whole; nobody was overwritten. Issue::existe: another order's file of
/// that name still waits there for the router.
Issue depose(const std::string& cible, const std::string& contenu) {
    const Issue issue = fichiers::ecrit_tout(cible, contenu, fichiers::Remplace::jamais);
    if (issue != Issue::existe) return issue;
    std::string deja;
    const Issue lecture = fichiers::lis_tout(cible, deja);
    if (lecture != Issue::fait) return lecture == Issue::trop_long ? Issue::existe : lecture;
    return deja == contenu ? Issue::fait : Issue::existe;
}

Issue livre_un(const std::string& repertoire, const std::string& nom) {
    if (nom.size() < commande::fin_en_attente.size()) return Issue::refuse;
    std::string contenu;
    if (fichiers::lis_tout(nom, contenu) != Issue::fait) return Issue::refuse;
    const std::string tige = nom.substr(0, nom.size() - commande::fin_en_attente.size());
    const std::string cible = fichiers::joint(repertoire, tige + std::string(commande::fin_livree));
    const Issue issue = depose(cible, contenu);
    if (issue == Issue::fait) static_cast<void>(fichiers::supprime(nom));
    return issue;
}

bool copie(const std::string& repertoire, std::string_view nom) {
    std::string distant, local;
    if (fichiers::lis_tout(fichiers::joint(repertoire, nom), distant) != Issue::fait) return false;
    const bool pareil = fichiers::lis_tout(nom, local) == Issue::fait && local == distant;
    return pareil || fichiers::ecrit_tout(nom, distant, fichiers::Remplace::oui) == Issue::fait;
}

}  // namespace

std::vector<std::string> en_attente() {
    return fichiers::liste(".", motif_attente);
}

bool ecrit_sonde(const std::string& repertoire, int record, const std::string& date) {
    if (repertoire.empty() || record < 1) return false;
    const auto f = fichiers::FichierRecords::ouvre(fichiers::joint(repertoire, fichier_sonde), longueur_sonde);
    return f && f->ecrit(static_cast<std::size_t>(record), date) == Issue::fait;
}

bool copie_catalogue(const std::string& repertoire) {
    bool entier = false;
    for (const std::string_view nom : fichiers_du_catalogue) entier = copie(repertoire, nom);
    return entier;
}

bool livre(const std::string& repertoire, const std::vector<std::string>& noms) {
    for (const std::string& nom : noms) {
        if (coupe_la_passe(livre_un(repertoire, nom))) return false;
    }
    return true;
}

}  // namespace livraison
