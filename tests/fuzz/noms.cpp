// What lies in the two directories, file by file: a name, a zero byte, what it holds, a zero byte. A ">" before a name
// puts the file into the network directory.
#include <filesystem>
#include <map>
#include <set>
#include <vector>

#include "data/livraison.h"
#include "essai.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace {

namespace fs = std::filesystem;
using livraison::Sort;

constexpr std::size_t fichiers_max = 12, longueur_nom_max = 180;
const livraison::Lieu lieu = {"../reseau", "A1B2C3D4E5"};

/// The files of a directory by their names in UTF-8, with what they hold.
using Contenus = std::map<std::string, std::string>;

Contenus lis(const char* repertoire) {
    Contenus r;
    for (const auto& f : fs::directory_iterator(repertoire)) {
        std::ifstream flux(f.path(), std::ios::binary);
        r[f.path().filename().string()] = {std::istreambuf_iterator<char>(flux), {}};
    }
    return r;
}

/// The tablet's directory and the network's, side by side; nothing else may appear beside them.
void prepare(std::string_view entree) {
    static const bool entre = [] {
        fs::create_directory("tablette");
        fs::create_directory("reseau");
        fs::current_path("tablette");
        return true;
    }();
    exige(entre);
    for (const char* repertoire : {".", "../reseau"}) {
        for (const auto& f : fs::directory_iterator(repertoire)) fs::remove_all(f);
    }
    for (std::size_t n = 0; n < fichiers_max && !entree.empty(); ++n) {
        std::string_view nom = coupe(entree);
        const bool la_bas = nom.starts_with('>');
        if (la_bas) nom.remove_prefix(1);
        std::string utf8 = texte::vers_utf8(nom.substr(0, longueur_nom_max));
        std::replace(utf8.begin(), utf8.end(), '/', '_');
        pose((la_bas ? "../reseau/" : "./") + utf8, coupe(entree));
    }
}

/// Whether a file of the working directory is one of a delivery's.
bool est_de_livraison(std::string_view fichier) {
    constexpr std::string_view fins[] = {"-A-", "-L-", "-T-", "-V-", ".-D-"};
    return std::any_of(std::begin(fins), std::end(fins),
                       [fichier](std::string_view fin) { return livraison::finit_par(fichier, fin); });
}

/// How the temporary files of this tablet's orders begin.
std::vector<std::string> debuts(const livraison::Local& local) {
    std::vector<std::string> r;
    const auto retient = [&r](std::string_view nom) {
        r.push_back(texte::vers_utf8(nom) + std::string(livraison::fin_livree) + ".");
    };
    for (const std::string& f : local.en_attente) retient(livraison::nom_de(f));
    for (const std::string& f : local.marques) retient(livraison::nom_marque(f));
    return r;
}

bool est_temporaire(const std::string& fichier, const std::vector<std::string>& debuts) {
    return fichier.ends_with(fichiers::suffixe_temporaire) &&
           std::any_of(debuts.begin(), debuts.end(), [&](const std::string& d) { return fichier.starts_with(d); });
}

/// Delivers an order; what is told of it must hold on the disk.
void livre(const std::string& fichier) {
    const std::string utf8 = texte::vers_utf8(fichier);
    const std::string nom = texte::vers_utf8(livraison::nom_de(fichier));
    const std::string arrivee = nom + std::string(livraison::fin_livree);
    const Contenus local = lis("."), reseau = lis("../reseau");
    const auto sort = livraison::livre(lieu, fichier).sort;
    if (!local.contains(utf8)) return exige(sort != Sort::deposee && lis("../reseau") == reseau);
    const auto deja = reseau.find(arrivee);
    const bool peut_partir = !nom.empty() && (deja == reseau.end() || deja->second == local.at(utf8));
    exige(sort == (peut_partir ? Sort::deposee : Sort::attend));
    if (!peut_partir) return exige(lis(".") == local && lis("../reseau") == reseau);
    exige(lis("../reseau").at(arrivee) == local.at(utf8));
}

std::set<std::string> textes(const Contenus& local, const Contenus& reseau) {
    std::set<std::string> r;
    for (const auto& [nom, contenu] : local) r.insert(contenu);
    for (const auto& [nom, contenu] : reseau) r.insert(contenu);
    return r;
}

}  // namespace

void essaie(std::string_view entree) {
    prepare(entree);
    const Contenus local = lis("."), reseau = lis("../reseau");
    const auto liste = livraison::liste_locale();
    exige(liste.has_value());
    exige(livraison::fait_le_point(lieu, *liste, {}).has_value());
    for (const std::string& f : liste->en_attente) livre(f);
    const Contenus local_apres = lis("."), reseau_apres = lis("../reseau");
    for (const auto& [nom, contenu] : local) {
        const auto fichier = texte::depuis_utf8_tolerant(nom);
        if (!est_de_livraison(fichier)) exige(local_apres.contains(nom) && local_apres.at(nom) == contenu);
    }
    const auto notres = debuts(*liste);
    for (const auto& [nom, contenu] : reseau) {
        if (!est_temporaire(nom, notres)) exige(reseau_apres.contains(nom) && reseau_apres.at(nom) == contenu);
    }
    const auto restent = textes(local_apres, reseau_apres);
    for (const std::string& f : liste->en_attente) exige(restent.contains(local.at(texte::vers_utf8(f))));
    exige(lis("..").size() == 2);
}
