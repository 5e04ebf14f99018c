// The sending of an order: what refuses it, its bytes, its name, and its way over a network that comes and goes.
#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using tests::fois;
using tests::Issue;
using tests::page1252;
using tests::sans_identite;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;
using namespace std::string_literals;

using Noms = std::vector<std::string>;

/// From the home page with a server: the table 012 for four, then the note.
constexpr const char* table_et_note =
    "touche \"Table\"\ntouche g2 0 0\ntouche g3 0 0\ntouche g3 0 1\ntouche g1 1 0\ntouche \"Valider\"\n"
    "touche \"Note\"\n";
constexpr const char* envoie = "touche \"Envoyer\"\ntouche \"Oui\"\n";
constexpr const char* envoyee = "verifie Label1 \"La commande à été envoyée !\"\nattend 1500\nverifie ecran Form1\n";

class Envoi : public testing::Test {
  protected:
    Terrain t;
    Envoi() { t.restaurant(); }
    Noms en_attente() const { return t.fichiers(".", "-A-"); }
    Noms livrees() const { return t.fichiers("reseau", ".txt"); }
};

TEST_F(Envoi, SansTableOuSansCouvertsRienNePart) {
    const std::string table = "touche \"Table\"\n", valide = "touche \"Valider\"\n", note = "touche \"Note\"\n";
    const std::string refus = "touche \"Envoyer\"\nverifie Label1 \"Vous devez préciser un N° de table et un Nb de " +
                              "couverts !\"\ntouche \"Fermer\"\ntouche \"Fermer\"\n"s;
    const std::string sans_couverts = table + "touche g3 0 0\n" + valide + note + refus;
    const std::string zero_couvert = table +
                                     "touche \"Autres\"\nattend 100\ntouche \"0\"\ntouche \".\"\ntouche \"0\"\n" +
                                     valide + valide + note + "verifie Label5 \"0\"\n" + refus;
    const std::string table_zero = table + "touche g2 0 0\ntouche g3 3 1\ntouche g1 0 1\n" + valide + note + refus;
    tient_texte(t, "touche \"Sophie\"\ntouche btx(5)\n" + valide + note + refus + sans_couverts + zero_couvert +
                       table_zero + "verifie label_etat \"Sophie · 2 couverts · 1 ligne · 24.50\"\n" + note +
                       "touche Shape1\ntouche g2 0 0\ntouche g3 0 0\ntouche g1 0 1\n" + valide +
                       "verifie ecran eta_com\nverifie Label4 \"1\"\ntouche \"Envoyer\"\n" +
                       "verifie Label1 \"Confimez l'envoi de la commande au serveur ?\"\ntouche \"Non\"\n" +
                       "verifie ecran eta_com\nheure \"2021-05-19 12:30:00\"\n" + envoie + envoyee +
                       "verifie label_etat \"Sophie · 0 ligne · 0.00\"\n");
    EXPECT_EQ(livrees(), Noms{"2021-05-19-12-30-00_01_001_002_.txt"}) << "the last one, which was complete";
    EXPECT_TRUE(en_attente().empty());
}

TEST_F(Envoi, LesOctetsDeChaqueSorteDeLigne) {
    t.pose("reseau/worvalune.wdo", t.lis("reseau/worvalune.wdo") +
                                       page1252("#ARTI#000078880000000700  |DES:Menu fixe|PVE:18.00|FA1:3|FA2:98|"
                                                "{{Entréeµ8880000000284|Salade¦|¦Platµ8880000000307|Lasagnes¦}}\r\n"));
    tient_texte(t, "touche \"Élodie\"\n"s + table_et_note + "touche \"Fermer\"\n" + tests::scenario("octets.txt") +
                       envoie + envoyee + "verifie label_etat \"Élodie · 0 ligne · 0.00\"\n");
    ASSERT_EQ(livrees(), Noms{"2021-05-19-12-30-00_07_012_004_.txt"});
    EXPECT_EQ(sans_identite(t.lis("reseau/" + livrees()[0])),
              page1252("#VERSION#2.1\r\n#SERVEUR#07\r\n#TABLE#012\r\n#NBCOUVERT#4 \r\n"
                       "#REF#8880000000024  {2.00}\r\n#COMP#Saignante|Sans sel|\r\n#NOTE#\r\n"
                       "#REF#8880000000031  {1.00}\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000000574  {2.00}   + ¤¤999999|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000000284  {2.00)  ¤¤5.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000000307  {4.00)  ¤¤0.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000000700  {1.00}\r\n#COMP#Lasagnes|\r\n#NOTE#\r\n"));
}

