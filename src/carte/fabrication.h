// From the card to the restaurant's files, and from these back to it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "carte/carte.h"
#include "carte/tableaux.h"

namespace fabrication {

/// The files of the network directory, whole; nothing: there is none, or none is made.
struct Fichiers {
    std::string entete, catalogue;
    std::optional<std::string> styles, touches;
};

/// The same card gives the same bytes on any day.
Fichiers fabrique(const carte::Carte& carte);

/// The card that files say. Whatever the sheets cannot hold is left out.
carte::Carte relis(const Fichiers& fichiers);

/// One row of cells of the page 1252 for each row of a sheet.
std::vector<std::vector<std::string>> rangees(const carte::Carte& carte, tableaux::Feuille feuille);

}  // namespace fabrication
