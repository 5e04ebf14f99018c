// The way through the terminal's screens that shows a whole card: scenarios, and key programs that lead to each screen.
#pragma once

#include <string>
#include <vector>

#include "carte/carte.h"
#include "carte/fabrication.h"

namespace parcours {

/// A picture that a scenario takes; without file a line of text. Texts are UTF-8; one section's pictures come one after
/// the other.
struct Vue {
    std::string section, titre, fichier;
};
struct Partie {
    std::string scenario;  ///< UTF-8; empty: nothing is to be played
    std::string touches;   ///< content of the key program that it is played with
    std::vector<Vue> vues;
};

/// With the settings that are open.
std::vector<Partie> compose(const carte::Carte& carte, const fabrication::Fichiers& fichiers);

}  // namespace parcours