/// Table and covers in the name and in the text; a note without lines goes too.
TEST_F(Envoi, LesNomsEtLesCouverts) {
    const auto une = [](const std::string& table, const char* quand) {
        return "touche \"Table\"\nverifie Label5 \"\"\nverifie Label7 \"\"\n" + table + "touche \"Note\"\n" + quand +
               "\n" + envoie + envoyee;
    };
    const std::string inconnue = "touche \"Valider\"\ntouche \"Non\"\n";
    tient_texte(t, "touche \"Élodie\"\n" +
                       une("touche g3 3 1\ntouche g3 3 1\ntouche g3 2 0\ntouche g3 0 0\nverifie Label5 \"0071\"\n"
                           "touche g1 1 0\n" +
                               inconnue,
                           "verifie Label5 \"4\"") +
                       une("touche g3 2 0\ntouche \"Autres\"\nattend 100\ntouche \"1\"\ntouche \"2\"\ntouche \"3\"\n"
                           "touche \"Valider\"\n" +
                               inconnue,
                           "verifie Label5 \"12\"\nheure \"2021-05-19 12:40:00\"") +
                       une("touche \"Liste\"\ntouche \"015\"\ntouche \"10\"\ntouche \"Valider\"\n",
                           "heure \"2021-05-19 12:50:00\"") +
                       une("touche \"999 / 1\"\n" + inconnue, "heure \"2021-12-31 23:59:59\"\nattend 1000"));
    const struct {
        const char *nom, *texte;
    } attendues[] = {{"2021-05-19-12-30-00_07_071_004_.txt", "#TABLE#071\r\n#NBCOUVERT#4 \r\n"},
                     {"2021-05-19-12-40-00_07_007_012_.txt", "#TABLE#007\r\n#NBCOUVERT#12\r\n"},
                     {"2021-05-19-12-50-00_07_015_010_.txt", "#TABLE#015\r\n#NBCOUVERT#10\r\n"},
                     {"2022-01-01-00-00-00_07_999_001_.txt", "#TABLE#999\r\n#NBCOUVERT#1 \r\n"}};
    ASSERT_EQ(livrees().size(), std::size(attendues));
    for (std::size_t i = 0; i < std::size(attendues); ++i) {
        EXPECT_EQ(livrees()[i], attendues[i].nom);
        EXPECT_EQ(sans_identite(t.lis("reseau/" + livrees()[i])),
                  std::string("#VERSION#2.1\r\n#SERVEUR#07\r\n") + attendues[i].texte);
    }
}

/// Away: they wait. Slow: everything answers, and they leave later. Hanging: they wait after two seconds, a copy after
/// ten.
TEST_F(Envoi, LesCommandesAttendentUnReseauAbsentLentOuBloque) {
    t.pose("2021-05-18-11-00-00_02_003_002_.-a-", "veille\r\n");
    const std::string relie = "verifie image g2 0 4 23\n", coupe = "verifie image g2 0 4 30\n",
                      note = "touche \"Note\"\n";
    const std::string une = "verifie Label_attente \"1\"\n", aucune = "verifie visible Label_attente non\n";
    const std::string essaie = "touche \"En attente\"\n", present = "reseau present\n", lente = "reseau lent 500\n";
    const std::string table = "touche g3 0 0\ntouche g1 0 1\ntouche \"Valider\"\n";
    const std::string absent = "touche \"Sophie\"\n" + relie + "verifie g2 0 4 \"Envoyer\"\n" + aucune +
                               "reseau absent\ntouche \"Table\"\n" + table + coupe +
                               "verifie g2 0 4 \"En attente\"\nverifie Label_attente \"0\"\n"
                               "verifie visible Label_attente oui\n" +
                               note + envoie + envoyee + une + essaie + une;
    const std::string lent = lente + essaie + coupe + une + "attend 499\n" + coupe + note + "verifie ecran eta_com\n" +
                             "attend 1\nverifie ecran eta_com\ntouche \"Fermer\"\n" + relie + une +
                             "touche \"Viandes\"\n" + table + "attend 500\nverifie label_haut \"Viandes\"\n" +
                             "touche \"Familles\"\ntouche \"Accueil\"\n" + aucune + "attend 5000\n";
    const std::string bloque = "reseau bloque\n" + note + envoie + envoyee + relie + une +
                               "touche \"Serveurs\"\ntouche \"Marc\"\ntouche \"Envoyer\"\nattend 1999\n" + relie +
                               "attend 1\n" + coupe + une + essaie + essaie + une + present + une + essaie + relie +
                               aucune;
    const std::string copie = "touche \"Table\"\ntouche \"999 / 1\"\ntouche \"Valider\"\ntouche \"Non\"\n" + note +
                              "reseau lent 100\n" + envoie + "attend 1500\nattend 100\nreseau bloque\n" + une + relie +
                              "attend 9999\n" + relie + "attend 1\n" + coupe + essaie + present + essaie + relie +
                              aucune;
    tient_texte(t, absent + lent + bloque + copie);
    EXPECT_TRUE(en_attente().empty());
    EXPECT_TRUE(t.fichiers(".", "-a-").empty());
    EXPECT_EQ(livrees().size(), 4U);
    EXPECT_EQ(t.lis("reseau/2021-05-18-11-00-00_02_003_002_.txt"), "veille\r\n");
    EXPECT_TRUE(t.fichiers("reseau", ".tmp_").empty());
}

