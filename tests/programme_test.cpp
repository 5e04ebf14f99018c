// The editor of the key program: what it does on the screen, and what it leaves in the file.
#include <array>
#include <random>

#include "rejeux.h"

namespace {

using tests::page1252;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

constexpr std::size_t longueur_record = 256;
constexpr const char* ouvre = "touche \"Sophie\"\ntouche Command1\nverifie ecran w_prog\n";

class Programme : public testing::Test {
  protected:
    Terrain t;
    Programme() { t.restaurant(); }

    std::string record(int page, int ligne) const {
        return t.lis("progppb.wdo")
            .substr(static_cast<std::size_t>(page * 100 + ligne - 1) * longueur_record, longueur_record);
    }
    /// Puts bytes into a record of the file.
    void force(int page, int ligne, std::size_t ou, std::string_view octets) const {
        std::string p = t.lis("progppb.wdo");
        p.replace(static_cast<std::size_t>(page * 100 + ligne - 1) * longueur_record + ou, octets.size(), octets);
        t.pose("progppb.wdo", p);
    }
    static void compare(const std::string& record, std::size_t debut, std::string_view attendu) {
        EXPECT_EQ(record.substr(debut, attendu.size()), attendu) << "offset " << debut;
    }
};

TEST_F(Programme, LesCasesLesLignesEtLesPages) {
    const std::string cachees = std::string(40, '\0') + std::string(37, '\xFF');
    force(0, 13, 57, {"\0b", 2});
    force(0, 13, 77, cachees);
    tient(t, "programme.txt", "--service");
    const std::string attendu = "8880000000048  " + page1252("Café crème") + std::string(30, ' ') + "11" +
                                std::string("\0b", 2) + "    " + "1   " + "4541378   " + cachees +
                                std::string(100, ' ') + "\r\n";
    EXPECT_EQ(record(0, 13), attendu) << "the bytes that the editor does not show stay";
    EXPECT_EQ(record(0, 1), std::string(254, ' ') + "\r\n");
    compare(record(0, 20), 15, "Viandes ");
    compare(record(0, 20), 59, "20  1   " + std::string(10, ' '));
    compare(record(0, 98), 15, "Salle ");
    compare(record(0, 98), 154, "Terrasse ");
    EXPECT_EQ(t.lis("progppb.wdo").size(), 5000 * longueur_record);
}

TEST_F(Programme, UnePageNonModifieeGardeSesOctets) {
    const std::string avant = t.lis("progppb.wdo");
    tient_texte(t, std::string(ouvre) + "touche Command2\ntape \"1\"\ntape entree\ntouche Command1\n", "--service");
    EXPECT_TRUE(t.lis("progppb.wdo") == avant);
}

TEST_F(Programme, LesImagesEtLaMarque) {
    tient(t, "images.txt", "--service");
    compare(record(0, 1), 59, "012N");
    compare(record(0, 5), 59, "    ");
}

/// A key never names one thing and does another; what the manager has typed stays as long as the action does.
TEST_F(Programme, UneAutreActionChangeLaToucheEntiere) {
    const std::string choisit = "touche bt_choix\n";
    tient_texte(t,
                ouvre + ("touche g1 1 6\ntape retour\ntape \"0\"\ntape entree\ntouche g1 1 7\n" + choisit) +
                    "touche \"Articles\"\ntouche \"Viandes\"\ntouche \"Magret de canard\"\n"
                    "verifie g1 1 1 \"8880000000031\"\nverifie g1 1 2 \"Magret de canard\"\nverifie g1 1 5 \"\"\n"
                    "verifie g1 1 8 \"2980057\"\nverifie g1 1 6 \"0\"\nverifie g1 1 3 \"22\"\ntouche g1 1 7\n" +
                    choisit +
                    "touche \"Fonctions\"\ntouche \"Note\"\nverifie g1 1 1 \"\"\nverifie g1 1 2 \"Note\"\n"
                    "verifie g1 1 5 \"022\"\nverifie g1 1 8 \"\"\ntouche g1 1 2\ntape \" de la table\"\ntape entree\n"
                    "touche g1 1 7\n" +
                    choisit + "touche \"Fonctions\"\ntouche \"Note\"\nverifie g1 1 2 \"Note de la table\"\n" +
                    "touche g1 30 2\ntape \"Midi\"\ntape entree\ntouche g1 30 7\n" + choisit +
                    "touche g2 0 0\ntouche \"Entrées\"\nverifie g1 30 2 \"Midi\"\nverifie g1 30 6 \"1\"\nverifie "
                    "g1 30 3 \"22\"\ntouche g1 31 3\ntape \"31\"\ntape entree\ntouche g1 32 7\n" +
                    choisit + "touche \"Menus\"\nverifie g1 32 3 \"22\"\nverifie g1 31 3 \"31\"\n",
                "--service");
}

/// Keys of one kind are made in a row: the chooser opens where the last one was found.
TEST_F(Programme, LeChoixReprendOuIlEnEtait) {
    tient_texte(t,
                std::string(ouvre) +
                    "touche g1 30 7\ntouche bt_choix\ntouche \"Articles\"\ntouche \"Viandes\"\ntouche \"Magret de "
                    "canard\"\ntouche g1 31 7\ntouche bt_choix\nverifie label_haut \"Action de la touche · Viandes\"\n"
                    "touche \"Entrecôte 300 g\"\nverifie g1 31 1 \"8880000000024\"\ntouche g1 32 7\ntouche bt_choix\n"
                    "touche \"Articles\"\ntouche \"Entrées\"\ntouche \"Salade\"\ntouche g1 33 7\ntouche bt_choix\n"
                    "touche \"Pages\"\ntouche \"Fermer\"\ntouche bt_choix\n"
                    "verifie label_haut \"Action de la touche · Pages\"\n",
                "--service");
}

/// Any text of a cell is copied whole, and a reference that was emptied counts as one that was typed.
TEST_F(Programme, LeSigneParagrapheEtUneReferenceVidee) {
    tient_texte(t,
                std::string(ouvre) +
                    "touche Command4\ntouche g1 3 2\nverifie g1 3 2 \"Entrées\"\n"
                    "touche g1 3 2\ntape \" §1§\"\ntape entree\ntouche Command3\ntouche g1 3 2\ntouche Command4\n"
                    "touche g1 40 2\nverifie g1 40 1 \"\"\nverifie g1 40 2 \"Entrées §1§\"\nverifie g1 40 3 \"22\"\n"
                    "verifie g1 40 7 \"#FAMI#01\"\ntouche g1 40 6\ntape retour\ntape \"0\"\ntape entree\n"
                    "touche g1 40 1\ntape entree\nverifie g1 40 1 \"\"\nverifie g1 40 6 \"1\"\n",
                "--service");
}

TEST_F(Programme, LesReglagesBruts) {
    t.regle(300, "garde");
    t.regle(301, "part");
    tient(t, "switch.txt", "--service");
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(299 * 20, 20), "garde               ");
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(300 * 20, 20), "part                ");
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(199 * 20, 20), "OUI                 ");
    EXPECT_EQ(t.lis("wwinqx42.wdo").substr(24 * 20, 20), "#I#12               ") << "refused with Non";
}

