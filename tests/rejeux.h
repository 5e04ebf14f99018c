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

/// The commands so many times.
inline std::string fois(int n, std::string_view commandes) {
    std::string r;
    for (int i = 0; i < n; ++i) r += commandes;
    return r;
}

/// Width and height that a PNG file says it has.
inline std::pair<int, int> taille_png(const std::string& png) {
    const auto entier = [&](std::size_t i) {
        return static_cast<unsigned char>(png.at(i)) * 256 + static_cast<unsigned char>(png.at(i + 1));
    };
    return {entier(18), entier(22)};
}

/// An order file without its first line, which names the tablet.
inline std::string sans_identite(const std::string& commande) {
    const auto fin = commande.find("\r\n");
    EXPECT_EQ(commande.substr(0, 4), "#ID#");
    EXPECT_EQ(fin, 14U);
    return commande.substr(std::min(commande.size(), fin + 2));
}

/// All files below the working directory with their bytes, but those of the replay itself.
inline std::map<std::string, std::string> photographie(const Terrain& t) {
    std::map<std::string, std::string> r;
    for (const auto& e : std::filesystem::recursive_directory_iterator(t.chemin())) {
        const std::string nom = std::filesystem::relative(e.path(), t.chemin()).generic_string();
        if (!e.is_regular_file() || nom == "scenario.txt" || nom == "sortie" || nom == "erreurs") continue;
        r[nom] = t.lis(nom);
    }
    return r;
}

/// A test on the small restaurant.
class Restaurant : public testing::Test {
  protected:
    Terrain t;
    Restaurant() { t.restaurant(); }
    /// What the provisional file keeps of the note that Sophie took at table 1.
    std::string gardee() const {
        const std::string p = t.lis("prov.txt"), tete = "#SERV#01\r\n#TABL#1\r\n";
        EXPECT_EQ(p.substr(0, tete.size()), tete);
        return p.substr(std::min(p.size(), tete.size()));
    }
};
/// From the start: Sophie, table 1, two covers.
inline const std::string prend_table_1 =
    "touche \"Sophie\"\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 1\ntouche \"Valider\"\n";
/// The end of a run that keeps the note.
inline const std::string quitte = "touche \"Quitter\"\ntouche \"Oui\"\nverifie arret\n";

}  // namespace tests
