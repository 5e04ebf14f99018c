// The provisional file "prov.txt": the note as it stood when the program was closed.
#pragma once

#include "platform/fichiers.h"

namespace provisoire {

/// Writes server, table and the note's lines over an older file.
fichiers::Issue ecrit();

}  // namespace provisoire
