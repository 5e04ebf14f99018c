#include "data/complements.h"

#include <algorithm>

#include "data/lignes.h"
#include "platform/texte.h"

namespace complements {
namespace {

std::vector<std::string> les_rangs(rangs_min);

}  // namespace

void charge(std::vector<std::string> segments) {
    les_rangs = std::move(segments);
    for (std::string& r : les_rangs) r = lignes::neutralise(r);
    les_rangs.resize(std::max(les_rangs.size(), rangs_min));
}

const std::vector<std::string>& rangs() {
    return les_rangs;
}

void pose(std::size_t rang, std::string_view texte) {
    if (rang < les_rangs.size()) les_rangs[rang] = lignes::neutralise(texte);
}

void ajoute(std::string_view texte) {
    const auto libre =
        std::find_if(les_rangs.begin(), les_rangs.end(), [](const auto& r) { return texte::rogne(r).empty(); });
    if (libre == les_rangs.end()) {
        les_rangs.push_back(lignes::neutralise(texte));
    } else {
        *libre = lignes::neutralise(texte);
    }
}

void retire(std::size_t rang) {
    if (rang >= les_rangs.size()) return;
    les_rangs.erase(les_rangs.begin() + static_cast<std::ptrdiff_t>(rang));
    les_rangs.emplace_back(" ");
}

}  // namespace complements
