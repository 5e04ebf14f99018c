// A medium that gives nothing back at the moment: what it holds must not be taken for blank, and written over.
#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "atelier.h"
#include "data/livraison.h"
#include "data/programme_touches.h"
#include "data/reglages.h"

namespace {

namespace fs = std::filesystem;
using fichiers::Issue;

/// While it lives, this process can still write the file that it holds open, but reads fail.
class Illisible {
  public:
    explicit Illisible(const fs::path& fichier) {
        for (int fd = 3; fd < 256; ++fd) {
            std::error_code faute;
            if (!fs::equivalent("/proc/self/fd/" + std::to_string(fd), fichier, faute) || faute) continue;
            fd_ = fd;
        }
        EXPECT_GE(fd_, 0) << "the file is not open";
        bon_ = ::dup(fd_);
        const int muet = ::open(fichier.c_str(), O_WRONLY);
        EXPECT_EQ(::dup2(muet, fd_), fd_);
        ::close(muet);
    }
    ~Illisible() {
        ::dup2(bon_, fd_);
        ::close(bon_);
    }
    Illisible(const Illisible&) = delete;
    Illisible& operator=(const Illisible&) = delete;

  private:
    int fd_ = -1, bon_ = -1;
};

class Lecture : public tests::Atelier {};

TEST_F(Lecture, UnReglageIllisibleGardeSaValeur) {
    ASSERT_TRUE(reglages::ouvre());
    ASSERT_EQ(reglages::ecrit(reglages::colonnes_grille, "#I#12"), Issue::fait);
    ASSERT_EQ(reglages::ecrit(reglages::record_resolution, "#I#0:01280:00770"), Issue::fait);
    const std::string avant = terrain.lis("wwinqx42.wdo");
    {
        const Illisible panne("wwinqx42.wdo");
        EXPECT_EQ(reglages::nombre(reglages::colonnes_grille), 12) << "as it was read";
        EXPECT_TRUE(reglages::ouvre());
        EXPECT_EQ(reglages::nombre(reglages::colonnes_grille), 6) << "the default, for the time being";
        EXPECT_EQ(reglages::retouche_resolution({1920, 1080}), Issue::panne);
        EXPECT_EQ(terrain.lis("wwinqx42.wdo"), avant);
        EXPECT_EQ(reglages::ecrit(reglages::police_note, "#I#30"), Issue::fait) << "it can be written all the time";
    }
    EXPECT_EQ(reglages::nombre(reglages::colonnes_grille), 12);
    EXPECT_EQ(reglages::nombre(reglages::police_note), 30);
}

TEST_F(Lecture, UneToucheIllisibleNEstPasRemplacee) {
    using namespace programme_touches;
    ASSERT_TRUE(prepare());
    Ligne l = lis_page(2)[4];
    l.pose(Champ::libelle, "Desserts");
    l.record.replace(80, 6, "caches");
    ASSERT_EQ(ecrit_ligne(2, 5, l), Issue::fait);
    const std::string avant = terrain.lis("progppb.wdo");
    {
        const Illisible panne("progppb.wdo");
        Ligne perdue = lis_page(2)[4], titres = lis_titres(2);
        EXPECT_EQ(perdue.libelle(), "");
        perdue.pose(Champ::libelle, "Glaces");
        EXPECT_EQ(ecrit_ligne(2, 5, perdue), Issue::panne);
        titres.pose(Champ::libelle, "Carte");
        EXPECT_EQ(ecrit_titres(2, titres), Issue::panne);
        EXPECT_TRUE(prepare());
        EXPECT_EQ(terrain.lis("progppb.wdo"), avant);
        EXPECT_EQ(ecrit_ligne(3, 5, l), Issue::fait) << "it can be written all the time";
    }
    EXPECT_EQ(lis_page(2)[4].libelle(), "Desserts");
}

TEST_F(Lecture, UneCommandeIllisibleNEstPasLivreeVide) {
    fs::create_directory("reseau");
    fs::create_directory("a_.-A-");
    for (const char* nom : {"a_.-A-", "absente_.-A-"}) {
        EXPECT_EQ(livraison::livre({"reseau", ""}, nom).sort, livraison::Sort::attend) << nom;
    }
    EXPECT_TRUE(fs::is_empty("reseau"));
}

}  // namespace
#endif
