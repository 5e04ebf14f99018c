#include "data/tenus.h"

#include <algorithm>

namespace tenus {
namespace {

struct Tenu {
    std::string nom;
    bool libre = false;  ///< seen free since
};
std::vector<Tenu> tenus;

std::vector<Tenu>::iterator cherche(std::string_view nom) {
    return std::find_if(tenus.begin(), tenus.end(), [nom](const Tenu& t) { return t.nom == nom; });
}

}  // namespace

fichiers::Issue note(std::string_view nom, fichiers::Issue issue) {
    const auto i = cherche(nom);
    if (issue == fichiers::Issue::occupe) {
        if (i != tenus.end())
            i->libre = false;
        else
            tenus.push_back({std::string(nom)});
    } else if (i != tenus.end()) {
        tenus.erase(i);
    }
    return issue;
}

bool est_tenu(std::string_view nom) {
    return cherche(nom) != tenus.end();
}

bool attend(std::string_view nom) {
    const auto i = cherche(nom);
    return i != tenus.end() && !i->libre;
}

void libere(std::string_view nom) {
    if (const auto i = cherche(nom); i != tenus.end()) i->libre = true;
}

std::vector<std::string> noms() {
    std::vector<std::string> r;
    for (const Tenu& t : tenus) r.push_back(t.nom);
    return r;
}

}  // namespace tenus
