// The example that a manager begins with.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "carte/tableaux.h"

namespace modele {

/// Each sheet with its content.
std::vector<std::pair<tableaux::Feuille, std::string>> tableaux_d_exemple();

}  // namespace modele
