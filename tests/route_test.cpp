// The road of an order through the real screens: from the first touch to the file in the network directory.
#include "rejeux.h"

namespace {

using tests::page1252;
using tests::sans_identite;
using tests::Terrain;
using tests::tient;

TEST(Route, UneCommandeArriveDansLeRepertoireReseau) {
    Terrain t;
    t.restaurant();
    tient(t, "commande.txt");
    EXPECT_TRUE(t.fichiers(".", "-A-").empty());
    EXPECT_EQ(sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_012_004_.txt")),
              page1252("#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#012\r\n#NBCOUVERT#4 \r\n"
                       "#REF#8880000000024  {2.00}\r\n#COMP#Sans sel|\r\n#NOTE#\r\n"));
}

TEST(Route, LePremierDemarrageDemandeLeRepertoire) {
    Terrain t;
    tient(t, "premier_demarrage.txt");
    EXPECT_EQ(t.lis("wfichdir.wdo"), "reseau\r\n \r\n \r\n \r\n \r\n \r\n \r\n \r\n \r\n \r\n \r\n \r\n");
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(20, 20), "#I#0:01280:00770    ");
    EXPECT_EQ(t.lis("wwinqx42.wdo").size(), 40000U);
    EXPECT_EQ(t.lis("progppb.wdo").size(), 1280000U);
    EXPECT_EQ(t.lis("w_styl72.wdo").size(), 64128U);
}

TEST(Route, SansRepertoireLeLogicielCherchePuisSArrete) {
    tient(Terrain(), "recherche_du_serveur.txt");
    Terrain t;
    tient(t, "sans_repertoire.txt");
    EXPECT_FALSE(t.existe("wfichdir.wdo"));
}

TEST(Route, LaVirguleEstCorrigeeUneFois) {
    Terrain t;
    t.restaurant();
    tient(t, "separateur.txt", "--separateur ,");
    tient(t, "commande.txt", "--separateur .");
}

TEST(Route, LesPagesSousGroupesEtTouchesInertes) {
    Terrain t;
    t.restaurant();
    tient(t, "navigation.txt");
}

TEST(Route, UneTabletteTourneeResteSousLeDoigt) {
    Terrain t;
    t.restaurant();
    const auto taille = [&t](const char* png) {
        const std::string s = t.lis(png);
        const auto nombre = [&s](std::size_t i) {
            return static_cast<unsigned char>(s[i]) * 256 + static_cast<unsigned char>(s[i + 1]);
        };
        return s.size() < 24 ? std::pair(0, 0) : std::pair(nombre(18), nombre(22));
    };
    tient(t, "rotation.txt");
    EXPECT_EQ(taille("debout_note.png"), std::pair(800, 770))
        << "as high as the format that was chosen, no wider than the screen";
    EXPECT_EQ(taille("tourne_article.png").first, 554) << "the whole of what was open, smaller";
    EXPECT_EQ(taille("debout.png"), std::pair(554, 770));
    EXPECT_EQ(taille("remis.png"), std::pair(1280, 770));
}

TEST(Route, QuitterAvecDesCommandesEnAttente) {
    Terrain t;
    t.restaurant();
    for (const char* nom : {"2021-05-19-11-00-00_01_001_002_.-A-", "2021-05-19-11-05-00_02_003_002_.-A-"}) {
        t.pose(nom, "x\r\n");
    }
    t.pose("worvalune.wdo", t.lis("reseau/worvalune.wdo"));
    std::filesystem::remove_all(t.reseau());
    tient(t, "quitter.txt");
    EXPECT_EQ(t.lis("prov.txt"), "#SERV#01\r\n#TABL#\r\n");
    EXPECT_EQ(t.fichiers(".", "-A-").size(), 2U);
}

}  // namespace
