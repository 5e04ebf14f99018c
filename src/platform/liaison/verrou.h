// A directory that one program at a time works in, on whichever machine it runs: a file kept open there, which the
// system, or the server of a share, frees however the program ends.
#pragma once

#include <memory>
#include <string_view>

#include "platform/systeme/fichiers.h"

namespace verrou {

class Verrou {
  public:
    virtual ~Verrou() = default;
};

/// Null while another one holds it, be it another user (Issue::occupe), or when the file cannot be opened. Where the
/// medium knows no such thing, or lets nobody write or read the file, the lock holds nothing.
std::unique_ptr<Verrou> prend(std::string_view fichier, fichiers::Issue& issue);

}  // namespace verrou
