// A line of the note on the screens: quantity, remarks, correction from the summary, and the bytes that are kept of it.
#include "rejeux.h"

namespace {

using namespace tests;
using Ligne = Restaurant;

const std::string steak = page1252("8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1");

TEST_F(Ligne, LaQuantiteJusquAMilleEtRetour) {
    tient_texte(t, prend_table_1 + "touche btx(5)\ntouche bt_gauc\nverifie Label6 \"1\"\n" +
                       fois(998, "touche bt_droi\n") +
                       "verifie Label5 \"24475.50 \"\ntouche bt_droi\nverifie Label6 \"1000\"\n"
                       "verifie Label5 \"24500.00 \"\ntouche \"Valider\"\ntouche \"Note\"\nverifie Label6 \"1000\"\n"
                       "touche g1 1 0\nverifie Label6 \"1000\"\n" +
                       fois(995, "touche bt_gauc\n") +
                       "touche g1 1 0\ntape \"Sans sel\"\ntape entree\ntouche \"Valider\"\nverifie g1 1 0 \"5\"\n" +
                       "touche \"Fermer\"\n" + quitte);
    EXPECT_EQ(gardee(), steak + " # ##QUA:005.00##{Sans sel}\r\n") << "fourteen characters of fifteen are cut out";
}

TEST_F(Ligne, ValideePlusieursFois) {
    const std::string rouvre = "touche \"Note\"\ntouche g1 1 0\nverifie Label6 \"3\"\n";
    const std::string ferme = "touche \"Valider\"\ntouche \"Fermer\"\n";
    tient_texte(t, prend_table_1 + "touche btx(5)\ntouche bt_droi\ntouche bt_droi\ntouche \"Valider\"\n" + rouvre +
                       "touche g1 1 0\ntape \"Sans sel\"\ntape entree\n" + ferme + fois(2, rouvre + ferme) + quitte);
    EXPECT_EQ(gardee(), steak + "   ##QUA:003.00##{Sans sel}\r\n") << "with a remark, one blank more each time";
}

TEST_F(Ligne, LesRemarquesViennentChangentEtPartent) {
    tient_texte(t, prend_table_1 + scenario("remarques.txt") + quitte);
    EXPECT_EQ(gardee(), steak + " ##QUA:001.00##" + page1252("{Bleu froid}{À point}{(a/b) /DES:x}{fin}\r\n"));
}

TEST_F(Ligne, LeRecapitulatifCorrigeUneNote) {
    tient_texte(t, prend_table_1 + scenario("recapitulatif.txt") + quitte);
    EXPECT_EQ(gardee(), steak + "  ##QUA:002.00##{Sans sel}{Bleu}\r\n" +
                            "8880000000048  |DES:Salade|PVE:7.90|FA1:1|FA2:0 ##QUA:001.00##\r\n");
}

TEST_F(Ligne, LaNotePleine) {
    const std::string refusee =
        "touche btx(5)\ntouche g2 0 5\nverifie Label1 \"La note est pleine !\"\ntouche \"Fermer\"\n";
    tient_texte(t, prend_table_1 + fois(1000, "touche btx(5)\ntouche g2 0 5\n") +
                       "verifie label_etat \"Sophie · Table 001 · 2 couverts · 1000 lignes · 24500.00\"\n" + refusee +
                       refusee + "touche \"Note\"\nverifie lignes g1 1001\nverifie Label6 \"1000\"\n" +
                       "touche g1 1000 0\ntouche \"Effacer\"\ntouche \"Oui\"\nverifie lignes g1 1000\n" +
                       "touche \"Fermer\"\ntouche btx(5)\ntouche bt_droi\ntouche g2 0 5\nverifie ecran Form1\n" +
                       "touche \"Note\"\nverifie Label6 \"1001\"\ntouche \"Envoyer\"\ntouche \"Oui\"\nattend 1500\n");
    const std::string bloc = "\r\n#COMP#\r\n#NOTE#\r\n";
    EXPECT_EQ(sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_001_002_.txt")),
              "#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#001\r\n#NBCOUVERT#2 \r\n" +
                  fois(999, "#REF#8880000000024  {1.00}" + bloc) + "#REF#8880000000024  {2.00}" + bloc);
}

}  // namespace
