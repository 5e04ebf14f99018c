// What has been printed of an order that is being worked on: a small file beside it, written whole and flushed before
// the first byte of a ticket leaves and after the last one has arrived. After a power cut it tells what may have been
// printed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"

namespace fiche {

enum class Etat { attend, commencee, finie };

/// What one printer gets of the order.
struct Partie {
    std::string adresse;      ///< of the printer
    std::vector<int> lignes;  ///< articles of the order, from 0
    Etat etat = Etat::attend;
    bool duplicata = false;  ///< its ticket may have been printed before
};
struct Fiche {
    int numero = 0;  ///< the tickets' running number, 0: none yet
    std::vector<Partie> parties;
};

/// `absent` without a file. One that is damaged leaves the fiche without parts.
fichiers::Issue lis(std::string_view chemin, Fiche& fiche);
fichiers::Issue ecrit(std::string_view chemin, const Fiche& fiche);

}  // namespace fiche