TEST_F(Envoi, LInterrupteurCoupeLeReseau) {
    const std::string sonde(54, ' ');
    const std::string logoserv = "touche logoserv\n", non = "touche \"Non\"\n", oui = "touche \"Oui\"\n";
    tient_texte(t, "touche \"Sophie\"\n" + logoserv + "verifie Label1 \"Voulez vous déconnecter le Wifi ?\"\n" + non +
                       "verifie image g2 0 4 23\n" + logoserv + oui + "verifie image g2 0 4 30\n" +
                       "verifie Label_attente \"0\"\nverifie visible Label_attente oui\n" +
                       "heure \"2021-05-20 08:00:00\"\ntouche logo\ntouche \"En attente\"\n" + table_et_note + envoie +
                       envoyee + "verifie Label_attente \"1\"\n" + logoserv +
                       "verifie Label1 \"Voulez vous connecter le Wifi ?\"\n" + non +
                       "verifie image g2 0 4 30\nverifie Label_attente \"1\"\n");
    EXPECT_EQ(t.lis("reseau/Test.res"), "19-05-2021" + sonde) << "not written while the switch is off";
    EXPECT_EQ(en_attente(), Noms{"2021-05-20-08-00-00_01_012_004_.-A-"});
    EXPECT_TRUE(livrees().empty());
    const std::string tout_part = "verifie image g2 0 4 23\nverifie visible Label_attente non\n";
    tient_texte(t,
                "touche \"Sophie\"\n" + tout_part + logoserv + oui + table_et_note + envoie + envoyee +
                    "verifie Label_attente \"1\"\n" + logoserv + oui + tout_part,
                "--horloge \"2021-05-21 08:00:00\"");
    EXPECT_EQ(t.lis("reseau/Test.res"), "21-05-2021" + sonde);
    EXPECT_TRUE(en_attente().empty());
    EXPECT_EQ(livrees(), Noms({"2021-05-20-08-00-00_01_012_004_.txt", "2021-05-21-08-00-00_01_012_004_.txt"}));
}

TEST_F(Envoi, AuReveilLeReseauEstCherchePlusieursFois) {
    const std::string avant = std::string("reseau absent\ntouche \"Sophie\"\n") + table_et_note + envoie + envoyee;
    tient_texte(t, avant + "verifie Label_attente \"1\"\n" + tests::scenario("reveil.txt"));
    tient_texte(t, avant +
                       "reseau lent 800\ntouche \"En attente\"\nverifie visible label_geste oui\nattend 1000\n"
                       "verifie visible label_geste non\n");
    tient_texte(t, avant + "reseau present\nattend 3000\nverifie visible Label_attente non\n");  // nobody touches it
    EXPECT_EQ(livrees().size(), 3U);
    EXPECT_TRUE(en_attente().empty());
}