TEST_F(Programme, UnAccueilDeSixTouchesAuDoigt) {
    std::string vierge;
    for (int i = 0; i < 5000; ++i) vierge += std::string(254, ' ') + "\r\n";
    t.pose("progppb.wdo", vierge);
    tient(t, "accueil_vierge.txt");
}

/// A record longer than the field of the action is completed from the catalogue when the key is touched.
TEST_F(Programme, UnLongArticleChoisiArriveEntier) {
    const std::string long_menu = "8880000000888  |DES:Menu long|PVE:15.00|FA1:3|FA2:99|" +
                                  page1252(
                                      "¤¤8880000000284  xSalade de tomates du jardinð5ð1Ð8880000000307  "
                                      "xLasagnes de la maisonð0ð2Ð");
    ASSERT_GT(long_menu.size(), 94U);
    t.pose("reseau/worvalune.wdo", t.lis("reseau/worvalune.wdo") + "#ARTI#00009" + long_menu + "\r\n");
    tient_texte(t,
                std::string(ouvre) +
                    "touche g1 25 7\ntouche bt_choix\ntouche \"Articles\"\ntouche \"Menus\"\ntouche \"Menu long\"\n"
                    "touche Command1\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 0\ntouche \"Valider\"\n"
                    "touche \"Menu long\"\ntouche \"Valider\"\ntouche \"Note\"\ntouche \"Envoyer\"\ntouche btc(2)\n"
                    "attend 1500\n",
                "--service");
    const auto commandes = t.fichiers("reseau", ".txt");
    ASSERT_EQ(commandes.size(), 1U);
    EXPECT_NE(t.lis("reseau/" + commandes[0]).find("8880000000307"), std::string::npos);
}

/// What cannot be saved is said, and the way out stays open.
TEST_F(Programme, UnFichierQuiNePeutEtreEcrit) {
    std::filesystem::remove(t.chemin() / "progppb.wdo");
    std::filesystem::create_directory(t.chemin() / "progppb.wdo");
    tient_texte(t,
                "touche btc(5)\n" + std::string(ouvre) +
                    "verifie lignes g1 96\nverifie g1 7 0 \"07\"\ntouche g1 7 2\ntape \"Essai\"\ntape entree\n"
                    "touche Command2\ntape \"1\"\ntape entree\n"
                    "verifie Label1 \"La page n'a pas pu être enregistrée !\"\ntouche btc(5)\n"
                    "verifie Label1 \"0\"\ntouche Command1\nverifie ecran mini_97\ntouche btc(3)\n"
                    "verifie g1 7 2 \"Essai\"\ntouche Command1\ntouche btc(2)\nverifie ecran Form1\n",
                "--service");
}

/// Sizes, files and bytes that nobody wrote: the page shows what can be read, is edited and closed.
TEST_F(Programme, DesFichiersAbimes) {
    std::mt19937 hasard(7);
    const std::string bon = t.lis("progppb.wdo");
    std::string aleatoire(bon.size(), ' ');
    for (char& c : aleatoire) c = static_cast<char>(hasard() & 0xFF);
    for (const std::string& contenu : {bon.substr(0, 251), bon.substr(0, 700), aleatoire, std::string(3000, '\0')}) {
        SCOPED_TRACE(contenu.size());
        t.pose("progppb.wdo", contenu);
        tient_texte(t,
                    std::string(ouvre) +
                        "touche Command5\ntouche g1 40 2\ntouche g1 40 2\ntape \"Essai\"\ntape entree\ntouche "
                        "Command3\ntouche g1 1 1\n"
                        "touche Command4\ntouche g1 2 1\ntouche g1 2 5\ntouche oui\ntouche bt_valide\n"
                        "touche Command2\ntape \"1\"\ntape entree\ntouche Command2\ntape retour\ntape retour\n"
                        "tape \"0\"\ntape entree\nverifie g1 95 0 \"95\"\ntouche Command1\nverifie ecran Form1\n",
                    "--service");
        compare(record(0, 40), 15, "Essai ");
        EXPECT_EQ(record(0, 40).substr(254), "\r\n");
    }
}

TEST_F(Programme, SurUnEcranDebout) {
    t.regle(2, "#I#0:00554:00770");
    tient(t, "images.txt", "--service");
}

}  // namespace
