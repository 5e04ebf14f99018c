// Files of the working directory that another program (a virus scanner, a backup) holds: whoever could not read or open
// one for that reason notes it here, and the start-up sequence takes it up again as soon as it is free.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/fichiers.h"

namespace tenus {

/// What came of the last attempt to read or open a file: held (Issue::occupe), or not, or no longer.
fichiers::Issue note(std::string_view nom, fichiers::Issue issue);
bool est_tenu(std::string_view nom);
/// In the order in which they were found held.
const std::vector<std::string>& noms();

}  // namespace tenus