TEST_F(Envoi, QuitterPropose) {
    const std::string quitter = "touche \"Quitter\"\n", quitte = quitter + "touche \"Oui\"\n";
    const std::string demande =
        "verifie Label1 \"Attention, vous avez 1 Commande(s) en attente, Envoyer maintenant ?\"\n";
    tient_texte(t, "touche \"Élodie\"\nreseau absent\n"s + table_et_note + envoie + envoyee +
                       "touche \"En attente\"\nverifie label_geste \"Réseau absent : 1 en attente ·\"\n" +
                       table_et_note +
                       "touche \"Fermer\"\ntouche btx(5)\ntouche g1 1 0\ntape \"Sans sel\"\ntape entree\n" +
                       "touche \"Valider\"\ntouche \"Viandes\"\ntouche btx(2)\ntouche bt_droi\ntouche \"Valider\"\n" +
                       "touche \"Familles\"\ntouche \"Accueil\"\n" + quitter + demande +
                       "touche \"Non\"\nverifie Label1 \"Confirmez la fermeture de Orvalune ?\"\ntouche \"Non\"\n" +
                       "verifie ecran Form1\n" + quitter + demande + "reseau present\ntouche \"Oui\"\n" +
                       "verifie label_etat \"Élodie · Table 012 · 4 couverts · 2 lignes · 68.50\"\n" +
                       "verifie visible Label_attente non\n" + quitter +
                       "verifie Label1 \"Confirmez la fermeture de Orvalune ?\"\ntouche \"Oui\"\nverifie arret\n");
    EXPECT_EQ(livrees().size(), 1U);
    EXPECT_EQ(t.lis("prov.txt"), page1252("#SERV#07\r\n#TABL#12\r\n"
                                          "8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1 "
                                          "##QUA:001.00##{Sans sel}\r\n"
                                          "8880000000031  |DES:Magret de canard|PVE:22.00|FA1:2|FA2:0|COU:2 "
                                          "##QUA:002.00##\r\n"));
    fs::remove(t.chemin() / "prov.txt");
    fs::create_directory(t.chemin() / "prov.txt");
    tient_texte(t, "touche \"Sophie\"\n" + quitte + "verifie arret\n");
    tient_texte(t,
                "touche \"Sophie\"\ntouche \"Entrecôte\"\ntouche g2 0 5\n"
                "touche \"Envoyer\"\nverifie label_geste \"Note non envoyée : touchez Note ·\"\n" +
                    quitte +
                    "verifie Label1 \"La note n'a pas pu être gardée et sera perdue, fermer quand même ?\"\n"
                    "touche \"Non\"\nverifie ecran Form1\n" +
                    quitte + "touche \"Oui\"\nverifie arret\n");
}

TEST_F(Envoi, LesCommandesDeLaMemeSecondePrennentDesNomsDifferents) {
    fs::create_directory(t.chemin() / "2021-05-19-12-30-01_01_012_004_.-A-");
    const std::string seconde = "heure \"2021-05-19 12:30:00\"\n";
    const auto une = [&](const char* article) {
        return std::string(article) + table_et_note + seconde + envoie + envoyee;
    };
    const std::string trois = "reseau absent\ntouche \"Sophie\"\n" + une("touche btx(5)\ntouche g2 0 5\n") + une("") +
                              une("touche btx(5)\ntouche bt_droi\ntouche g2 0 5\n") + "verifie Label_attente \"3\"\n";
    tient_texte(t, trois + "reseau present\ntouche g2 0 4\nverifie visible Label_attente non\n");
    ASSERT_EQ(livrees(), Noms({"2021-05-19-12-30-00_01_012_004_.txt", "2021-05-19-12-30-02_01_012_004_.txt",
                               "2021-05-19-12-30-03_01_012_004_.txt"}));
    EXPECT_TRUE(t.lis("reseau/" + livrees()[0]).ends_with("{1.00}\r\n#COMP#\r\n#NOTE#\r\n"));
    EXPECT_TRUE(t.lis("reseau/" + livrees()[1]).ends_with("#NBCOUVERT#4 \r\n"));
    EXPECT_TRUE(t.lis("reseau/" + livrees()[2]).ends_with("{2.00}\r\n#COMP#\r\n#NOTE#\r\n"));
}

/// An order never overwrites another that the router has not collected; the others go by. Once that is collected it
/// leaves by itself.
TEST_F(Envoi, UnFichierDeMemeNomNEstJamaisEcrase) {
    const std::string nom = "2021-05-19-12-30-00_01_012_004_.";
    t.pose("reseau/" + nom + "txt", "une autre");
    t.pose("2021-05-19-12-31-00_02_001_001_.-A-", "suivante");
    tient(t, "commande.txt");
    EXPECT_EQ(t.lis("reseau/" + nom + "txt"), "une autre");
    EXPECT_EQ(en_attente(), Noms{nom + "-A-"});
    EXPECT_EQ(t.lis("reseau/2021-05-19-12-31-00_02_001_001_.txt"), "suivante");
    tient_texte(t,
                "touche \"Sophie\"\nverifie image g2 0 4 23\nverifie Label_attente \"1\"\nrouteur collecte\nattend "
                "10\nrouteur dort\n"
                "attend 40000\nverifie visible Label_attente non\n");
    EXPECT_TRUE(en_attente().empty());
    const std::string commande = t.lis("reseau/" + nom + "txt");
    EXPECT_TRUE(commande.ends_with("#COMP#Sans sel|\r\n#NOTE#\r\n"));

    tient(t, "commande.txt");
    EXPECT_EQ(t.lis("reseau/" + nom + "txt"), commande);
    EXPECT_EQ(t.lis("reseau/2021-05-19-12-30-01_01_012_004_.txt"), commande)
        << "the clock was set back: an order of the same bytes is another one";
    t.pose(nom + "-A-", commande);
    tient_texte(t, "touche \"Sophie\"\n");
    EXPECT_TRUE(en_attente().empty()) << "with the same name, too, it is this order, delivered already";
    EXPECT_EQ(livrees().size(), 2U);
}

