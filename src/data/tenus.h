// Files of the working directory that another program (a virus scanner, a backup) holds: whoever could not read or open
// one for that reason notes it here and leaves it alone, since each attempt takes a while, until the worker has seen it
// free.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"

namespace tenus {

/// What came of an attempt to read or open a file: held (Issue::occupe), or not, or no longer.
fichiers::Issue note(std::string_view nom, fichiers::Issue issue);
/// Whether the last attempt found it held.
bool est_tenu(std::string_view nom);
/// Whether it was held then and has not been seen free since: no attempt is worth while.
bool attend(std::string_view nom);
/// The worker has seen it free.
void libere(std::string_view nom);
/// In the order in which they were found held.
std::vector<std::string> noms();

}  // namespace tenus
