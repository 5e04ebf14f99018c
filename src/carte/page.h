// The page for the manager's browser: faults first, then the pictures, all in one file.
#pragma once

#include <string>
#include <string_view>

#include "carte/apercu.h"
#include "carte/tableaux.h"

namespace page {

/// The page's text, UTF-8. `dossier`: where the sheets lie, UTF-8.
std::string texte(std::string_view dossier, const tableaux::Constats& constats, const apercu::Resultat& images);

}  // namespace page
