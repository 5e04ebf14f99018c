// Files as they fail: no room, no right, something else in the place, several writers, power cuts.
#include "platform/systeme/fichiers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <map>

#include "platform/systeme/texte.h"
#include "terrain.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

namespace fs = std::filesystem;
using fichiers::Issue;
using fichiers::Remplace;

std::string page(const fs::path& p) {
    const auto utf8 = p.u8string();
    return tests::page1252(std::string(utf8.begin(), utf8.end()));
}

class Fichiers : public testing::Test {
  protected:
    tests::Terrain terrain;
    std::string ici = page(terrain.chemin());

    std::string chemin(std::string_view nom) const { return fichiers::joint(ici, nom); }
    std::vector<std::string> tous() const { return fichiers::liste(ici, "*"); }
    std::string contenu(std::string_view nom) const {
        std::string r;
        EXPECT_EQ(fichiers::lis_tout(chemin(nom), r), Issue::fait) << nom;
        return r;
    }
};

using Noms = std::vector<std::string>;

TEST_F(Fichiers, UnNomDeLaPageEstCeluiQueLeSystemeMontre) {
    const std::string nom("Café à 3 € sup.txt"_t);
    const std::string rep = chemin("Menu été"_t);
    ASSERT_EQ(fichiers::cree_repertoire(rep), Issue::fait);
    EXPECT_EQ(fichiers::cree_repertoire(rep), Issue::existe);
    ASSERT_EQ(fichiers::ecrit_tout(rep + "\\" + nom, "x\r\n", Remplace::jamais), Issue::fait);
    EXPECT_TRUE(fs::exists(terrain.chemin() / fs::path(u8"Menu été") / fs::path(u8"Café à 3 € sup.txt")));

    EXPECT_EQ(fichiers::joint(rep + "\\", nom), rep + "\\" + nom);
    EXPECT_EQ(fichiers::liste(rep, "*.TXT"), Noms{nom});
    EXPECT_EQ(fichiers::longueur(rep + "/" + nom), 3u);
    EXPECT_TRUE(fichiers::liste(ici, "*.txt").empty());
    EXPECT_EQ(fichiers::liste("", "*"), Noms{}) << "a blank directory is no directory";
}

TEST_F(Fichiers, LeMotifIgnoreLaCasseEtNeCompteAucunCaractereDeuxFois) {
    const std::tuple<std::string_view, std::string_view, bool> table[] = {
        {"a.-A-", "*.-a-", true},   {"a.txt", "*.TXT", true},
        {"txt", "*.txt", false},    {"ab", "ab*b", false},
        {"abb", "ab*b", true},      {"", "*", true},
        {"é.txt"_t, "É*"_t, false}, {"x.-A-.12-1.tmp_", "*.-A-", false}};
    for (const auto& [nom, motif, attendu] : table)
        EXPECT_EQ(fichiers::correspond(nom, motif), attendu) << nom << ' ' << motif;
}

TEST_F(Fichiers, UnFichierEstEntierOuNEstPas) {
    ASSERT_EQ(fichiers::ecrit_tout(chemin("a.-A-"), "un", Remplace::jamais), Issue::fait);
    EXPECT_EQ(fichiers::ecrit_tout(chemin("a.-A-"), "deux", Remplace::jamais), Issue::existe);
    EXPECT_EQ(contenu("a.-A-"), "un");
    EXPECT_EQ(fichiers::ecrit_tout(chemin("a.-A-"), "trois", Remplace::oui), Issue::fait);
    EXPECT_EQ(contenu("a.-A-"), "trois");

    fs::create_directory(terrain.chemin() / "rep");
    EXPECT_EQ(fichiers::ecrit_tout(chemin("rep"), "x", Remplace::oui), Issue::refuse);
    EXPECT_EQ(fichiers::ecrit_tout(chemin("rep"), "x", Remplace::jamais), Issue::existe);
    EXPECT_EQ(fichiers::ecrit_tout(chemin("nulle part/x"), "x", Remplace::jamais), Issue::absent);
    EXPECT_EQ(tous(), Noms{"a.-A-"}) << "no temporary file stays behind";
}

TEST_F(Fichiers, RenommerNeRemplaceJamais) {
    terrain.pose("a", "un");
    terrain.pose("b", "deux");
    fs::create_directory(terrain.chemin() / "rep");
    EXPECT_EQ(fichiers::renomme(chemin("a"), chemin("b")), Issue::existe);
    EXPECT_EQ(fichiers::renomme(chemin("a"), chemin("rep")), Issue::existe);
    EXPECT_EQ(fichiers::renomme(chemin("z"), chemin("c")), Issue::absent);
    EXPECT_EQ(contenu("a") + contenu("b"), "undeux");
    EXPECT_EQ(fichiers::renomme(chemin("a"), chemin("c")), Issue::fait);
    EXPECT_EQ(fichiers::supprime(chemin("c")), Issue::fait);
    EXPECT_EQ(fichiers::supprime(chemin("c")), Issue::absent);
    EXPECT_EQ(fichiers::supprime(chemin("rep")), Issue::refuse);
    EXPECT_EQ(tous(), Noms{"b"});
}

