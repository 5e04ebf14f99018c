// The names of waiting orders and of the marks beside them: a name without its end, a zero byte, what a mark holds
// (none when that is empty), a zero byte, the order.
#include <filesystem>
#include <vector>

#include "data/commande.h"
#include "data/livraison.h"
#include "essai.h"

namespace {

namespace fs = std::filesystem;

/// The tablet's directory and the network's, side by side; nothing else may appear beside them.
void prepare() {
    static const bool entree = [] {
        fs::create_directory("tablette");
        fs::create_directory("reseau");
        fs::current_path("tablette");
        return true;
    }();
    exige(entree);
    for (const char* repertoire : {".", "../reseau"}) {
        for (const auto& f : fs::directory_iterator(repertoire)) fs::remove_all(f);
    }
}

std::size_t compte(const char* repertoire) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(repertoire), {}));
}

std::string lis(const fs::path& chemin) {
    std::ifstream f(chemin, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
}

}  // namespace

void essaie(std::string_view entree) {
    prepare();
    std::string nom(coupe(entree).substr(0, 200));
    std::replace(nom.begin(), nom.end(), '/', '_');
    const auto marque = coupe(entree);
    if (!pose(nom + ".-A-", entree)) return;
    if (!marque.empty()) pose(nom + ".-L-", marque);
    std::vector<std::string> livrees;
    livraison::supprime_livrees(livrees);
    const auto attendent = livraison::en_attente();
    for (const std::string& n : attendent) {
        const auto sort = livraison::livre("../reseau", n);
        exige(sort == livraison::Sort::livree);
        exige(compte("../reseau") == 1 && lis(fs::directory_iterator("../reseau")->path()) == entree);
    }
    livraison::retire_restes("../reseau", attendent);
    exige(livraison::en_attente().empty() && compte("../reseau") == attendent.size());
    exige(compte("..") == 2);
}
