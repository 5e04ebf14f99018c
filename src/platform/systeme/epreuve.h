// Faults on demand. Who wants to see what a power cut, a full disk or a failing share leaves behind is asked before
// each operation on a file, and stops the program there or says how the operation is to fail.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/systeme/fichiers.h"

namespace fichiers::epreuve {

enum class Operation : std::uint8_t {
    ouvre,
    lis,
    ecrit,
    vide_tampon,
    ferme,
    renomme,
    vide_repertoire,
    supprime,
    liste
};

/// Null: nobody asks. Set while no operation is under way; called on the thread of the operation. Issue::fait lets it
/// take place; anything else is what it gives, and nothing is done. `chemin` is empty for an open file.
inline Issue (*avant)(Operation operation, std::string_view chemin) = nullptr;

inline Issue essaie(Operation operation, std::string_view chemin = {}) {
    return avant == nullptr ? Issue::fait : avant(operation, chemin);
}

}  // namespace fichiers::epreuve
