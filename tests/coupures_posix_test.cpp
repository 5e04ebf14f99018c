// An order is handed over exactly once: the delivery of three is cut before each operation on a file in turn, or one of
// them fails, beside a router that has collected all, nothing or half of what lies there; then the program starts
// again. The system's own calls are cut, in a process of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "data/etat.h"
#include "data/reseau.h"
#include "data/suivi.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/ouvrier.h"
#include "terrain.h"

namespace {

namespace fs = std::filesystem;
using fichiers::Issue;
using fichiers::epreuve::Operation;
using tests::lis;

const std::string commandes[] = {"2021-05-19-12-30-00_07_012_004_.", "2021-05-19-12-31-00_07_013_002_.",
                                 "2021-05-19-12-32-00_02_001_010_."};
constexpr int coupee = 99;

/// What befalls the operations of a run, counted from 1.
struct Sort {
    int rang = 0;               ///< 0: nothing
    Issue echec = Issue::fait;  ///< Issue::fait: the power goes
    bool pour_de_bon = false;   ///< also all later ones
};
Sort sort;
int compte = 0;

Issue frappe(Operation, std::string_view) {
    ++compte;
    if (sort.rang == 0 || compte < sort.rang || (compte > sort.rang && !sort.pour_de_bon)) return Issue::fait;
    if (sort.echec == Issue::fait) ::_exit(coupee);
    return sort.echec;
}

/// The rename takes place, and its answer is lost.
Issue perd_la_reponse(Operation operation, std::string_view chemin) {
    if (operation != Operation::renomme || !chemin.ends_with(".tmp_") || chemin.find('/') == std::string_view::npos)
        return Issue::fait;
    const std::string de(chemin);
    fs::rename(de, de.substr(0, de.find("_.txt.") + 5));
    return Issue::panne;
}

/// Nor can be read what lies in the network directory; or the tablet's own files cannot be listed.
Issue cache(Operation operation, std::string_view chemin) {
    const bool texte = operation == Operation::ouvre && chemin.starts_with("reseau/2") && chemin.ends_with(".txt");
    const bool tablette = operation == Operation::liste && chemin == "." && sort.rang == 1;
    return texte || tablette ? Issue::panne : Issue::fait;
}

/// The share is gone when the kitchen is looked at, and an empty directory stands in its place.
Issue vide_la_place(Operation operation, std::string_view chemin) {
    if (operation == Operation::liste && chemin == "reseau" && !fs::exists("parti")) {
        fs::rename("reseau", "parti");
        fs::create_directory("reseau");
        if (sort.rang == 1) std::ofstream("reseau/Test.res") << "of a start without the share";
    }
    return Issue::fait;
}

/// The share is gone when the first order is to be renamed.
Issue emporte_le_partage(Operation operation, std::string_view chemin) {
    if (operation == Operation::renomme && chemin.starts_with("reseau/")) fs::rename("reseau", "parti");
    return Issue::fait;
}

/// An order is written once the kitchen has been looked at; its name in the network directory is refused, once.
Issue refuse_un_nom(Operation operation, std::string_view chemin) {
    if (operation == Operation::liste && chemin == "reseau" && fs::exists("plus tard"))
        fs::rename("plus tard", commandes[2] + "-A-");
    const bool la_bas = operation == Operation::renomme && chemin.starts_with("reseau/");
    return la_bas && ++compte == 1 ? Issue::panne : Issue::fait;
}

class Coupures : public testing::Test {
  protected:
    enum class Routeur { a_tout_pris, dort, a_pris_la_moitie };
    fs::path avant = fs::current_path(), ici;
    fs::path partage = fs::temp_directory_path() / ("orvalune_partage_" + std::to_string(::getpid()));
    std::map<std::string, int> collectees;  ///< by content

    Coupures() {
        const fs::path memoire = "/dev/shm";  // where a flush costs nothing
        ici = (fs::is_directory(memoire) ? memoire : fs::temp_directory_path()) /
              ("orvalune_coupures_" + std::to_string(::getpid()));
        ouvrier::abandonne();  // a fork takes no thread along
    }
    ~Coupures() override {
        fs::current_path(avant);
        fs::remove_all(ici);
        fs::remove_all(partage);
    }

    void recommence() {
        fs::current_path(avant);
        fs::remove_all(ici);
        fs::create_directories(ici / "reseau");
        fs::current_path(ici);
        collectees.clear();
        for (const std::string& nom : commandes) std::ofstream(nom + "-A-", std::ios::binary) << "commande " << nom;
    }