TEST_F(Fichiers, DeTousCeuxQuiCreentUnNomUnSeulReussit) {
    constexpr int ecrivains = 8, tours = 20;
    for (int tour = 0; tour < tours; ++tour) {
        const std::string nom = chemin("c" + std::to_string(tour));
        std::vector<std::future<Issue>> ecritures;
        for (int i = 0; i < ecrivains; ++i) {
            const std::string texte(5000, static_cast<char>('a' + i));
            ecritures.push_back(std::async(std::launch::async, fichiers::ecrit_tout, nom, texte, Remplace::jamais));
        }
        std::map<Issue, int> issues;
        for (auto& e : ecritures) ++issues[e.get()];
        EXPECT_EQ(issues, (std::map<Issue, int>{{Issue::fait, 1}, {Issue::existe, ecrivains - 1}}));
        const std::string c = contenu("c" + std::to_string(tour));
        EXPECT_EQ(c, std::string(5000, c.empty() ? ' ' : c[0]));
    }
    EXPECT_EQ(tous().size(), static_cast<std::size_t>(tours));
}

TEST_F(Fichiers, LesTemporairesDUneCoupureSontRetires) {
    terrain.pose("2021-05-19-12-30-00_01_007_004_.-A-.77-1.tmp_", "#VERS");
    terrain.pose("2021-05-19-12-30-00_01_007_004_.-A-", "#VERSION#2.1");
    EXPECT_EQ(fichiers::liste(ici, "*.-A-").size(), 1u);
    fichiers::retire_temporaires(ici);
    EXPECT_EQ(tous(), Noms{"2021-05-19-12-30-00_01_007_004_.-A-"});
}

TEST_F(Fichiers, LireEstBorneEtNAttendRien) {
    terrain.pose("dix", "0123456789");
    terrain.pose("vide", "");
    terrain.pose("grand", std::string(100'000, 'x'));
    fs::create_directory(terrain.chemin() / "rep");
    std::string lu = "avant";
    EXPECT_EQ(fichiers::lis_tout(chemin("dix"), lu, 9), Issue::trop_long);
    EXPECT_EQ(fichiers::lis_tout(chemin("rep"), lu), Issue::refuse);
    EXPECT_EQ(fichiers::lis_tout(chemin("rien"), lu), Issue::absent);
    EXPECT_EQ(fichiers::lis_tout(chemin("dix/rien"), lu), Issue::absent);
    EXPECT_EQ(lu, "avant");
    EXPECT_EQ(fichiers::lis_tout(chemin("dix"), lu, 10), Issue::fait);
    EXPECT_EQ(lu, "0123456789");
    EXPECT_EQ(contenu("vide"), "");
    EXPECT_EQ(contenu("grand").size(), 100'000u);
    EXPECT_FALSE(fichiers::longueur(chemin("rep")));
}

TEST_F(Fichiers, LesTrousEntreRecordsSontDesBlancs) {
    terrain.pose("r", "premier   coupe");
    auto f = fichiers::FichierRecords::ouvre(chemin("r"), 10);
    ASSERT_TRUE(f);
    EXPECT_EQ(f->lis(2).value(), "coupe");
    EXPECT_EQ(f->lis(3).value(), "");
    EXPECT_EQ(f->lis(0).value(), "");
    EXPECT_EQ(f->ecrit(4, "quatre et trop long"), Issue::fait);
    EXPECT_EQ(terrain.lis("r"), "premier   coupe               quatre et ") << "written through at once";
    EXPECT_EQ(f->ecrit(1, "un"), Issue::fait);
    EXPECT_EQ(f->ecrit(0, "rien"), Issue::panne);

    auto second = fichiers::FichierRecords::ouvre(chemin("r"), 10);
    ASSERT_TRUE(second) << "a shared file opens twice";
    EXPECT_EQ(second->lis(1), "un        ");
    EXPECT_EQ(second->ecrit_depuis_le_debut(std::string(50, 'z')), Issue::fait);
    EXPECT_EQ(f->lis(5).value(), "zzzzzzzzzz");
    EXPECT_EQ(f->longueur(), 50u);

    fs::create_directory(terrain.chemin() / "rep");
    EXPECT_FALSE(fichiers::FichierRecords::ouvre(chemin("rep"), 10));
    EXPECT_FALSE(fichiers::FichierRecords::ouvre(chemin("nulle part/r"), 10));
    EXPECT_TRUE(fichiers::FichierRecords::ouvre(chemin("neuf"), 10));
    EXPECT_EQ(fichiers::longueur(chemin("neuf")), 0u);
}

#ifndef _WIN32

TEST_F(Fichiers, SurUnDisquePleinAucunDemiRecordNeReste) {
    auto f = fichiers::FichierRecords::ouvre(chemin("r"), 20);
    ASSERT_TRUE(f);
    ASSERT_EQ(f->ecrit(2, "#I#1280"), Issue::fait);
    {
        const tests::LimiteDeTaille limite(65);
        EXPECT_EQ(f->ecrit(4, "#I#101280:00800"), Issue::plein);
    }
    EXPECT_EQ(f->longueur(), 40u);
    EXPECT_EQ(f->lis(2).value(), "#I#1280             ");
    EXPECT_EQ(f->ecrit(4, "#I#10"), Issue::fait) << "with room again it goes on";
    EXPECT_EQ(f->lis(3).value(), std::string(20, ' '));
}

TEST_F(Fichiers, UnNomQueLaPageNeConnaitPasEstPasseSousSilence) {
    std::ofstream(terrain.chemin() / fs::path(u8"寿司.txt")) << "x";
    std::ofstream(terrain.chemin() / "a\\b.txt") << "x";
    terrain.pose("c.txt", "x");
    EXPECT_EQ(fichiers::liste(ici, "*.txt"), Noms{"c.txt"});
    EXPECT_FALSE(fichiers::existe(chemin(std::string_view("c.txt\0.sav", 10)))) << "a zero byte cuts no name";
}

#endif

}  // namespace
