// Command line of orvalune-carte.
#include <string>
#include <vector>

#include "carte/commandes.h"
#include "platform/console/console.h"
#include "platform/systeme/texte.h"

namespace {

constexpr console::Programme programme = {
    "orvalune-carte fait les fichiers du restaurant avec les tableaux d'un tableur, et l'inverse.\n"
    "\n"
    "  orvalune-carte modele DOSSIER                écrit un exemple complet, à changer dans un tableur\n"
    "  orvalune-carte fabrique DOSSIER RÉPERTOIRE   fait les fichiers du répertoire réseau ; rien n'est écrit\n"
    "                                               tant qu'il reste une faute dans les tableaux\n"
    "  orvalune-carte exporte RÉPERTOIRE DOSSIER    refait les tableaux avec des fichiers existants\n"
    "  orvalune-carte verifie RÉPERTOIRE            dit ce que les tablettes ne liront pas comme c'est écrit,\n"
    "                                               puis ce que les serveurs verront\n"
    "  orvalune-carte apercu DOSSIER PAGE.html      une page pour relire la carte avant le service\n"
    "  orvalune-carte DOSSIER                       fait cette page et l'ouvre\n"
    "  orvalune-carte --version | --aide\n"
    "\n"
    "Code de sortie : 0, tout va bien ; 1, des fautes ou des pertes, toutes sont dites ; 2, la commande n'est pas\n"
    "comprise, ou un fichier n'a pas pu être lu ou écrit.\n",
    "orvalune-carte " ORVALUNE_VERSION " (" ORVALUNE_EDITION ")\n",
};

struct Commande {
    const char* nom;
    std::size_t arguments;
    int (*execute)(const std::vector<std::string>& a);
};
const Commande commandes_connues[] = {
    {"modele", 1, [](const std::vector<std::string>& a) { return commandes::modele(a[1]); }},
    {"fabrique", 2, [](const std::vector<std::string>& a) { return commandes::fabrique(a[1], a[2]); }},
    {"exporte", 2, [](const std::vector<std::string>& a) { return commandes::exporte(a[1], a[2]); }},
    {"verifie", 1, [](const std::vector<std::string>& a) { return commandes::verifie(a[1]); }},
    {"apercu", 2, [](const std::vector<std::string>& a) { return commandes::apercu(a[1], a[2]); }},
};

int lance(const std::vector<std::string>& mots) {
    const std::string premier = mots.empty() ? "" : mots[0];
    if (premier == "--aide" || premier == "--version") return console::presente(programme, premier == "--aide");
    for (const Commande& c : commandes_connues) {
        if (premier == c.nom && mots.size() == c.arguments + 1) return c.execute(mots);
    }
    if (mots.size() == 1 && !premier.starts_with('-')) return commandes::relit(premier);
    return console::refuse(programme, std::string("commande inconnue ou incomplète : "_t) + premier);
}

}  // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    return console::execute(argc, argv, lance);
}
