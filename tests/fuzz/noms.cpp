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
    pose("../reseau/Test.res", "");  // by which a network directory is known
    std::set<std::string> poses = {"../RESEAU/TEST.RES"};
    for (std::size_t n = 0; n < fichiers_max && !entree.empty(); ++n) {
        std::string_view nom = coupe(entree);
        const auto contenu = coupe(entree);
        const bool la_bas = nom.starts_with('>');
        if (la_bas) nom.remove_prefix(1);
        std::string utf8 = texte::vers_utf8(nom);
        std::replace(utf8.begin(), utf8.end(), '/', '_');
        if (utf8.size() > longueur_nom_max) continue;
        const std::string chemin = (la_bas ? "../reseau/" : "./") + utf8;
        // Not every file system tells letter cases apart.
        if (poses.insert(texte::majuscules(texte::depuis_utf8_tolerant(chemin))).second) pose(chemin, contenu);
    }
}

/// The files of the working directory that deliveries may move or remove, by their names in UTF-8.
std::set<std::string> notres(const livraison::Local& local) {
    std::set<std::string> r;
    for (const auto* noms : {&local.en_attente, &local.gardees, &local.a_verifier, &local.marques, &local.anciennes}) {
        for (const std::string& n : *noms) r.insert(texte::vers_utf8(n));
    }
    for (const std::string& m : local.marques) {
        for (const char* fin : {"-A-", "-a-"}) r.insert(texte::vers_utf8(livraison::nom_marque(m) + fin));
    }
    return r;
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

/// Whether a mark of the older kind, which repeats the order, says that it had been delivered before.
bool est_marquee_livree(const livraison::Local& liste, std::string_view fichier, const std::string& contenu,
                        const Contenus& local) {
    return std::any_of(liste.anciennes.begin(), liste.anciennes.end(), [&](const std::string& m) {
        return livraison::nom_de(m) == livraison::nom_de(fichier) && local.at(texte::vers_utf8(m)) == contenu;
    });
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
    const auto de_livraison = notres(*liste);
    for (const auto& [nom, contenu] : local) {
        if (!de_livraison.contains(nom)) exige(local_apres.contains(nom) && local_apres.at(nom) == contenu);
    }
    const auto temporaires = debuts(*liste);
    for (const auto& [nom, contenu] : reseau) {
        if (!est_temporaire(nom, temporaires)) exige(reseau_apres.contains(nom) && reseau_apres.at(nom) == contenu);
    }
    const auto restent = textes(local_apres, reseau_apres);
    for (const std::string& f : liste->en_attente) {
        const std::string& contenu = local.at(texte::vers_utf8(f));
        exige(restent.contains(contenu) || est_marquee_livree(*liste, f, contenu, local));
    }
    exige(std::distance(fs::directory_iterator(".."), {}) == 2);
}