    /// What the router does while the tablet is off.
    void collecte(Routeur r) {
        std::vector<fs::path> la;
        for (const auto& e : fs::directory_iterator("reseau")) {
            if (e.path().extension() == ".txt") la.push_back(e.path());
        }
        std::sort(la.begin(), la.end());
        for (std::size_t i = 0; i < la.size(); ++i) {
            if (r == Routeur::dort || (r == Routeur::a_pris_la_moitie && i % 2 == 1)) continue;
            ++collectees[lis(la[i])];
            fs::remove(la[i]);
        }
    }

    /// Runs a start and `passes` looks at the network in a process of its own; between two of them the router collects
    /// what it finds. The child's status, or -1.
    static int demarre(Issue (*epreuve)(Operation, std::string_view), const Sort& s, int passes = 1) {
        const pid_t fils = ::fork();
        if (fils == 0) {
            sort = s;
            compte = 0;
            etat::repertoire_reseau = etat::repertoire_test = "reseau";
            etat::hors_ligne = false;
            fichiers::epreuve::avant = epreuve;
            fichiers::retire_temporaires(".");
            suivi::charge();
            reseau::commence_la_connexion();
            reseau::attend_la_connexion();
            while (!ouvrier::attends(5000)) continue;
            for (int i = 1; i < passes; ++i) {
                reseau::passe();
                while (!ouvrier::attends(5000)) continue;
            }
            ::_exit(std::min(compte, coupee - 1));
        }
        return tests::attend_la_fin(fils);
    }
    static int combien(const char* repertoire, std::string_view fin) {
        int n = 0;
        for (const auto& e : fs::directory_iterator(repertoire)) n += e.path().string().ends_with(fin) ? 1 : 0;
        return n;
    }

    /// After a run without faults each order has been collected once, and nothing of it lies about.
    void verifie_une_fois(const std::string& cas) {
        ASSERT_GE(demarre(nullptr, {}, 2), 0) << cas;
        collecte(Routeur::a_tout_pris);
        ASSERT_GE(demarre(nullptr, {}), 0) << cas;
        collecte(Routeur::a_tout_pris);
        for (const std::string& nom : commandes) {
            EXPECT_EQ(collectees["commande " + nom], 1) << cas << ", " << nom;
        }
        EXPECT_EQ(collectees.size(), std::size(commandes)) << cas << ": a part of an order";
        for (const auto& e : fs::recursive_directory_iterator(".")) {
            const std::string nom = e.path().filename().string();
            EXPECT_FALSE(nom.ends_with("-A-") || nom.ends_with("-D-") || nom.ends_with("-T-") || nom.ends_with(".tmp_"))
                << cas << ": " << nom << " was left";
        }
    }

