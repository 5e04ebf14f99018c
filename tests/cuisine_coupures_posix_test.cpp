// An order is printed once, or again with a mark, and never lost: the kitchen is cut before each operation on a file,
// or one of them fails; its archive is full, lies on another medium, goes, comes back, belongs to another.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <set>

#include "data/commande.h"
#include "fourneau_posix.h"
#include "platform/liaison/verrou.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/ouvrier.h"

namespace {

namespace fs = std::filesystem;
using fichiers::Issue;
using fichiers::epreuve::Operation;
using tests::bloc, tests::Fourneau, tests::Papier, tests::table_de;

constexpr int coupee = 99;

struct Sort {
    int rang = 0;                ///< of the operation, from 1; 0: nothing befalls it
    Issue echec = Issue::fait;   ///< Issue::fait: the power goes
    bool autre_support = false;  ///< the archive lies on another medium: no order can be renamed into it
};
Sort sort;
int compte = 0;
std::string refusee;

Issue frappe(Operation operation, std::string_view chemin) {
    if (++compte == sort.rang) {
        if (sort.echec == Issue::fait) ::_exit(coupee);
        return sort.echec;
    }
    const bool prise = operation == Operation::renomme && chemin.find("/reseau/") != std::string_view::npos;
    if (!sort.autre_support || !prise || refusee == chemin) return Issue::fait;
    refusee = chemin;
    return Issue::panne;
}

class CuisineCoupee : public tests::EnMemoire, public Fourneau {
  protected:
    CuisineCoupee() {
        std::string faute;
        const std::string bar = "fichier:" + (t.chemin() / "bar.bin").string();
        EXPECT_TRUE(partage::lis("35=" + bar, reglages.partage, faute)) << faute;
        ouvrier::abandonne();  // a fork takes no thread along
    }

    void recommence() const {
        for (const char* nom : {"archive", "cuisine.bin", "bar.bin"}) fs::remove_all(t.chemin() / nom);
        for (const std::string& prise : t.fichiers("reseau", ".prise")) fs::remove(t.reseau() / prise);
        depose(1, tests::commande_de(1, bloc("8880000000611") + bloc("8880000000024")));
        depose(2, tests::commande_de(2, bloc("8880000000611")));
        depose(3, tests::commande_simple(3));
        t.pose("reseau/mauvaise.txt", "rien\r\n");
    }

    /// A run of its own; its status, or the count of its operations.
    int demarre(const Sort& s) const {
        const pid_t fils = ::fork();
        if (fils == 0) {
            tests::fais_taire();
            sort = s;
            compte = 0;
            fichiers::epreuve::avant = frappe;
            static_cast<void>(service::sert(reglages));
            ::_exit(0);
        }
        return tests::attend_la_fin(fils);
    }

    static std::string numero(const std::string& ticket) {
        const auto p = ticket.find("Commande ");
        return ticket.substr(p, ticket.find('\n', p) - p);
    }

    /// After a run without faults. Only what was in hand, at most twice, may bear a mark.
    void verifie(const std::string& cas, const Sort& s, std::size_t marques_max) const {
        ASSERT_EQ(demarre({0, Issue::fait, s.autre_support}), 0) << cas;
        const Papier cuisine = papier(), bar = papier("bar.bin");
        for (const int table : {1, 3}) tests::verifie_une_fois(cuisine, table, cas);
        for (const int table : {1, 2}) tests::verifie_une_fois(bar, table, cas);
        EXPECT_GE(cuisine.avec("mauvaise.txt").size(), 1U) << cas;
        EXPECT_LE(cuisine.avec("DUPLICATA").size() + bar.avec("DUPLICATA").size(), marques_max) << cas;
        std::set<std::string> numeros;
        for (const int table : {1, 2, 3}) {
            std::set<std::string> siens;
            for (const Papier* p : {&cuisine, &bar}) {
                for (const std::string& ticket : p->avec(table_de(table))) siens.insert(numero(ticket));
            }
            EXPECT_EQ(siens.size(), 1U) << cas << ": table " << table;
            numeros.merge(siens);
        }
        EXPECT_EQ(numeros, (std::set<std::string>{"Commande 1", "Commande 2", "Commande 3"})) << cas;
        EXPECT_TRUE(t.fichiers("reseau", ".txt").empty() && t.fichiers("reseau", ".prise").empty()) << cas;
        EXPECT_TRUE(t.fichiers("archive/en_cours", "").empty()) << cas;
        EXPECT_EQ(t.fichiers("archive/2021-05-19", "").size(), 3U) << cas;
        EXPECT_EQ(t.lis("archive/rejets/mauvaise.txt"), "rien\r\n") << cas;
    }

