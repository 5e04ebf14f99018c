#include "carte/commandes.h"

#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "carte/apercu.h"
#include "carte/fabrication.h"
#include "carte/fichiers_carte.h"
#include "carte/lecture.h"
#include "carte/verification.h"
#include "platform/console/console.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace commandes {
namespace {

using Tableaux = std::vector<std::pair<tableaux::Feuille, std::string>>;

std::string utf8(std::string_view page) {
    return texte::vers_utf8(page);
}

int refuse(const std::string& message) {
    std::cerr << console::ligne(message) << "\n";
    return refus;
}

int refuse_fichier(std::string_view chemin, fichiers::Issue issue) {
    return refuse(utf8(chemin) + " : " + utf8(fichiers::raison(issue)));
}

int refuse_dossier(std::string_view dossier) {
    return refuse(utf8(dossier) + " : ce dossier n'existe pas ; vérifiez son nom");
}

/// Writes sheets into a folder, which is made when it is missing; never over a sheet.
int pose_tableaux(std::string_view dossier, const Tableaux& neufs) {
    for (int f = 0; f < tableaux::nb_feuilles; ++f) {
        const std::string_view nom = tableaux::forme(static_cast<tableaux::Feuille>(f)).fichier;
        if (fichiers::existe(fichiers::joint(dossier, nom)))
            return refuse(utf8(dossier) + " contient déjà " + std::string(nom) +
                          " ; choisissez un autre dossier, ou déplacez ces tableaux");
    }
    if (!fichiers::est_repertoire(dossier)) {
        const auto issue = fichiers::cree_repertoire(dossier);
        if (issue != fichiers::Issue::fait) return refuse_fichier(dossier, issue);
    }
    for (const auto& [feuille, contenu] : neufs) {
        const std::string chemin = fichiers::joint(dossier, tableaux::forme(feuille).fichier);
        const auto issue = fichiers::ecrit_tout(chemin, contenu, fichiers::Remplace::jamais);
        if (issue != fichiers::Issue::fait) return refuse_fichier(chemin, issue);
        std::cout << utf8(chemin) << " : écrit\n";
    }
    return fait;
}

void dit(const std::vector<std::string>& lignes) {
    for (const std::string& l : lignes) std::cout << console::ligne(l) << "\n";
}

std::string compte(std::size_t n, std::string_view un, std::string_view plusieurs) {
    return std::to_string(n) + " " + std::string(n > 1 ? plusieurs : un);
}

}  // namespace

int modele(std::string_view dossier) {
    const int statut = pose_tableaux(dossier, tableaux::exemple());
    if (statut == fait)
        std::cout
            << "Ouvrez ces tableaux dans votre tableur, changez-les, enregistrez-les au format « CSV UTF-8 », puis :\n"
            << "  orvalune-carte apercu " << utf8(dossier) << " carte.html\n";
    return statut;
}

int fabrique(std::string_view dossier, std::string_view repertoire) {
    if (!fichiers::est_repertoire(dossier)) return refuse_dossier(dossier);
    if (!fichiers::est_repertoire(repertoire))
        return refuse(utf8(repertoire) + " : ce répertoire n'existe pas ; créez-le d'abord, ou vérifiez son nom");
    tableaux::Constats constats;
    const carte::Carte c = lecture::lis(dossier, constats);
    if (!constats.fautes.empty()) {
        dit(constats.fautes);
        std::cout << compte(constats.fautes.size(), "faute", "fautes")
                  << " ; rien n'a été écrit. Corrigez les tableaux et recommencez.\n";
        return fautes;
    }
    dit(constats.remarques);
    const auto [chemin, issue] = fichiers_carte::ecrit(repertoire, fabrication::fabrique(c),
                                                       [](const std::string& l) { std::cout << l << "\n"; });
    if (issue != fichiers::Issue::fait) return refuse_fichier(chemin, issue);
    std::cout << compte(c.serveurs.size(), "serveur", "serveurs") << ", "
              << compte(c.familles.size(), "famille", "familles") << ", "
              << compte(c.articles.size(), "article", "articles") << ", " << compte(c.tables.size(), "table", "tables")
              << ".\n";
    return fait;
}

