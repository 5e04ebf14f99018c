// What a window's decoder has queued, as a text.
#pragma once

#include <string>

#include "platform/ecran/entrees.h"

/// The queue, emptied: the name of each event, with its place, its character or its key.
inline std::string vide(ecran::Entrees& entrees) {
    using Sorte = ecran::Evenement::Sorte;
    constexpr const char* noms[] = {"rien", "appui:",    "glisse:", "relache:",  "perdu",      "car:",
                                    "cle:", "repeindre", "reveil",  "fermeture", "extinction", "fin"};
    std::string t;
    while (!entrees.vide()) {
        const ecran::Evenement e = entrees.prend();
        t += (t.empty() ? "" : " ") + std::string(noms[static_cast<std::size_t>(e.sorte)]);
        if (e.sorte >= Sorte::appui && e.sorte <= Sorte::relache) t += std::to_string(e.x) + "," + std::to_string(e.y);
        if (e.sorte == Sorte::caractere) t += std::to_string(e.code);
        if (e.sorte == Sorte::cle) t += std::to_string(static_cast<int>(e.cle));
    }
    return t;
}