    /// How many operations a run has; found by cutting ever later ones.
    int operations(bool autre_support) const {
        for (int k = 10;; k += 10) {
            recommence();
            if (demarre({k, Issue::fait, autre_support}) != coupee) return k;
        }
    }
};

TEST_F(CuisineCoupee, CoupeeOuQueCeSoitRienNeSePerd) {
    for (const bool autre_support : {false, true}) {
        const int nombre = operations(autre_support);
        ASSERT_GT(nombre, 60);
        for (int k = 1; k <= nombre; k += tests::pas) {
            recommence();
            const Sort s{k, Issue::fait, autre_support};
            const int statut = demarre(s);
            verifie("cut before " + std::to_string(k) + (autre_support ? ", other medium" : ""), s,
                    statut == coupee ? 1 : 0);
        }
    }
}

TEST_F(CuisineCoupee, CoupeeEncoreEnSeReprenant) {
    const int nombre = operations(true);
    for (int k = 15; k <= nombre; k += 5 * tests::pas) {
        for (int l = 9;; l += 17) {
            recommence();
            const Sort s{k, Issue::fait, l % 2 == 0};
            static_cast<void>(demarre(s));
            const bool fini = demarre({l, Issue::fait, s.autre_support}) != coupee;
            verifie("cut before " + std::to_string(k) + ", then " + std::to_string(l), s, 2);
            if (fini) break;
        }
    }
}

TEST_F(CuisineCoupee, UneOperationQuiEchoueNePerdNiNeDoubleRien) {
    const int nombre = operations(false);
    for (const Issue echec : {Issue::plein, Issue::refuse, Issue::panne, Issue::occupe, Issue::absent}) {
        for (int k = 1; k <= nombre; k += tests::pas) {
            recommence();
            const Sort s{k, echec, false};
            ASSERT_EQ(demarre(s), 0);
            // What cannot be read of an earlier order of its name marks each of its parts.
            verifie("failure " + std::to_string(static_cast<int>(echec)) + " at " + std::to_string(k), s, 2);
        }
    }
}

/// A full archive on another medium keeps what has been taken in the network directory, and says so; each order then
/// comes over with its own bytes.
TEST_F(CuisineCoupee, CeQuUneArchivePleineRetientVientEntier) {
    constexpr int nombre = 12;
    static bool pleine;
    static std::set<std::string> refusees;
    pleine = true;
    fichiers::epreuve::avant = [](Operation operation, std::string_view chemin) {
        const bool prise = operation == Operation::renomme && chemin.find("/reseau/") != std::string_view::npos;
        if (prise && refusees.insert(std::string(chemin)).second) return Issue::panne;
        const bool copie = operation == Operation::ouvre && chemin.find(".tmp") != std::string_view::npos &&
                           chemin.find(".copie") != std::string_view::npos;
        return pleine && copie ? Issue::plein : Issue::fait;
    };
    for (int table = 1; table <= nombre; ++table) depose(table, tests::commande_simple(table));
    testing::internal::CaptureStderr();
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("plus de place"), std::string::npos);
    EXPECT_EQ(t.fichiers("reseau", ".prise").size(), std::size_t{nombre});
    // They belong to it wherever it lies, and whoever works in it.
    fs::rename(t.chemin() / "archive", t.chemin() / "ailleurs");
    reglages.archive = (t.chemin() / "ailleurs" / "").string();
    pleine = false;
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    fichiers::epreuve::avant = nullptr;
    EXPECT_TRUE(t.fichiers("reseau", ".prise").empty());
    for (int table = 1; table <= nombre; ++table) {
        EXPECT_EQ(t.lis("ailleurs/2021-05-19/" + tests::nom_de_commande(table)), tests::commande_simple(table));
        EXPECT_EQ(papier().avec(table_de(table)).size(), 1U) << table;
    }
}

/// A copy beside the fiche of an order that has been put away, and one beside an order of its name that waits in the
/// network directory: each is printed.
TEST_F(CuisineCoupee, UneCopieEstSaPropreCommande) {
    const std::string en_cours = "archive/en_cours/", un = tests::nom_de_commande(1), trois = tests::nom_de_commande(3);
    t.pose(en_cours + un + ".copie", tests::commande_simple(1));
    t.pose(en_cours + un + ".fiche", "#FICHE#1\r\n#TICKET#4\r\n#PARTIE#" + reglages.partage.adresses[0].ecrite() +
                                         "\r\n#LIGNES#0 1\r\n#ETAT#FINI\r\n#FIN#\r\n");
    t.pose(en_cours + trois + ".copie", tests::commande_simple(4));
    t.pose("archive/identite.txt", "ABCDEFGHIJ\r\n");
    t.pose("reseau/" + trois + "." + commande::code("ABCDEFGHIJ\r\n") + ".prise", tests::commande_simple(3));
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    for (const int table : {1, 3, 4}) EXPECT_EQ(papier().avec(table_de(table)).size(), 1U) << table;
    EXPECT_TRUE(t.fichiers("archive/en_cours", "").empty());
}

