// Starting other programs: really, and as a replay does. What is Windows' own is in depart_win32_test.cpp.
#include "platform/systeme/processus.h"

#include <gtest/gtest.h>

#include "platform/systeme/texte.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "terrain.h"
#endif

namespace {

using processus::Fenetre;

TEST(Processus, CeQuiNExistePasNeSeLancePas) {
    for (const auto* commande : {"", "   ", "programme-qui-n-existe-pas", "nulle/part/orvapara.exe", "\"", "\"\" a"}) {
        EXPECT_FALSE(processus::lance(commande, Fenetre::normale)) << commande;
    }
}

#ifndef _WIN32
TEST(Processus, LIdentifiantEstCeluiQueLaMachineAEcrit) {
    std::string ecrit;
    for (const char* chemin : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        if (ecrit.empty()) std::ifstream(chemin) >> ecrit;
    }
    EXPECT_EQ(processus::identifiant_machine(), ecrit);
}

class Lancement : public testing::Test {
  protected:
    tests::Terrain terrain;

    void pose_programme(const std::string& nom, std::string_view contenu) const {
        terrain.pose(nom, contenu);
        ASSERT_EQ(chmod((terrain.chemin() / nom).c_str(), 0755), 0);
    }
    /// What the started program wrote, once it has finished writing a line.
    std::string ecrit_par_lui() const {
        const auto jusqua = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!terrain.lis("sortie").ends_with('\n') && std::chrono::steady_clock::now() < jusqua) {
            std::this_thread::yield();
        }
        return terrain.lis("sortie");
    }
};

TEST_F(Lancement, LeProgrammeRecoitSesMotsEtNeLaisseAucunEnfant) {
    std::filesystem::create_directory(terrain.chemin() / "mon dossier");
    const std::string ici = terrain.chemin().string();
    pose_programme("mon dossier/aide.exe", "#!/bin/sh\nprintf '%s|' \"$@\" > '" + ici + "/part'\necho >> '" + ici +
                                               "/part'\nmv '" + ici + "/part' '" + ici + "/sortie'\n");
    const std::string programme = ici + "/mon dossier/aide.exe";
    ASSERT_TRUE(processus::lance(programme + " http://x/?a=1&b=$HOME \"deux mots\" caf\xE9", Fenetre::agrandie));
    EXPECT_EQ(ecrit_par_lui(), "http://x/?a=1&b=$HOME|deux mots|caf\xC3\xA9|\n");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    ASSERT_EQ(std::filesystem::remove(terrain.chemin() / "sortie"), true);
    ASSERT_TRUE(processus::lance("\"" + programme + "\" fin", Fenetre::normale));
    EXPECT_EQ(ecrit_par_lui(), "fin|\n");
}

TEST_F(Lancement, CeQueLeSystemeNePeutExecuterEstUnEchec) {
    terrain.pose("sans droit", "#!/bin/sh\n");
    pose_programme("etranger.exe", std::string("MZ\0\0", 4) + "binary of another system");
    EXPECT_FALSE(processus::lance((terrain.chemin() / "sans droit").string(), Fenetre::normale));
    EXPECT_FALSE(processus::lance((terrain.chemin() / "etranger.exe").string(), Fenetre::normale));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}
#endif

}  // namespace