TEST(EnvoiVers, LeRepertoireSEcritDePlusieursFacons) {
    const std::string nom = "2021-05-19-12-30-00_01_012_004_.txt";
    for (const char* ecrit : {"reseau", "reseau/", "reseau\\", "  reseau\\  ", ".\\reseau", "ailleurs\\carte\\",
                              "ailleurs/carte", "/", "\\", ""}) {
        SCOPED_TRACE(ecrit);
        Terrain t;
        t.restaurant();
        const bool ailleurs = std::string(ecrit).starts_with("ailleurs");
        if (ailleurs) {
            fs::create_directories(t.chemin() / "ailleurs");
            fs::rename(t.reseau(), t.chemin() / "ailleurs" / "carte");
        }
        std::string ligne = ecrit;
        if (ligne == "/" || ligne == "\\" || ligne.empty()) ligne = t.reseau().string() + ligne;
        t.pose("wfichdir.wdo", ligne + "\r\n \r\n");
        tient(t, "commande.txt");
        EXPECT_TRUE(t.existe((ailleurs ? "ailleurs/carte/" : "reseau/") + nom));
        EXPECT_TRUE(t.existe(ailleurs ? "ailleurs/carte/Test.res" : "reseau/Test.res"));
        EXPECT_TRUE(t.fichiers(".", "-A-").empty());
    }
}

TEST_F(Envoi, UnFichierALaPlaceDuRepertoireReseau) {
    t.pose("worvalune.wdo", t.lis("reseau/worvalune.wdo"));
    fs::remove_all(t.reseau());
    t.pose("reseau", "rien");
    tient_texte(t, std::string("touche \"Sophie\"\nverifie image g2 0 4 30\n") + table_et_note + envoie + envoyee +
                       "verifie Label_attente \"1\"\n");
    EXPECT_EQ(en_attente().size(), 1U);
    EXPECT_EQ(t.lis("reseau"), "rien");
}

#ifndef _WIN32
/// On a full disk the waiter is told, and everything stays as it was; a shorter order still fits.
TEST_F(Envoi, SurUnDisquePleinLaNoteReste) {
    tient_texte(t, "verifie ecran Form1\n");  // all the files that a start makes
    const std::string etat = "verifie label_etat \"Sophie · Table 012 · 4 couverts · 60 lignes · 1470.00\"\n";
    const std::string refusee =
        "touche \"Envoyer\"\ntouche \"Oui\"\n"
        "verifie Label1 \"La commande n'a pas pu être écrite, elle reste dans la note !\"\n"
        "touche \"Fermer\"\nverifie ecran eta_com\n";
    const std::string scenario = "touche \"Sophie\"\n" + fois(60, "touche btx(5)\ntouche g2 0 5\n") + table_et_note +
                                 refusee + refusee + "verifie lignes g1 61\nverifie Label4 \"12\"\n" +
                                 "touche \"Fermer\"\n" + etat + "touche \"Note\"\n";
    const Issue pleine = t.joue(scenario, "", "ulimit -f 1; ");
    EXPECT_EQ(pleine.statut, 0) << pleine.erreurs;
    EXPECT_TRUE(en_attente().empty());
    EXPECT_TRUE(livrees().empty());
    EXPECT_TRUE(t.fichiers(".", ".tmp_").empty());

    const Issue courte =
        t.joue(scenario + fois(59, "touche g1 1 0\ntouche \"Effacer\"\ntouche \"Oui\"\n") + envoie + envoyee, "",
               "ulimit -f 1; ");
    EXPECT_EQ(courte.statut, 0) << courte.erreurs;
    EXPECT_EQ(livrees().size(), 1U);
}
#endif

}  // namespace
