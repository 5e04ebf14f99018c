#include "data/livraison.h"

#include "data/commande.h"
#include "platform/fichiers.h"

namespace livraison {
namespace {

using fichiers::Issue;

constexpr std::string_view motif_attente = "*.-a-", fichier_sonde = "Test.res";
constexpr std::size_t longueur_sonde = 64;
constexpr std::string_view fichiers_du_catalogue[] = {"w_styl72.wdo", "orvalune.wdo", "worvalune.wdo"};

/// The order's file is in the network directory, whole; nobody was overwritten. Issue::existe: another order's file of
/// that name still waits there for the router.
Issue depose_commande(const std::string& cible, const std::string& contenu) {
    const Issue issue = fichiers::ecrit_tout(cible, contenu, fichiers::Remplace::jamais);
    if (issue != Issue::existe) return issue;
    std::string deja;
    const Issue lecture = fichiers::lis_tout(cible, deja);
    if (lecture == Issue::fait && deja == contenu) return Issue::fait;
    return Issue::existe;  // another order, or one that was collected this very moment
}

/// Whether a failure is this order's own: while the directory is there, the others may still go.
Sort sort_de(Issue i, const std::string& repertoire) {
    if (i == Issue::fait) return Sort::livree;
    return i != Issue::plein && fichiers::est_repertoire(repertoire) ? Sort::attend : Sort::reseau_perdu;
}

bool copie(const std::string& repertoire, std::string_view nom) {
    const std::string source = fichiers::joint(repertoire, nom);
    std::string distant, local;
    if (fichiers::lis_tout(source, distant) != Issue::fait || distant.empty()) return false;
    if (fichiers::longueur(source) != distant.size()) return false;
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
    if (repertoire.empty()) return entier;
    for (const std::string_view nom : fichiers_du_catalogue) entier = copie(repertoire, nom);
    return entier;
}

Sort livre(const std::string& repertoire, const std::string& nom) {
    if (repertoire.empty()) return Sort::reseau_perdu;
    if (nom.size() < commande::fin_en_attente.size()) return Sort::attend;
    std::string contenu;
    if (fichiers::lis_tout(nom, contenu) != Issue::fait) return Sort::attend;
    const std::string tige = nom.substr(0, nom.size() - commande::fin_en_attente.size());
    const std::string cible = fichiers::joint(repertoire, tige + std::string(commande::fin_livree));
    const Sort sort = sort_de(depose_commande(cible, contenu), repertoire);
    if (sort == Sort::livree) static_cast<void>(fichiers::supprime(nom));
    return sort;
}

bool depose(const std::string& repertoire, const std::string& nom, const std::string& contenu) {
    if (repertoire.empty()) return false;
    return fichiers::ecrit_tout(fichiers::joint(repertoire, nom), contenu, fichiers::Remplace::jamais) == Issue::fait;
}

}  // namespace livraison
