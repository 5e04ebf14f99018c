// Playing scenarios inside a test: all that they check must hold.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "terrain.h"

namespace tests {

/// Plays a file of tests/scenarios whose checks must all hold.
inline void tient(const Terrain& t, const std::string& scenario, const std::string& options = "") {
    const Issue r = t.joue_fichier(scenario, options);
    EXPECT_EQ(r.statut, 0) << scenario << "\n" << r.erreurs;
}

/// Plays a text whose checks must all hold.
inline void tient_texte(const Terrain& t, const std::string& scenario, const std::string& options = "") {
    const Issue r = t.joue(scenario, options);
    EXPECT_EQ(r.statut, 0) << r.erreurs;
}

/// An order file without its first line, which names the tablet.
inline std::string sans_identite(const std::string& commande) {
    const auto fin = commande.find("\r\n");
    EXPECT_EQ(commande.substr(0, 4), "#ID#");
    EXPECT_EQ(fin, 14U);
    return commande.substr(std::min(commande.size(), fin + 2));
}

/// All files below the working directory with their bytes, but the journal and those of the replay itself.
inline std::map<std::string, std::string> photographie(const Terrain& t) {
    std::map<std::string, std::string> r;
    for (const auto& e : std::filesystem::recursive_directory_iterator(t.chemin())) {
        const std::string nom = std::filesystem::relative(e.path(), t.chemin()).generic_string();
        if (!e.is_regular_file() || nom == "scenario.txt" || nom == "sortie" || nom == "erreurs" ||
            nom == "journal.txt")
            continue;
        r[nom] = t.lis(nom);
    }
    return r;
}

}  // namespace tests
