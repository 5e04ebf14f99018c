// The actions that the key program editor offers for a key: families, articles, pages and functions.
#pragma once

#include <optional>
#include <string>

#include "platform/controles/apparence.h"

namespace w_prog_acte {

/// What a key can do, and how it looks as long as nobody says otherwise.
struct Acte {
    std::string code = {};  ///< the action text of the key
    std::string libelle = {};
    std::string reference = {};  ///< of an article
    int image = 0;
    ecran::Couleur couleur = ecran::sans_couleur;
};

/// Shows the lists; nothing when they were left.
std::optional<Acte> demande();

}  // namespace w_prog_acte
