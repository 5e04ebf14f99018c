// The order file byte for byte, its name, and the provisional file. What the screens make of them is in envoi_test.cpp.
#include "data/commande.h"

#include "atelier.h"
#include "main_screen/note.h"
#include "platform/systeme/texte.h"

namespace {

using fichiers::Issue;

const std::string steak = "8880000000024  |DES:Steak|PVE:12.00|FA1:2|FA2:0";

class CommandeTest : public tests::Atelier {
  protected:
    CommandeTest() {
        horloge::rend_virtuelle({2021, 12, 31, 23, 59, 59});
        etat::numero_serveur = 3;
        etat::table_couverts = "#N0124 ";
    }
    ~CommandeTest() override { horloge::rend_reelle(); }
};

TEST_F(CommandeTest, UneCommandeEntiereOctetParOctet) {
    note({steak + "  ##QUA:002.00##{Saignante}{Sans sel}",
          std::string("8880000000574  |DES:Menu|PVE:15.00|FA1:3|FA2:99|"
                      "¤¤8880000000284  xSaladeð5ð1Ð8880000000307  xPâtesð0.125ð1.5Ð ##QUA:002.00##{tue}"_t),
          "8880000000031  |DES:Sans marque", "8880000000031  |DES:Trois ##QUA:003.50##{}{ouverte"});
    EXPECT_EQ(commande::contenu(),
              "#ID#" + commande::identite() +
                  "\r\n#VERSION#2.1\r\n#SERVEUR#03\r\n#TABLE#012\r\n#NBCOUVERT#4 \r\n"
                  "#REF#8880000000024  {2.00}\r\n#COMP#Saignante|Sans sel|\r\n#NOTE#\r\n" +
                  std::string("#REF#8880000000574  {2.00}   + ¤¤999999|ÐÐMENU\r\n"
                              "#COMP#\r\n#NOTE#\r\n"
                              "#REF#8880000000284  {2.00)  ¤¤5.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                              "#REF#8880000000307  {3.00)  ¤¤0.13|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"_t) +
                  "#REF#8880000000031  {1.00}\r\n#COMP#\r\n#NOTE#\r\n"
                  "#REF#8880000000031  {3.50}\r\n#COMP#|ouverte|\r\n#NOTE#\r\n");
    EXPECT_EQ(commande::identite().size(), 10u);
    EXPECT_EQ(commande::identite().find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), std::string::npos);
}

/// The clock is set back after an order has left: the router must not take the next one for it.
TEST_F(CommandeTest, UnNomNEstDonneQuUneFois) {
    for (const char* nom : {"2021-12-31-23-59-59_03_012_004_.-A-", "2022-01-01-00-00-00_03_012_004_.-A-"}) {
        etat::table_couverts = "#N0124 ";
        note({steak});
        ASSERT_EQ(commande::envoi_commande(), Issue::fait);
        EXPECT_TRUE(std::filesystem::remove(nom)) << nom;
        EXPECT_EQ(etat::lignes_note[1] + etat::table_couverts + etat::texte_table, "");
        EXPECT_EQ(etat::numero_serveur, 3) << "the waiter stays";
    }
}

TEST_F(CommandeTest, LaNoteLaPlusLongueEtLeFichierProvisoire) {
    terrain.pose("prov.txt", std::string(5000, 'x'));
    etat::texte_table = " 0071";
    ASSERT_TRUE(note::ecrit_donnees());
    EXPECT_EQ(terrain.lis("prov.txt"), "#SERV#03\r\n#TABL# 0071\r\n") << "a note without lines, over a longer file";
    note({"un", std::string("é{b}"_t)});
    ASSERT_TRUE(note::ecrit_donnees());
    EXPECT_EQ(terrain.lis("prov.txt"), "#SERV#03\r\n#TABL# 0071\r\nun\r\n" + std::string("é{b}\r\n"_t));

    etat::nb_lignes_note = 1003;
    std::fill(etat::lignes_note.begin(), etat::lignes_note.end(), steak);
    EXPECT_EQ(texte::lignes(commande::contenu()).size(), 5 + 3000u);
    ASSERT_TRUE(note::ecrit_donnees());
    EXPECT_EQ(texte::lignes(terrain.lis("prov.txt")).size(), 1002u);
}

}  // namespace
