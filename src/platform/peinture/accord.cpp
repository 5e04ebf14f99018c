// One letter size for the captions of a page.
#include <algorithm>
#include <vector>

#include "platform/peinture/elements.h"

namespace ecran {
namespace {

constexpr int lignes_au_plus = 3;

/// Captions of one look: what they share, and at which size each of them fits.
struct Groupe {
    Police police;
    int taille;
    std::vector<int> tailles;
};

int moindre_taille(int reglee) {
    return (reglee * 7 + 9) / 10;
}

/// The size at which a caption would stand if it were alone; not below what a page may have.
int taille_seule(const Element& e, const Zone& mesure) {
    const Place place{mesure.droite - mesure.gauche, mesure.bas - mesure.haut, lignes_au_plus,
                      moindre_taille(e.taille)};
    return met_en_lignes(e.police, e.taille, e.texte, place).taille;
}

/// Nine of ten captions fit at this size.
int taille_commune(std::vector<int>& tailles) {
    const auto n = static_cast<std::ptrdiff_t>(tailles.size());
    const auto neuf_dixiemes = tailles.begin() + (n * 9 + 9) / 10 - 1;
    std::nth_element(tailles.begin(), neuf_dixiemes, tailles.end(), std::greater<>());
    return *neuf_dixiemes;
}

}  // namespace

void accorde(std::vector<Element>& liste, std::span<const Accordee> legendes) {
    std::vector<Groupe> groupes;
    const auto groupe_de = [&](const Element& e) {
        return std::find_if(groupes.begin(), groupes.end(),
                            [&](const Groupe& g) { return g.police == e.police && g.taille == e.taille; });
    };
    for (const Accordee& a : legendes) {
        const Element& e = liste[a.rang];
        auto g = groupe_de(e);
        if (g == groupes.end()) g = groupes.insert(g, {e.police, e.taille, {}});
        g->tailles.push_back(taille_seule(e, a.mesure));
    }
    for (Groupe& g : groupes) g.tailles = {taille_commune(g.tailles)};
    for (const Accordee& a : legendes) liste[a.rang].taille = groupe_de(liste[a.rang])->tailles[0];
}

}  // namespace ecran
