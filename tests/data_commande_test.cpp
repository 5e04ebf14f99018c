// The order file byte for byte, its name, and what happens when it cannot be written.
#include "data/commande.h"

#include <random>

#include "atelier.h"
#include "data/lignes.h"
#include "main_screen/note.h"
#include "platform/systeme/texte.h"

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace {

using fichiers::Issue;
using Noms = std::vector<std::string>;

const std::string steak = "8880000000024  |DES:Steak|PVE:12.00|FA1:2|FA2:0";

class CommandeTest : public tests::Atelier {
  protected:
    CommandeTest() { horloge::rend_virtuelle({2021, 5, 19, 12, 30, 45}); }
    ~CommandeTest() override { horloge::rend_reelle(); }

    static void table(std::string_view table_couverts) {
        etat::table_couverts = table_couverts;
        etat::texte_table = "12";
    }
    static std::vector<std::string_view> corps(std::string_view contenu) {
        auto l = texte::lignes(contenu);
        l.erase(l.begin(), l.begin() + std::min<std::ptrdiff_t>(5, std::ssize(l)));
        return l;
    }
    Noms commandes() const { return terrain.fichiers(".", ".-A-"); }
};

TEST_F(CommandeTest, UneCommandeEntiereOctetParOctet) {
    etat::numero_serveur = 3;
    table("#N0124 ");
    note({steak + "  ##QUA:002.00##{Saignante}{Sans sel}",
          std::string("8880000000574  |DES:Menu|PVE:15.00|FA1:3|FA2:99|"
                      "¤¤8880000000284  xSaladeð5ð1Ð8880000000307  xPâtesð0.125ð1.5Ð ##QUA:002.00##{tue}"_t),
          std::string(
              "8880000000611  |DES:Prix fixe|FA2:98|{{Entréeµ8880000000284|Salade¦}} ##QUA:001.00##{Lasagnes}"_t),
          "8880000000031  |DES:Sans marque", "8880000000031  |DES:Trois ##QUA:003.50##{}{ouverte"});
    EXPECT_EQ(commande::contenu(),
              "#ID#" + commande::identite() +
                  "\r\n#VERSION#2.1\r\n#SERVEUR#03\r\n#TABLE#012\r\n#NBCOUVERT#4 \r\n"
                  "#REF#8880000000024  {2.00}\r\n#COMP#Saignante|Sans sel|\r\n#NOTE#\r\n" +
                  std::string("#REF#8880000000574  {2.00}   + ¤¤999999|ÐÐMENU\r\n"
                              "#COMP#\r\n#NOTE#\r\n"
                              "#REF#8880000000284  {2.00)  ¤¤5.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                              "#REF#8880000000307  {3.00)  ¤¤0.13|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"_t) +
                  "#REF#8880000000611  {1.00}\r\n#COMP#Lasagnes|\r\n#NOTE#\r\n"
                  "#REF#8880000000031  {1.00}\r\n#COMP#\r\n#NOTE#\r\n"
                  "#REF#8880000000031  {3.50}\r\n#COMP#|ouverte|\r\n#NOTE#\r\n");
    EXPECT_EQ(commande::nom(horloge::maintenant()), "2021-05-19-12-30-45_03_012_004_.-A-");
    EXPECT_EQ(commande::identite().size(), 10u);
    EXPECT_EQ(commande::identite().find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), std::string::npos);
}

TEST_F(CommandeTest, TableEtCouvertsDansLeNomEtDansLeTexte) {
    const struct {
        std::string_view valeur, nom, table, couverts;
    } cas[] = {{"#N0714 ", "_00_071_004_.-A-", "#TABLE#071", "#NBCOUVERT#4 "},
               {"#N00712", "_00_007_012_.-A-", "#TABLE#007", "#NBCOUVERT#12"},
               {"#N9991 ", "_00_999_001_.-A-", "#TABLE#999", "#NBCOUVERT#1 "},
               {"", "_00_000_000_.-A-", "#TABLE#   ", "#NBCOUVERT#  "}};
    for (const auto& c : cas) {
        table(c.valeur);
        EXPECT_EQ(commande::nom(horloge::maintenant()), "2021-05-19-12-30-45" + std::string(c.nom));
        const std::string t = commande::contenu();
        const auto lignes = texte::lignes(t);
        ASSERT_EQ(lignes.size(), 5u) << "a note of no lines";
        EXPECT_EQ(lignes[3], c.table);
        EXPECT_EQ(lignes[4], c.couverts);
    }
}

TEST_F(CommandeTest, DeuxCommandesDeLaMemeSecondePrennentDeuxNoms) {
    horloge::regle({2021, 12, 31, 23, 59, 59});
    for (const std::string plat : {"1", "2", "3"}) {
        etat::numero_serveur = 7;
        etat::nom_serveur = "Nadia";
        table("#N0124 ");
        note({plat});
        ASSERT_EQ(commande::envoi_commande(), Issue::fait);
        EXPECT_EQ(etat::nb_lignes_note, 0);
        EXPECT_EQ(etat::lignes_note[1] + etat::table_couverts + etat::texte_table, "");
        EXPECT_EQ(etat::numero_serveur, 7) << "the waiter stays";
        EXPECT_EQ(etat::nom_serveur, "Nadia");
    }
    const Noms noms = {"2021-12-31-23-59-59_07_012_004_.-A-", "2022-01-01-00-00-00_07_012_004_.-A-",
                       "2022-01-01-00-00-01_07_012_004_.-A-"};
    ASSERT_EQ(commandes(), noms);
    for (int i = 0; i < 3; ++i) {
        const std::string t = terrain.lis(noms[static_cast<std::size_t>(i)]);
        EXPECT_EQ(corps(t)[0], "#REF#" + std::to_string(i + 1) + "{1.00}");
    }
    etat::nom_serveur.clear();
}

TEST_F(CommandeTest, UneCommandeQuiNeSEcritPasResteDansLaNote) {
    table("#N0124 ");
    note({steak});
    const auto intacte = [] {
        return etat::nb_lignes_note == 1 && etat::lignes_note[1] == steak && etat::table_couverts == "#N0124 " &&
               etat::texte_table == "12";
    };
#ifndef _WIN32
    rlimit avant{};
    getrlimit(RLIMIT_FSIZE, &avant);
    const rlimit serre = {20, avant.rlim_max};
    setrlimit(RLIMIT_FSIZE, &serre);
    const Issue plein = commande::envoi_commande();
    setrlimit(RLIMIT_FSIZE, &avant);
    EXPECT_EQ(plein, Issue::plein);
    EXPECT_TRUE(intacte());
    EXPECT_TRUE(terrain.fichiers(".", "-A-").empty());
    EXPECT_TRUE(terrain.fichiers(".", "_").empty()) << "nothing half written stays";

    std::filesystem::remove_all(terrain.chemin());
    EXPECT_NE(commande::envoi_commande(), Issue::fait);
    EXPECT_TRUE(intacte());
    std::filesystem::create_directories(terrain.chemin());
    std::filesystem::current_path(terrain.chemin());
#endif
    std::filesystem::create_directory(commande::nom(horloge::maintenant()));
    EXPECT_EQ(commande::envoi_commande(), Issue::fait) << "something else of that name is passed by";
    EXPECT_EQ(commandes().back(), "2021-05-19-12-30-46_00_012_004_.-A-");
    EXPECT_FALSE(intacte());
}

/// Whatever was typed into the remarks, the router finds as many blocks as the note has lines, each with its remarks.
TEST_F(CommandeTest, LeRouteurComprendToutesLesCommandes) {
    std::mt19937 hasard(424242);
    const auto tire = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(hasard); };
    const std::string_view morceaux[] = {"#REF#", "\r\n",  "|",      "}",   "{", "FA2:99",
                                         "Ð"_t,   "|¤¤"_t, "##QUA:", "sel", " "};
    table("#N0124 ");
    for (int tour = 0; tour < 300; ++tour) {
        const int n = 1 + tire(30);
        std::vector<std::ptrdiff_t> remarques;
        for (int i = 1; i <= n; ++i) {
            std::vector<std::string> r;
            for (int k = tire(4); k > 0; --k) {
                std::string t = "x";
                for (int m = tire(5); m > 0; --m) t += morceaux[tire(std::size(morceaux))];
                r.push_back(t);
            }
            remarques.push_back(std::ssize(r));
            etat::lignes_note[static_cast<std::size_t>(i)] = lignes::validee(steak, 1 + tire(20), r);
        }
        etat::nb_lignes_note = static_cast<std::int16_t>(n);
        const std::string t = commande::contenu();
        const auto l = corps(t);
        ASSERT_EQ(l.size(), static_cast<std::size_t>(3 * n));
        for (std::size_t i = 0; i < remarques.size(); ++i) {
            ASSERT_TRUE(l[3 * i].starts_with("#REF#8880000000024  {")) << l[3 * i];
            ASSERT_EQ(std::count(l[3 * i + 1].begin(), l[3 * i + 1].end(), '|'), remarques[i]);
            ASSERT_EQ(l[3 * i + 2], "#NOTE#");
        }
    }
}

TEST_F(CommandeTest, LaNoteLaPlusLongue) {
    table("#N0124 ");
    etat::nb_lignes_note = 1003;
    std::fill(etat::lignes_note.begin(), etat::lignes_note.end(), steak);
    const std::string t = commande::contenu();
    EXPECT_EQ(corps(t).size(), 3000u);
    ASSERT_TRUE(note::ecrit_donnees());
    EXPECT_EQ(texte::lignes(terrain.lis("prov.txt")).size(), 1002u);
}

TEST_F(CommandeTest, LeFichierProvisoire) {
    terrain.pose("prov.txt", std::string(5000, 'x'));
    etat::numero_serveur = 7;
    etat::table_couverts = "#N0714 ";
    etat::texte_table = " 0071";
    note({"un", std::string("é{b}"_t)});
    ASSERT_TRUE(note::ecrit_donnees());
    EXPECT_EQ(terrain.lis("prov.txt"), "#SERV#07\r\n#TABL# 0071\r\nun\r\n" + std::string("é{b}\r\n"_t));
}

}  // namespace
