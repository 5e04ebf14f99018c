#include "data/tenus.h"

#include <algorithm>

namespace tenus {
namespace {

std::vector<std::string> tenus;

}  // namespace

fichiers::Issue note(std::string_view nom, fichiers::Issue issue) {
    const auto i = std::find(tenus.begin(), tenus.end(), nom);
    if (issue == fichiers::Issue::occupe) {
        if (i == tenus.end()) tenus.emplace_back(nom);
    } else if (i != tenus.end()) {
        tenus.erase(i);
    }
    return issue;
}

bool est_tenu(std::string_view nom) {
    return std::find(tenus.begin(), tenus.end(), nom) != tenus.end();
}

const std::vector<std::string>& noms() {
    return tenus;
}

}  // namespace tenus
