// The manual's pictures are what the screens, and the kitchen's printer, show: played anew, they come out the same, dot
// for dot.
#include <filesystem>

#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using tests::lis, tests::Terrain;

const fs::path sources = SOURCES, images = sources / "docs" / "images";

/// Plays a scenario of the manual and gives the number of its pictures. A wrong one is left for the eye.
std::size_t compare(const Terrain& t, const char* scenario) {
    tests::tient_texte(t, lis(sources / "docs" / scenario));
    const auto noms = t.fichiers(".", ".png");
    for (const std::string& nom : noms) {
        if (t.lis(nom) == lis(images / nom)) continue;
        const fs::path vue = fs::temp_directory_path() / ("vue_" + nom);
        fs::remove(vue);
        fs::copy_file(t.chemin() / nom, vue);
        ADD_FAILURE() << nom << " is not " << vue << "; where it should be, outils/manuel.sh makes the pictures anew";
    }
    return noms.size();
}

TEST(Manuel, SesImagesSontCeQueLesEcransMontrent) {
    const Terrain demonstration, neuf;
    fs::copy(sources / "demo", demonstration.chemin(), fs::copy_options::recursive);
    fs::copy(sources / "demo" / "reseau", neuf.reseau(), fs::copy_options::recursive);
    const fs::path commande = sources / "docs" / "2021-05-19-12-31-05_04_012_004_.txt";
    const tests::Issue ticket =
        demonstration.cuisine("--familles 8=tcp://bar --apercu \"" + commande.string() + "\" \"" +
                              (demonstration.chemin() / "ticket.png").string() + "\"");
    EXPECT_EQ(ticket.statut, 0) << ticket.erreurs;
    const std::size_t comparees = compare(demonstration, "captures.txt") + compare(neuf, "premier_demarrage.txt");
    // The list of orders is shown upon states that the script poses.
    std::size_t autres = 0;
    for (const auto& e : fs::directory_iterator(images)) {
        const std::string nom = e.path().filename().string();
        const bool posee = nom.starts_with("suivi_") || nom.starts_with("non_collectees_") || nom == "renvoyer.png";
        autres += nom.ends_with(".png") && !posee ? 1 : 0;
    }
    EXPECT_GT(comparees, 0U);
    EXPECT_EQ(comparees, autres);
}

}  // namespace
