// From the manager's sheets to the card: what they say, and every fault in them.
#pragma once

#include <string>
#include <string_view>

#include "carte/carte.h"
#include "carte/tableaux.h"

namespace lecture {

/// Reads all sheets of a folder. What has a fault is left out of the card.
carte::Carte lis(std::string_view dossier, tableaux::Constats& constats);

}  // namespace lecture
