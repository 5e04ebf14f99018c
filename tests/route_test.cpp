// The road of an order through the real screens: from the first touch to the file in the network directory.
#include "rejeux.h"

namespace {

using namespace tests;
using Route = Restaurant;

TEST_F(Route, UneCommandeArriveDansLeRepertoireReseau) {
    tient(t, "commande.txt");
    EXPECT_TRUE(t.fichiers(".", "-A-").empty());
    EXPECT_EQ(sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_012_004_.txt")),
              page1252("#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#012\r\n#NBCOUVERT#4 \r\n"
                       "#REF#8880000000024  {2.00}\r\n#COMP#Sans sel|\r\n#NOTE#\r\n"));
}

TEST(PremierDepart, DemandeLeFormatPuisLeRepertoire) {
    Terrain t;
    tient(t, "premier_demarrage.txt");
    EXPECT_EQ(t.lis("wfichdir.wdo"), "reseau\r\n" + fois(11, " \r\n"));
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(20, 20), "#I#0:01280:00770    ");
    EXPECT_EQ(t.lis("wwinqx42.wdo").size(), 40000U);
    EXPECT_EQ(t.lis("progppb.wdo").size(), 1280000U);
    EXPECT_EQ(t.lis("w_styl72.wdo").size(), 64128U);
}

TEST(PremierDepart, SansRepertoireLeLogicielCherchePuisSArrete) {
    tient_texte(Terrain(), "touche Image2\ntouche \"Oui\"\nverifie arret\nverifie lance \"orvapara.exe\"\n");
    for (const std::string rien : {"", "tape \"  \"\n"}) {
        Terrain t;
        tient_texte(t, "touche Image2\ntouche \"Non\"\n" + rien +
                           "touche \"Valider\"\nverifie Label1 \"Aucun répertoire réseau n'a été donné, le logiciel "
                           "s'arrête : relancez-le pour l'entrer !\"\ntouche \"Fermer\"\nverifie arret\n");
        EXPECT_FALSE(t.existe("wfichdir.wdo"));
    }
}

TEST_F(Route, LaVirguleEstCorrigeeEtLeLogicielSArrete) {
    t.regle(2, "#I#0:00900:00600");
    tient_texte(
        t,
        "verifie separateur \".\"\ncapture virgule.png\nverifie Label1 \"Le logiciel a configuré le point comme "
        "séparateur décimal "
        "(obligatoire), relancez votre logiciel !\"\ntouche \"Fermer\"\nverifie arret\nverifie separateur \".\"\n",
        "--separateur ,");
    EXPECT_EQ(taille_png(t.lis("virgule.png")), std::pair(900, 600)) << "in the middle of the form as it is set";
}

TEST_F(Route, LesPagesSousGroupesEtOutils) {
    tient(t, "navigation.txt");
    tient(t, "cherche.txt");
}

TEST_F(Route, UneTabletteTourneeResteSousLeDoigt) {
    tient(t, "rotation.txt");
    EXPECT_EQ(taille_png(t.lis("debout_note.png")), std::pair(800, 770))
        << "as high as the format that was chosen, no wider than the screen";
    EXPECT_EQ(taille_png(t.lis("tourne_article.png")).first, 554) << "the whole of what was open, smaller";
    EXPECT_EQ(taille_png(t.lis("debout.png")), std::pair(554, 770));
    EXPECT_EQ(taille_png(t.lis("remis.png")), std::pair(1280, 770));
}

/// The network is there, and yet an order waits: another of its name has not been collected.
TEST_F(Route, LaToucheDEnvoiCompteCeQuiAttend) {
    t.pose("a_.-A-", "une");
    t.pose("reseau/a_.txt", "autre");
    tient_texte(t,
                "touche \"Sophie\"\nverifie image g2 0 4 23\nverifie visible Label_attente oui\n"
                "verifie Label_attente \"1\"\ntouche \"Serveurs\"\nverifie visible Label_attente non\n");
}

}  // namespace
