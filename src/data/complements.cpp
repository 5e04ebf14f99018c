#include "data/complements.h"

#include <algorithm>
#include <utility>

#include "data/etat.h"
#include "data/lignes.h"
#include "platform/systeme/texte.h"

namespace complements {
namespace {

std::vector<std::string> les_rangs(rangs_min);

/// A label as a row would hold it; what became a blank at its ends is trimmed with the others.
std::string en_rang(std::string_view libelle) {
    return std::string(texte::rogne(lignes::neutralise(libelle)));
}

/// The first row that is this text but for the blanks around it; an empty text finds the first blank row.
std::vector<std::string>::iterator cherche(std::string_view texte) {
    return std::find_if(les_rangs.begin(), les_rangs.end(),
                        [texte](const std::string& r) { return texte::rogne(r) == texte; });
}

}  // namespace

void prend(std::string ligne) {
    les_rangs = lignes::segments(ligne);
    for (std::string& r : les_rangs) r = lignes::neutralise(r);
    les_rangs.resize(std::max(les_rangs.size(), rangs_min));
    etat::texte_travail = std::move(ligne);
}

const std::vector<std::string>& rangs() {
    return les_rangs;
}

void pose(std::size_t rang, std::string_view texte) {
    if (rang < les_rangs.size()) les_rangs[rang] = lignes::neutralise(texte);
}

void bascule(std::string_view libelle) {
    const std::string t = en_rang(libelle);
    if (const auto pris = cherche(t); pris != les_rangs.end()) {
        retire(static_cast<std::size_t>(pris - les_rangs.begin()));
    } else if (const auto libre = cherche(""); libre != les_rangs.end()) {
        *libre = t;
    }
}

bool est_pris(std::string_view libelle) {
    return cherche(en_rang(libelle)) != les_rangs.end();
}

bool est_marque(std::string_view libelle) {
    const std::string t = en_rang(libelle);
    return !t.empty() && std::any_of(les_rangs.begin(), les_rangs.end(),
                                     [&t](const std::string& r) { return texte::rogne(r).ends_with(t); });
}

void retire(std::size_t rang) {
    if (rang >= les_rangs.size()) return;
    les_rangs.erase(les_rangs.begin() + static_cast<std::ptrdiff_t>(rang));
    les_rangs.emplace_back();
}

}  // namespace complements
