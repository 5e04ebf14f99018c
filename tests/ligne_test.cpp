// A line of the note on the screens: quantity, remarks, correction from the summary, and the bytes that are kept of it.
#include "rejeux.h"

namespace {

using tests::page1252;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

const std::string steak = page1252("8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1");

constexpr const char* debut = "touche \"Sophie\"\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 1\ntouche \"Valider\"\n";
constexpr const char* quitte = "touche \"Quitter\"\ntouche \"Oui\"\nverifie arret\n";
constexpr const char* ouvre_premiere = "touche \"Note\"\ntouche g1 1 0\nverifie ecran sel_arti\n";

std::string fois(int n, const std::string& commandes) {
    std::string r;
    for (int i = 0; i < n; ++i) r += commandes;
    return r;
}

class Ligne : public testing::Test {
  protected:
    Terrain t;
    Ligne() { t.restaurant(); }
    /// What the provisional file keeps of the note.
    std::string gardee() const {
        const std::string p = t.lis("prov.txt"), tete = "#SERV#01\r\n#TABL#1\r\n";
        EXPECT_EQ(p.substr(0, tete.size()), tete);
        return p.substr(std::min(p.size(), tete.size()));
    }
};

TEST_F(Ligne, LaQuantiteJusquAMilleEtRetour) {
    tient_texte(t, std::string(debut) + "touche btx(5)\ntouche bt_gauc\nverifie Label6 \"1\"\n" +
                       "verifie Label5 \"24.50 \"\n" + fois(998, "touche bt_droi\n") +
                       "verifie Label6 \"999\"\nverifie Label5 \"24475.50 \"\ntouche \"Valider\"\n" + quitte);
    EXPECT_EQ(gardee(), steak + " ##QUA:999.00##\r\n");
    tient_texte(t, std::string(debut) + "touche btx(5)\n" + fois(999, "touche bt_droi\n") +
                       "verifie Label6 \"1000\"\nverifie Label5 \"24500.00 \"\ntouche \"Valider\"\n" +
                       "touche \"Note\"\nverifie g1 1 0 \"1000\"\nverifie Label6 \"1000\"\ntouche \"Fermer\"\n" +
                       quitte);
    EXPECT_EQ(gardee(), steak + " ##QUA:1000.00##\r\n");
    tient_texte(t, std::string(debut) + "touche btx(5)\n" + fois(999, "touche bt_droi\n") + "touche \"Valider\"\n" +
                       ouvre_premiere + "verifie Label6 \"1000\"\n" + fois(995, "touche bt_gauc\n") +
                       "verifie Label6 \"5\"\ntouche g1 1 0\ntape \"Sans sel\"\ntape entree\ntouche \"Valider\"\n" +
                       "verifie g1 1 0 \"5\"\ntouche \"Fermer\"\n" + quitte);
    EXPECT_EQ(gardee(), steak + " # ##QUA:005.00##{Sans sel}\r\n") << "fourteen characters of fifteen are cut out";
}

TEST_F(Ligne, ValideePlusieursFois) {
    const std::string deux = std::string(debut) + "touche btx(5)\ntouche bt_droi\ntouche \"Valider\"\n";
    const std::string encore = std::string(ouvre_premiere) + "verifie Label6 \"2\"\ntouche bt_droi\ntouche g1 1 0\n" +
                               "tape \"Sans sel\"\ntape entree\ntouche \"Valider\"\ntouche \"Fermer\"\n";
    const std::string rien = std::string(ouvre_premiere) + "touche \"Valider\"\ntouche \"Fermer\"\n";
    tient_texte(t, deux + quitte);
    EXPECT_EQ(gardee(), steak + " ##QUA:002.00##\r\n");
    tient_texte(t, deux + encore + quitte);
    EXPECT_EQ(gardee(), steak + " ##QUA:003.00##{Sans sel}\r\n");
    tient_texte(t, deux + encore + rien + rien + quitte);
    EXPECT_EQ(gardee(), steak + "   ##QUA:003.00##{Sans sel}\r\n") << "with a remark, one blank more each time";
}

TEST_F(Ligne, LesRemarquesViennentChangentEtPartent) {
    tient(t, "remarques.txt");
    EXPECT_EQ(gardee(), steak + " ##QUA:001.00##" + page1252("{Bleu froid}{À point}{(a/b) /DES:x}{fin}\r\n"));
}

TEST_F(Ligne, LeRecapitulatifCorrigeUneNote) {
    tient(t, "recapitulatif.txt");
    EXPECT_EQ(gardee(), steak + "  ##QUA:002.00##{Sans sel}{Bleu}\r\n" +
                            "8880000000048  |DES:Salade|PVE:7.90|FA1:1|FA2:0 ##QUA:001.00##\r\n");
}

TEST_F(Ligne, LaNotePleine) {
    const std::string mille = std::string(debut) + fois(1000, "touche btx(5)\ntouche g2 0 5\n") +
                              "verifie label_etat \"Sophie · Table 001 · 2 couverts · 1000 lignes · 24500.00\"\n";
    const std::string refusee =
        "touche btx(5)\ntouche g2 0 5\nverifie ecran mini_97\n"
        "verifie Label1 \"La note est pleine !\"\ntouche \"Fermer\"\n";
    tient_texte(t, mille + refusee + refusee + "touche \"Note\"\nverifie lignes g1 1001\nverifie Label6 \"1000\"\n" +
                       "touche \"Fermer\"\n" + quitte);
    EXPECT_EQ(gardee(), fois(1000, steak + " ##QUA:001.00##\r\n"));

    tient_texte(t, mille + refusee + "touche \"Note\"\ntouche g1 1000 0\ntouche \"Effacer\"\ntouche \"Oui\"\n" +
                       "verifie lignes g1 1000\ntouche \"Fermer\"\ntouche btx(5)\ntouche bt_droi\ntouche g2 0 5\n" +
                       "verifie ecran Form1\ntouche \"Note\"\nverifie Label6 \"1001\"\n" +
                       "touche \"Envoyer\"\ntouche \"Oui\"\nattend 1500\nverifie ecran Form1\n");
    const std::string bloc = "\r\n#COMP#\r\n#NOTE#\r\n";
    EXPECT_EQ(tests::sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_001_002_.txt")),
              "#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#001\r\n#NBCOUVERT#2 \r\n" +
                  fois(999, "#REF#8880000000024  {1.00}" + bloc) + "#REF#8880000000024  {2.00}" + bloc);
}

}  // namespace