    static int operations_d_une_passe() { return demarre(frappe, {}); }
};

TEST_F(Coupures, CoupeeOuQueCeSoitUneCommandeArriveUneFois) {
    recommence();
    const int nombre = operations_d_une_passe();
    ASSERT_GT(nombre, 30);
    for (const Routeur routeur : {Routeur::dort, Routeur::a_tout_pris, Routeur::a_pris_la_moitie}) {
        for (int k = 1; k <= nombre; k += tests::pas) {
            recommence();
            ASSERT_EQ(demarre(frappe, {k}), coupee);
            collecte(routeur);
            verifie_une_fois("cut before " + std::to_string(k) + ", router " +
                             std::to_string(static_cast<int>(routeur)));
        }
    }
}

/// The start that ends what a cut has left is cut as well.
TEST_F(Coupures, CoupeeEncoreEnSeReprenant) {
    recommence();
    const int nombre = operations_d_une_passe();
    for (int k = 8; k <= nombre; k += 3 * tests::pas) {
        for (int l = 1 + k % 4;; l += 4) {
            recommence();
            ASSERT_EQ(demarre(frappe, {k}), coupee);
            if (l / 4 % 2 == 0) collecte(Routeur::a_tout_pris);
            if (demarre(frappe, {l}) != coupee) break;
            collecte(Routeur::a_pris_la_moitie);
            verifie_une_fois("cut before " + std::to_string(k) + ", then " + std::to_string(l));
        }
    }
}

TEST_F(Coupures, UneOperationQuiEchoueNePerdNiNeDoubleRien) {
    recommence();
    const int nombre = operations_d_une_passe();
    int tour = 0;
    for (const Issue echec : {Issue::plein, Issue::refuse, Issue::panne, Issue::occupe, Issue::absent}) {
        for (int k = 1; k <= nombre; k += tests::pas) {
            recommence();
            const bool pour_de_bon = (k + tour) % 2 == 0;
            ASSERT_GE(demarre(frappe, {k, echec, pour_de_bon}, 2), 0);
            if (k % 3 == 0) collecte(Routeur::a_tout_pris);
            verifie_une_fois("failure " + std::to_string(static_cast<int>(echec)) + " at " + std::to_string(k) +
                             (pour_de_bon ? " and after" : ""));
        }
        ++tour;  // an operation that fails once fails for good in the next one
    }
}

/// The share goes while an order is being handed over, and an empty directory stands in its place, as a mount point
/// does.
TEST_F(Coupures, UnPartageQuiPartNAJamaisRienCollecte) {
    recommence();
    fs::create_directory("reseau/orvalune.wdo");
    ASSERT_GE(demarre(emporte_le_partage, {}), 0);
    EXPECT_TRUE(fs::exists(commandes[0] + "-A-")) << "nobody has it";
    fs::create_directory("reseau");
    ASSERT_GE(demarre(nullptr, {}, 2), 0);
    EXPECT_TRUE(fs::is_empty("reseau")) << "an empty place is not the share";
    fs::remove("reseau");
    fs::rename("parti", "reseau");
    ASSERT_GE(demarre(nullptr, {}, 2), 0);
    fs::remove("reseau/orvalune.wdo");
    verifie_une_fois("share gone and back");
}

/// Its file system tells a share from the place where it is mounted, even where a start without it has left a probe
/// beneath; what was deposited there nobody collects.
TEST_F(Coupures, LaPlaceDUnPartageNEstPasLePartage) {
    if (!fs::is_directory("/dev/shm")) GTEST_SKIP() << "one file system holds all";
    for (const int sonde : {0, 1}) {
        recommence();
        fs::rename("reseau", "dessous");
        fs::create_directories(partage);
        fs::create_directory_symlink(partage, "reseau");
        ASSERT_GE(demarre(nullptr, {}), 0);
        ASSERT_GE(demarre(vide_la_place, {sonde}, 2), 0);
        EXPECT_EQ(combien(".", "-T-"), 3);
        fs::remove_all("reseau");
        fs::rename("parti", "reseau");
        verifie_une_fois("share gone under the look at the kitchen");
    }
    fs::remove("reseau");
    fs::rename("dessous", "reseau");
    std::ofstream(commandes[0] + "-A-") << "une de plus";
    ASSERT_GE(demarre(nullptr, {}), 0);
    fs::remove_all("reseau");
    fs::create_directory_symlink(partage, "reseau");
    ASSERT_GE(demarre(nullptr, {}), 0);
    EXPECT_EQ(combien(".", "-V-"), 1);
}

/// What the tablet holds cannot be listed: its orders are not taken for collected.
TEST_F(Coupures, UneTabletteIllisibleNeConclutRien) {
    recommence();
    fs::rename("reseau", "parti");
    ASSERT_GE(demarre(nullptr, {}), 0);
    fs::rename("parti", "reseau");
    const std::string liste = lis("suivi.txt");
    ASSERT_GE(demarre(cache, {1}), 0);
    EXPECT_EQ(lis("suivi.txt"), liste);
    verifie_une_fois("tablet not to be listed");
}

TEST_F(Coupures, UneReponsePerdueNEstPasUnEchec) {
    for (const Routeur routeur : {Routeur::dort, Routeur::a_tout_pris}) {
        recommence();
        ASSERT_GE(demarre(perd_la_reponse, {}), 0);
        collecte(routeur);
        ASSERT_GE(demarre(cache, {}), 0);
        verifie_une_fois("lost answer");
        EXPECT_EQ(fs::exists(commandes[0] + "-V-"), routeur == Routeur::a_tout_pris)
            << "what cannot be known is the waiter's to decide";
    }
}

/// Looking for what was collected, the same pass leaves alone what the mark of a later order names.
TEST_F(Coupures, UnNomRefuseSeRedemande) {
    recommence();
    fs::rename(commandes[2] + "-A-", "plus tard");
    ASSERT_GE(demarre(nullptr, {}), 0);
    ASSERT_GE(demarre(refuse_un_nom, {}, 2), 0);
    EXPECT_TRUE(fs::exists(commandes[2] + "-A-"));
    verifie_une_fois("name refused");
}

}  // namespace
