#include "cuisine/partage.h"

#include <algorithm>

#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace partage {
namespace {

/// A number of a family; -1 when it is none.
int numero(std::string_view t) {
    t = texte::rogne(t);
    if (t.empty() || t.find_first_not_of("0123456789") != std::string_view::npos) return -1;
    const int n = nombres::entier_int(t);
    return n <= catalogue::familles_max ? n : -1;
}

bool pose(std::string_view plage, int rang, Partage& p, std::string& faute) {
    const auto tiret = plage.find('-');
    const int de = numero(plage.substr(0, tiret));
    const int a = tiret == std::string_view::npos ? de : numero(plage.substr(tiret + 1));
    if (de < 0 || a < de) {
        faute = std::string("--familles : « "_t) + std::string(plage) +
                std::string(" » n'est pas une famille ou une suite de 0 à "_t) +
                std::to_string(catalogue::familles_max) + std::string(" ; écrivez par exemple 1-5"_t);
        return false;
    }
    for (auto f = static_cast<std::size_t>(de); f <= static_cast<std::size_t>(a); ++f) {
        if (p.par_famille[f] >= 0 && p.par_famille[f] != rang) {
            faute = "--familles : la famille " + std::to_string(f) +
                    std::string(" est donnée à deux imprimantes ; gardez-en une"_t);
            return false;
        }
        p.par_famille[f] = rang;
    }
    return true;
}

std::size_t rang_de_famille(int numero, const articles::Articles& catalogue, const Partage& p) {
    for (int tours = 0; numero != articles::sans_famille && tours <= catalogue::familles_max; ++tours) {
        if (const int r = p.par_famille[static_cast<std::size_t>(numero)]; r >= 0) return static_cast<std::size_t>(r);
        const auto& familles = catalogue.familles();
        const auto f = std::find_if(familles.begin(), familles.end(),
                                    [numero](const articles::Famille& x) { return x.numero == numero; });
        numero = f == familles.end() ? articles::sans_famille : f->dans;
    }
    return 0;
}

}  // namespace

int Partage::rang(const imprimante::Adresse& a) {
    const auto meme = [&a](const imprimante::Adresse& b) { return b.ecrite() == a.ecrite(); };
    const auto i = std::find_if(adresses.begin(), adresses.end(), meme);
    const auto rang = static_cast<int>(i - adresses.begin());
    if (i == adresses.end()) adresses.push_back(a);
    return rang;
}

bool lis(std::string_view t, Partage& p, std::string& faute) {
    const auto egal = t.find('=');
    imprimante::Adresse adresse;
    if (egal == std::string_view::npos || !imprimante::lis_adresse(t.substr(egal + 1), adresse)) {
        faute = std::string("--familles s'écrit par exemple 1-5,12=tcp://bar : "_t) + std::string(t);
        return false;
    }
    const int rang = p.rang(adresse);
    std::string_view familles = t.substr(0, egal);
    for (bool encore = true; encore;) {
        const auto virgule = familles.find(',');
        encore = virgule != std::string_view::npos;
        if (!pose(familles.substr(0, virgule), rang, p, faute)) return false;
        if (encore) familles.remove_prefix(virgule + 1);
    }
    return true;
}

std::vector<fiche::Partie> parties(const commande::Commande& c, const articles::Articles& catalogue,
                                   const Partage& partage) {
    std::vector<fiche::Partie> toutes;
    for (const imprimante::Adresse& a : partage.adresses) toutes.push_back({a.ecrite(), {}, {}, false});
    for (std::size_t i = 0; i < c.articles.size(); ++i) {
        const articles::Article* const connu = catalogue.trouve(c.articles[i].reference);
        const std::size_t rang = connu == nullptr ? 0 : rang_de_famille(connu->famille, catalogue, partage);
        toutes[rang].lignes.push_back(static_cast<int>(i));
    }
    const fiche::Partie premiere = toutes.front();
    std::erase_if(toutes, [](const fiche::Partie& p) { return p.lignes.empty(); });
    if (toutes.empty()) toutes.push_back(premiere);
    return toutes;
}

}  // namespace partage