int exporte(std::string_view repertoire, std::string_view dossier) {
    fabrication::Fichiers f;
    const auto [chemin, issue] = fichiers_carte::lis(repertoire, f);
    if (issue != fichiers::Issue::fait) return refuse_fichier(chemin, issue);
    const carte::Carte c = fabrication::relis(f);
    Tableaux neufs;
    for (int i = 0; i < tableaux::nb_feuilles; ++i) {
        const auto feuille = static_cast<tableaux::Feuille>(i);
        const auto rangees = fabrication::rangees(c, feuille);
        if (!rangees.empty() || tableaux::forme(feuille).obligatoire)
            neufs.emplace_back(feuille, tableaux::ecrit(feuille, rangees));
    }
    const int statut = pose_tableaux(dossier, neufs);
    if (statut != fait) return statut;
    tableaux::Constats constats;
    const auto relue = lecture::lis(dossier, constats);
    const auto pertes = constats.fautes.empty() ? fichiers_carte::differences(f, fabrication::fabrique(relue))
                                                : std::vector<std::string>();
    const auto coupures = verification::coupures(f);
    dit(coupures);
    dit(constats.fautes);
    dit(pertes);
    if (coupures.empty() && constats.fautes.empty() && pertes.empty()) return fait;
    std::cout
        << "Ces tableaux ne redonnent pas tout : voyez ci-dessus ce qui sera à corriger ou sera écrit autrement.\n";
    return fautes;
}

int verifie(std::string_view repertoire) {
    fabrication::Fichiers f;
    const auto [chemin, issue] = fichiers_carte::lis(repertoire, f);
    if (issue != fichiers::Issue::fait) return refuse_fichier(chemin, issue);
    const auto pertes = verification::pertes(f);
    dit(pertes);
    std::cout << (pertes.empty() ? "Les tablettes montrent tout comme c'est écrit.\n\n" : "\n");
    dit(verification::vue(f));
    return pertes.empty() ? fait : fautes;
}

int apercu(std::string_view dossier, std::string_view page) {
    if (!fichiers::est_repertoire(dossier)) return refuse_dossier(dossier);
    const std::string absolue = fichiers::absolu(page);
    tableaux::Constats constats;
    carte::Carte c = lecture::lis(dossier, constats);
    if (c.serveurs.empty()) c.serveurs.push_back({1, "?", 0});  // the screens begin with one
    const auto images = ::apercu::dessine(c, dossier);
    const auto issue =
        fichiers::ecrit_tout(absolue, ::apercu::page(utf8(dossier), constats, images), fichiers::Remplace::oui);
    if (issue != fichiers::Issue::fait) return refuse_fichier(page, issue);
    dit(constats.fautes);
    std::cout << utf8(page) << " : écrit\n";
    if (!images.faute.empty()) return refuse(images.faute);
    return constats.fautes.empty() ? fait : fautes;
}

int relit(std::string_view dossier) {
    if (!fichiers::est_repertoire(dossier)) return refuse_dossier(dossier);
    if (fichiers::entrees(dossier) == std::vector<std::string>() && modele(dossier) != fait) return refus;
    const auto la = fichiers::cree_repertoire_temporaire("orvalune-carte-page-");
    if (!la) return refuse("le dossier temporaire ne peut pas être écrit");
    const std::string page = fichiers::joint(*la, "carte.html");
    const int statut = apercu(dossier, page);
    if (fichiers::existe(page) && !processus::montre_fichier(page))
        return refuse("le navigateur n'a pas pu être lancé ; ouvrez " + utf8(page));
    return statut;
}

}  // namespace commandes
