// One letter size for the captions of a page.
#include <algorithm>
#include <vector>

#include "platform/peinture/elements.h"

namespace ecran {
namespace {

constexpr int lignes_au_plus = 3;

/// Captions of one look: what they share, and at which size each of them fits.
struct Groupe {
    const Element* modele;
    std::vector<int> tailles;

    bool comprend(const Element& e) const { return e.police == modele->police && e.taille == modele->taille; }
};

int moindre_taille(int reglee) {
    return (reglee * 7 + 9) / 10;
}

/// The size at which a caption would stand if it were alone; not below what a page may have.
int taille_seule(const Element& e) {
    const Place place{e.mesure.droite - e.mesure.gauche, e.mesure.bas - e.mesure.haut, lignes_au_plus,
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

void accorde(std::span<Element> elements) {
    std::vector<Groupe> groupes;
    std::vector<std::pair<Element*, std::size_t>> membres;
    for (Element& e : elements) {
        if (!e.accord) continue;
        auto g = std::find_if(groupes.begin(), groupes.end(), [&](const Groupe& x) { return x.comprend(e); });
        if (g == groupes.end()) g = groupes.insert(g, {&e, {}});
        g->tailles.push_back(taille_seule(e));
        membres.emplace_back(&e, g - groupes.begin());
    }
    std::vector<int> communes;
    for (Groupe& g : groupes) communes.push_back(taille_commune(g.tailles));
    for (const auto& [e, g] : membres) e->taille = communes[g];
}

}  // namespace ecran
