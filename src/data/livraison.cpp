#include "data/livraison.h"

#include <algorithm>

#include "data/commande.h"
#include "platform/systeme/fichiers.h"

namespace livraison {
namespace {

using fichiers::Issue;

constexpr std::string_view motif_attente = "*.-a-", fichier_sonde = "Test.res";
/// The mark beside an order that was delivered and could not be deleted, with the same content: a later run knows it.
constexpr std::string_view motif_marque = "*.-l-", fin_de_marque = "-L-";
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
    if (lecture == Issue::occupe) return Issue::occupe;
    return Issue::existe;  // another order, or one that was collected this very moment
}

/// Whether a failure is this order's own: while the directory is there, the others may still go.
Sort sort_de(Issue i, const std::string& repertoire) {
    if (i == Issue::fait) return Sort::livree;
    if (i == Issue::plein || !fichiers::est_repertoire(repertoire)) return Sort::reseau_perdu;
    return i == Issue::occupe ? Sort::tenue : Sort::attend;
}

Issue copie(const std::string& repertoire, std::string_view nom) {
    const std::string source = fichiers::joint(repertoire, nom);
    std::string distant, local;
    const Issue lecture = fichiers::lis_tout(source, distant);
    if (lecture != Issue::fait) return lecture;
    if (distant.empty() || fichiers::longueur(source) != distant.size()) return Issue::absent;
    if (fichiers::lis_tout(nom, local) == Issue::fait && local == distant) return Issue::fait;
    return fichiers::ecrit_tout(nom, distant, fichiers::Remplace::oui);
}

bool est_partie(Issue suppression) {
    return suppression == Issue::fait || suppression == Issue::absent;
}

/// The name of an order with another end.
std::string avec_fin(const std::string& nom, std::string_view fin) {
    return nom.substr(0, nom.size() - commande::fin_en_attente.size()) + std::string(fin);
}

/// What a mark says of the order that has its name now.
enum class Marque { vaut, ne_vaut_pas, illisible };

Marque lis_marque(const std::string& marque) {
    std::string marquee, presente;
    const Issue a = fichiers::lis_tout(marque, marquee);
    const Issue b = fichiers::lis_tout(avec_fin(marque, commande::fin_en_attente), presente);
    if (a == Issue::occupe || b == Issue::occupe) return Marque::illisible;
    return a == Issue::fait && b == Issue::fait && presente == marquee ? Marque::vaut : Marque::ne_vaut_pas;
}

/// Deletes one delivered order with its mark, if any. Issue::existe: the order is another one, and the mark is gone.
Issue supprime_livree(const std::string& nom) {
    const std::string marque = avec_fin(nom, fin_de_marque);
    const Marque lue = fichiers::existe(marque) ? lis_marque(marque) : Marque::vaut;
    if (lue == Marque::illisible) return Issue::occupe;
    const Issue issue = lue == Marque::vaut ? fichiers::supprime(nom) : Issue::existe;
    if (lue == Marque::ne_vaut_pas || est_partie(issue)) static_cast<void>(fichiers::supprime(marque));
    return issue;
}

}  // namespace

std::vector<std::string> en_attente() {
    return fichiers::liste(".", motif_attente);
}

bool supprime_livrees(std::vector<std::string>& livrees) {
    for (const std::string& marque : fichiers::liste(".", motif_marque)) {
        const std::string nom = avec_fin(marque, commande::fin_en_attente);
        if (std::find(livrees.begin(), livrees.end(), nom) == livrees.end()) livrees.push_back(nom);
    }
    for (std::size_t reste = livrees.size(); reste > 0; --reste) {
        const Issue issue = supprime_livree(livrees.front());
        if (est_partie(issue) || issue == Issue::existe) {
            livrees.erase(livrees.begin());
            continue;
        }
        std::rotate(livrees.begin(), livrees.begin() + 1, livrees.end());
        if (issue == Issue::occupe) return true;  // it costs time: the others come with the next call
    }
    return false;
}

bool ecrit_sonde(const std::string& repertoire, int record, const std::string& date) {
    if (repertoire.empty() || record < 1) return false;
    const auto f = fichiers::FichierRecords::ouvre(fichiers::joint(repertoire, fichier_sonde), longueur_sonde);
    return f && f->ecrit(static_cast<std::size_t>(record), date) == Issue::fait;
}

bool copie_catalogue(const std::string& repertoire) {
    if (repertoire.empty()) return false;
    Issue issue = Issue::absent;
    bool tenu = false;
    for (const std::string_view nom : fichiers_du_catalogue) {
        issue = copie(repertoire, nom);
        tenu = tenu || issue == Issue::occupe;
    }
    return issue == Issue::fait && !tenu;
}

void retire_restes(const std::string& repertoire, const std::vector<std::string>& noms) {
    if (noms.empty()) return;
    for (const std::string& reste : fichiers::liste(repertoire, "*" + std::string(fichiers::suffixe_temporaire))) {
        const bool sien = std::any_of(noms.begin(), noms.end(), [&](const std::string& nom) {
            return nom.size() >= commande::fin_en_attente.size() &&
                   reste.starts_with(avec_fin(nom, commande::fin_livree));
        });
        if (sien) static_cast<void>(fichiers::supprime(fichiers::joint(repertoire, reste)));
    }
}

Sort livre(const std::string& repertoire, const std::string& nom) {
    if (repertoire.empty()) return Sort::reseau_perdu;
    if (nom.size() < commande::fin_en_attente.size()) return Sort::attend;
    std::string contenu;
    const Issue lecture = fichiers::lis_tout(nom, contenu);
    if (lecture != Issue::fait) return lecture == Issue::occupe ? Sort::tenue : Sort::attend;
    const std::string cible = fichiers::joint(repertoire, avec_fin(nom, commande::fin_livree));
    const Sort sort = sort_de(depose_commande(cible, contenu), repertoire);
    if (sort == Sort::livree && !est_partie(fichiers::supprime(nom)))
        static_cast<void>(fichiers::ecrit_tout(avec_fin(nom, fin_de_marque), contenu, fichiers::Remplace::oui));
    return sort;
}

bool depose(const std::string& repertoire, const std::string& nom, const std::string& contenu) {
    if (repertoire.empty()) return false;
    return fichiers::ecrit_tout(fichiers::joint(repertoire, nom), contenu, fichiers::Remplace::jamais) == Issue::fait;
}

}  // namespace livraison
