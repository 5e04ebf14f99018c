#include "cuisine/archive.h"

#include "data/commande.h"

namespace archive {
namespace {

using fichiers::Issue;

constexpr std::string_view fichier_du_code = "identite.txt";

/// Whatever the file holds, it stays; what is made anew is drawn by lot.
Issue lis_le_code(const std::string& dossier, std::string& code) {
    constexpr std::uint64_t longueur_max = 1024;
    std::string contenu;
    const Issue issue = fichiers::lis_tout(fichiers::joint(dossier, fichier_du_code), contenu, longueur_max);
    if (issue == Issue::fait) code = commande::code(contenu);
    return issue;
}

}  // namespace

std::optional<Archive> Archive::ouvre(const std::string& dossier, Issue& issue) {
    Archive a;
    a.dossier_ = dossier;
    issue = a.prepare();
    if (issue == Issue::fait) issue = lis_le_code(dossier, a.code_);
    if (issue != Issue::fait) return std::nullopt;
    return a;
}

Issue Archive::prepare() const {
    for (const std::string& d : {dossier_, en_cours(), rejets()}) {
        if (fichiers::est_repertoire(d)) continue;
        const Issue issue = fichiers::cree_repertoire(d);
        if (issue != Issue::fait && !fichiers::est_repertoire(d)) return issue;  // else another kitchen was faster
    }
    std::string code;
    Issue issue = lis_le_code(dossier_, code);
    if (issue != Issue::absent) return issue;
    issue = fichiers::ecrit_tout(fichiers::joint(dossier_, fichier_du_code), commande::code_au_hasard() + "\r\n",
                                 fichiers::Remplace::jamais);
    return issue == Issue::existe ? Issue::fait : issue;
}

bool Archive::est_remplacee() const {
    std::string code;
    const Issue issue = est_la() ? lis_le_code(dossier_, code) : Issue::panne;
    return issue == Issue::absent || (issue == Issue::fait && code != code_);
}

void Archive::nettoie() const {
    for (const std::string& d : {dossier_, en_cours(), rejets()}) fichiers::retire_temporaires(d);
}

}  // namespace archive