/// A share that had gone comes back over what the kitchen has made at its place meanwhile: what waits there is printed,
/// and its lock is taken.
TEST_F(CuisineCoupee, UnPartageQuiRevientRapporteSesCommandes) {
    static fs::path ici;
    static int regards;
    static bool tenu;
    ici = t.chemin();
    regards = 0;
    tenu = false;
    reglages.archive = (ici / "reseau" / "archive").string();
    depose(1, tests::commande_simple(1));
    t.pose("partage/" + tests::nom_de_commande(3), tests::commande_simple(3));
    t.pose("partage/archive/en_cours/" + tests::nom_de_commande(2), tests::commande_simple(2));
    t.pose("partage/archive/cuisine.verrou", "ailleurs");
    fichiers::epreuve::avant = [](Operation operation, std::string_view chemin) {
        if (operation != Operation::liste || !chemin.ends_with("reseau")) return Issue::fait;
        if (++regards == 4) {
            fs::rename(ici / "reseau", ici / "vide");
            fs::rename(ici / "partage", ici / "reseau");
        }
        Issue issue = Issue::fait;
        if (regards == 5) tenu = verrou::prend((ici / "reseau/archive/cuisine.verrou").string(), issue) == nullptr;
        return Issue::fait;
    };
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    fichiers::epreuve::avant = nullptr;
    EXPECT_TRUE(tenu);
    for (const int table : {2, 3}) EXPECT_EQ(papier().avec(table_de(table)).size(), 1U) << table;
}

/// A share is mounted over the directory in which the kitchen has begun, with orders in it.
TEST_F(CuisineCoupee, UnPartageQuiVientSePrendAussi) {
    recommence();
    static fs::path ici;
    ici = t.chemin();
    reglages.archive = (ici / "reseau" / "archive").string();
    fs::rename(ici / "reseau", ici / "partage");
    fs::create_directory(ici / "reseau");
    fichiers::epreuve::avant = [](Operation operation, std::string_view chemin) {
        if (operation == Operation::liste && chemin.ends_with("reseau") && fs::exists(ici / "partage") &&
            fs::exists(ici / "reseau" / "archive")) {
            fs::rename(ici / "reseau", ici / "vide");
            fs::rename(ici / "partage", ici / "reseau");
        }
        return Issue::fait;
    };
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    fichiers::epreuve::avant = nullptr;
    EXPECT_EQ(papier().entiers.size() + papier("bar.bin").entiers.size(), 5U);
    EXPECT_EQ(t.fichiers("reseau/archive/2021-05-19", "").size(), 3U);
}

/// Another archive takes the place of this one while tickets are printed: nothing is noted in it, and what was in hand
/// is printed once when the first one is back.
TEST_F(CuisineCoupee, UneArchiveEchangeeEnPleinTour) {
    static fs::path ici;
    static int fiches;
    ici = t.chemin();
    fiches = 0;
    for (int table = 1; table <= 4; ++table) depose(table, tests::commande_simple(table));
    fichiers::epreuve::avant = [](Operation operation, std::string_view chemin) {
        const bool fiche = operation == Operation::renomme && chemin.find(".fiche") != std::string_view::npos;
        if (fiche && ++fiches == 4) {  // the second order has been printed, and that is not noted yet
            fs::rename(ici / "archive", ici / "premiere");
            fs::create_directories(ici / "archive" / "en_cours");
        }
        return Issue::fait;
    };
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    fichiers::epreuve::avant = nullptr;
    EXPECT_TRUE(t.fichiers("archive/en_cours", "").empty());
    fs::rename(ici / "archive", ici / "seconde");
    fs::rename(ici / "premiere", ici / "archive");
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    for (int table = 1; table <= 4; ++table) tests::verifie_une_fois(papier(), table, "exchanged");
    EXPECT_EQ(papier().avec("DUPLICATA").size(), 1U);
}

/// The lock that another user has made holds, whatever mask he has, and where one may only read it.
TEST(Verrou, CeluiDUnAutreUtilisateurTient) {
    const tests::Terrain t;
    const std::string fichier = (t.chemin() / "cuisine.verrou").string();
    const mode_t masque = ::umask(077);
    Issue issue = Issue::fait;
    EXPECT_EQ(verrou::prend((t.chemin() / "absent" / "cuisine.verrou").string(), issue), nullptr);
    EXPECT_EQ(issue, Issue::absent) << "a kitchen that cannot ask is none that may work";
    auto premier = verrou::prend(fichier, issue);
    ::umask(masque);
    fs::permissions(t.chemin(), fs::perms(0755));
    const uid_t moi = ::geteuid(), autre = moi == 0 ? 65534 : moi;
    ASSERT_EQ(::seteuid(autre), 0);
    EXPECT_EQ(verrou::prend(fichier, issue), nullptr);
    EXPECT_EQ(issue, Issue::occupe);
    ASSERT_EQ(::seteuid(moi), 0);
    fs::permissions(fichier, fs::perms(0444));
    ASSERT_EQ(::seteuid(autre), 0);
    EXPECT_EQ(verrou::prend(fichier, issue), nullptr);
    premier.reset();
    EXPECT_NE(verrou::prend(fichier, issue), nullptr);
    ASSERT_EQ(::seteuid(moi), 0);
}

}  // namespace
