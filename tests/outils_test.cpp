// The toolbox: its rows and actions, what it writes, how it ends the program, and the screens that follow its settings.
#include <cstdlib>
#include <filesystem>

#include "data/etat.h"
#include "main_screen/attend_tempo.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/fichiers.h"
#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

class Outils : public testing::Test {
  protected:
    Terrain t;
    Outils() { t.restaurant(); }
    /// Without the code prompt, from the home page.
    void sans_mot_de_passe() { t.regle(200, "OUI"); }
    std::string record(int n) { return t.lis("wwinqx42.wdo").substr(static_cast<std::size_t>(n - 1) * 20, 20); }
};

const std::string ouvre = "touche btx(2)\ntouche logil\nverifie ecran ch_outils\nattend 300\n";

TEST_F(Outils, LesRangeesEtLaBarre) {
    tient(t, "outils.txt");
    EXPECT_EQ(record(25), "#I#12               ");
    EXPECT_EQ(record(7), "#I#                 ");
    EXPECT_EQ(record(20), "#I#34               ");
    EXPECT_EQ(record(50), "#I#4                ");
    EXPECT_EQ(record(3), "#I#60               ");
    EXPECT_EQ(record(55), "OUI                 ");
    EXPECT_EQ(record(200), "OUI                 ");
    EXPECT_EQ(record(201), "NON                 ");
    EXPECT_EQ(record(2), "#I#0:00554:00770    ");
}

/// The store keeps 17 characters of a value: what is longer is refused and told, never cut.
TEST_F(Outils, UneValeurTropLongueEstRefusee) {
    sans_mot_de_passe();
    const std::string trop =
        "verifie Label1 \"Valeur trop longue (17 caractères au plus), le réglage reste ce qu'il était !\"\n"
        "touche btc(5)\nverifie ecran ch_outils\n";
    tient_texte(t, ouvre + "touche g1 1 0\nattend 100\ntape \"3456789012345678\"\ntouche \"Valider\"\n" + trop +
                       "verifie g1 1 1 \"12\"\ntouche g1 30 0\nattend 100\ntape \"345678901234567890\"\n"
                       "touche \"Valider\"\n" +
                       trop +
                       "touche g1 1 0\nattend 100\ntape \"345678901234567\"\ntouche \"Valider\"\n"
                       "verifie ecran ch_outils\nverifie g1 1 1 \"12345678901234567\"\n");
    EXPECT_EQ(record(25), "#I#12345678901234567");
    EXPECT_EQ(record(50), "#I#1                ");
}

/// However wide the screen, the rows have letters of one size, at which no label is cut; the size asked for where it
/// fits.
TEST_F(Outils, LesRangeesOntUneSeuleTaille) {
    sans_mot_de_passe();
    const struct {
        const char *resolution, *voulue, *montree;
    } cas[] = {
        {"#I#0:01280:00770", "#I#20", "20"}, {"#I#0:01280:00770", "#I#60", "48"}, {"#I#0:00554:00770", "#I#60", "18"}};
    for (const auto& c : cas) {
        SCOPED_TRACE(std::string(c.resolution) + " " + c.voulue);
        t.regle(2, c.resolution);
        t.regle(3, c.voulue);
        std::string verifie;
        for (int l = 0; l < 42; ++l) {
            for (const char* colonne : {" 0 ", " 1 "}) {
                verifie += "verifie police g1 " + std::to_string(l) + colonne + c.montree + "\n";
            }
        }
        tient_texte(t, ouvre + verifie);
    }
}

TEST_F(Outils, UnMauvaisCodeNOuvrePas) {
    tient_texte(t,
                "touche btx(2)\ntouche logil\nattend 100\ntouche \"5\"\ntouche \"8\"\ntouche \"2\"\ntouche g2 0 5\n"
                "verifie ecran Form1\n");
}

TEST_F(Outils, LaResolutionTapeeArreteLeProgramme) {
    sans_mot_de_passe();
    const std::string efface = "tape retour\ntape retour\ntape retour\ntape retour\ntape retour\n";
    tient_texte(t, ouvre + "touche g1 33 0\nverifie ecran clavv\nverifie Text1 \"01280\"\n" + efface +
                       "tape entree\nverifie ecran ch_outils\ntouche g1 33 0\n" + efface +
                       "tape \"1024\"\ntape entree\nverifie Text1 \"00770\"\n" + efface +
                       "tape entree\nverifie ecran ch_outils\n");
    // Left with "Annuler", at either question: the program goes on, whatever was typed.
    tient_texte(t, ouvre + "touche g1 33 0\n" + efface +
                       "tape \"1024\"\ntouche \"Annuler\"\nverifie ecran ch_outils\ntouche g1 33 0\n" + efface +
                       "tape \"1024\"\ntape entree\ntape \"9\"\ntouche ttoc(57)\nverifie ecran ch_outils\n");
    EXPECT_EQ(record(2), "#I#0:01280:00770    ");
    tient_texte(t, ouvre + "touche g1 33 0\n" + efface + "tape \"1024\"\ntape entree\n" + efface +
                       "tape \"768 points\"\ntape entree\nverifie arret\n");
    EXPECT_EQ(record(2), "#I#0:01024:00768    ");
}

TEST_F(Outils, LaResolutionTapeeSurLaFormeCourte) {
    sans_mot_de_passe();
    t.regle(2, "#I#101024:00768");
    tient_texte(t, ouvre + "touche g1 33 0\nverifie Text1 \"1024:\"\ntouche ttoc(14)\ntape \"1280\"\ntape entree\n" +
                       "verifie Text1 \"0768 \"\ntouche ttoc(14)\ntape \"800\"\ntape entree\nverifie arret\n");
    EXPECT_EQ(record(2), "#I#1001280000800    ");
}

TEST_F(Outils, LaReconnexionEtLaMiseAJourPassentLaMain) {
    sans_mot_de_passe();
    tient_texte(t, ouvre + "touche g1 34 0\ntouche \"Oui\"\nverifie arret\nverifie lance \"orvapara.exe\"\n");
    tient_texte(t, ouvre +
                       "touche g1 41 0\n"
                       "verifie Label1 \"Confirmez la mise à jour de Win_Orvalune,  le logiciel va être fermé et "
                       "vous devrez le relancer aprés la mise à jour ?\"\n"
                       "touche \"Oui\"\nverifie arret\nverifie lance \"iexplore.exe \"\nverifie lance "
                       "\"majwolu.exe\"\n");
}

const std::string identifie =
    "touche g1 39 0\nverifie Label1 \"Lancez le routeur Orvalune en mode identification tablette cliquez sur 'OK'\"\n"
    "touche btc(5)\n";

TEST_F(Outils, LIdentificationArriveDansLeRepertoire) {
    sans_mot_de_passe();
    tient_texte(t, ouvre + identifie +
                       "verifie Label1 \"Envoi du code d'identification effectué !\"\ntouche btc(5)\n"
                       "verifie ecran ch_outils\n");
    const auto fichiers = t.fichiers("reseau", ".txt");
    ASSERT_EQ(fichiers.size(), 1U);
    EXPECT_EQ(fichiers[0].substr(0, 19), "00_00_0_19-05-2021-");
    const std::string contenu = t.lis("reseau/" + fichiers[0]);
    EXPECT_EQ(contenu.size(), 16U);
    EXPECT_EQ(contenu.substr(0, 4), "#ID#");
}

/// The answer is told on whatever screen is open by then, whose own question goes on; and what arrives past the time
/// allowed is told too.
TEST_F(Outils, UneIdentificationTardiveEstDiteOuQueLOnSoit) {
    sans_mot_de_passe();
    const std::string echec = "verifie Label1 \"Le code d'identification n'a pas pu être envoyé !\"\ntouche btc(5)\n";
    const std::string fait = "verifie Label1 \"Envoi du code d'identification effectué !\"\ntouche btc(5)\n";
    const auto joue = [&](const std::string& suite) {
        for (const auto& f : t.fichiers("reseau", ".txt")) std::filesystem::remove(t.reseau() / f);  // same second
        tient_texte(t, ouvre + suite);
    };
    joue("reseau absent\n" + identifie + echec);
    joue("reseau lent 3000\n" + identifie + "verifie ecran ch_outils\ntouche g1 1 0\nattend 4000\n" + fait +
         "verifie ecran clav_num\nverifie Label5 \"12\"\ntouche \"Valider\"\nverifie g1 1 1 \"12\"\n");
    joue("reseau lent 3000\n" + identifie + "touche g1 36 0\nattend 4000\n" + fait +
         "touche \"Oui\"\nverifie g1 36 1 \"OUI\"\n");
    joue("reseau lent 3000\n" + identifie + "touche g2 0 5\nattend 4000\n" + fait + "verifie ecran Form1\n");
    joue("reseau lent 12000\n" + identifie + "attend 10000\n" + echec + "attend 2000\n" + fait +
         "verifie ecran ch_outils\n");
}

/// On Windows the records go to a fixed directory of drive C: only the emulator's drive is a test's to write to.
class Releve : public Outils {
  protected:
    const fs::path maintenance = t.chemin() / fs::path(fichiers::repertoire_maintenance);
    const fs::path fichier = maintenance / "dupm42tab.txt";

    void SetUp() override {
        if (fs::path(fichiers::repertoire_maintenance).is_absolute() && std::getenv("WINEPREFIX") == nullptr)
            GTEST_SKIP() << "not an emulator's drive";
        emporte();
        sans_mot_de_passe();
    }
    void TearDown() override { emporte(); }
    void tient_releve(const std::string& suite) const {
        tient_texte(t, ouvre +
                           "verifie visible Command111 non\ntient label_haut 2000\n"
                           "verifie visible Command111 oui\ntouche Command111\n" +
                           suite);
    }

    void emporte() const {
        std::error_code ignoree;
        fs::remove(fichier, ignoree);
        fs::remove(maintenance, ignoree);
    }
};

/// One test, since the directory is the same for all that run at a time.
TEST_F(Releve, EcritMilleRecordsOuDitQuIlNePeut) {
    tient_releve("verifie arret\n");
    const std::string releve = t.lis(fichier.string());
    ASSERT_EQ(releve.size(), 1000U * 29U);
    EXPECT_EQ(releve.substr(29, 29), "0002 : #I#0:01280:00770    \r\n");
    EXPECT_EQ(releve.substr(199 * 29, 29), "0200 : OUI                 \r\n");

    emporte();
    fs::create_directories(fichier);
    tient_releve("verifie Label1 \"Le relevé des réglages n'a pas pu être écrit !\"\ntouche btc(5)\nverifie arret\n");
    EXPECT_TRUE(fs::is_directory(fichier));
}

TEST_F(Outils, LAttenteDuReseauCompteEtSeReferme) {
    tient(t, "attend_tempo.txt");
}

/// Looks at the box of the wait once it is shown, then closes it.
struct RegardSurLAttente final : ecran::Pilote {
    int largeur, hauteur;  ///< of the screen, pixels
    RegardSurLAttente(int l, int h) : largeur(l), hauteur(h) {}
    ecran::Evenement prochain() override {
        ecran::Forme& f = *ecran::forme_du_dessus();
        EXPECT_EQ(f.nom, "attend_tempo");
        constexpr int px = ecran::twips_par_pixel;
        EXPECT_GE(f.cadre.haut, ecran::hauteur_bandeau) << "the service pictures stay in view";
        EXPECT_LE(f.cadre.bas(), hauteur * px);
        EXPECT_GE(f.cadre.gauche, 0);
        EXPECT_LE(f.cadre.droite(), largeur * px);
        int bas = 0;
        for (const char* nom : {"Label1", "Label4", "Label3", "p11"}) {
            EXPECT_GE(f(nom).cadre.haut, bas) << nom << " lies upon the part above it";
            bas = f(nom).cadre.bas();
        }
        EXPECT_LT(bas, f.cadre.hauteur);
        EXPECT_GE(f("p11").cadre.hauteur, 54 * px) << "a finger would miss it";
        f.ferme();
        return {};
    }
};

TEST(Attente, RienNeSeRecouvreSurUnPetitEcran) {
    const auto largeur = etat::largeur_ecran, hauteur = etat::hauteur_ecran;
    for (const auto& [l, h] : {std::pair(320, 440), {440, 320}, {480, 464}, {800, 480}, {554, 770}, {1280, 770}}) {
        SCOPED_TRACE(std::to_string(l) + " x " + std::to_string(h));
        RegardSurLAttente regard(l, h);
        etat::largeur_ecran = l;
        etat::hauteur_ecran = std::max(h, 440);  // no form is lower, even on a lower screen
        ecran::ouvre_ecran(ecran::cree_fenetre_muette(l, h), &regard);
        attend_tempo::montre_attend_tempo();
        ecran::ferme_ecran();
    }
    etat::largeur_ecran = largeur;
    etat::hauteur_ecran = hauteur;
}

TEST_F(Outils, LesPetitsBoutonsDuTechnicien) {
    tient(t, "petits_boutons.txt", "--service");
    EXPECT_FALSE(t.existe("prov.txt"));
    EXPECT_EQ(t.joue("touche btx(2)\ntouche Command2\n").statut, 2);
}

TEST_F(Outils, LesCouleursSeChoisissentEtSeRemettent) {
    sans_mot_de_passe();
    t.regle(1733, "#I#7");
    t.regle(1749, "#I#8");
    t.regle(1720, "#I#9");
    tient(t, "couleurs.txt");
    EXPECT_EQ(record(1701), "#I#0                ");
    EXPECT_EQ(record(1702), "#I#2980057          ");  // D9782D with red in the low byte
    EXPECT_EQ(record(1712), "#I#16777215         ");
    EXPECT_EQ(record(1708), "#I#11039295         ");
    EXPECT_EQ(record(1703), std::string(20, ' '));
    tient_texte(t, ouvre +
                       "touche g1 32 0\ntouche \"Par défaut\"\ntouche \"Non\"\nverifie couleur btx(2) D9782D\n"
                       "touche \"Par défaut\"\ntouche \"Oui\"\nverifie couleur btx(2) 1F2A36\n"
                       "touche \"Valider\"\ntouche g2 0 5\nverifie couleur label_haut 1F2A36\n"
                       "verifie couleur g2 0 0 1F2A36\n");
    for (const int n : {1701, 1702, 1708, 1712, 1733, 1749}) EXPECT_EQ(record(n), std::string(20, ' ')) << n;
    EXPECT_EQ(record(1720), "#I#9                ");
}

/// A text colour that cannot be told from its ground is announced, and the example shows what screens put instead. A
/// contrast just below the one wanted is not written as reached, and warned of.
TEST_F(Outils, LExempleMontreCeQueLesEcransPeignent) {
    sans_mot_de_passe();
    t.regle(1701, "#I#7829367");   // 777777
    t.regle(1711, "#I#16777215");  // 4.478 : 1
    t.regle(1702, "#I#8289626");   // 5A7D7E: 4.497 : 1
    t.regle(1712, "#I#16777215");
    t.regle(1703, "#I#7763574");  // 767676: 4.542 : 1
    t.regle(1713, "#I#16777215");
    tient_texte(t, ouvre +
                       "touche g1 32 0\nverifie Label4 \"Contraste 4.47 : 1\"\nverifie visible Label5 oui\n"
                       "verifie Label5 \"Texte peu lisible : il faut au moins 4.5 : 1\"\ntouche btx(2)\n"
                       "verifie Label4 \"Contraste 4.49 : 1\"\nverifie visible Label5 oui\ntouche btx(3)\n"
                       "verifie Label4 \"Contraste 4.54 : 1\"\nverifie visible Label5 non\ntouche bt_coul(0)\n"
                       "touche g1 0 2\ntouche bt_coul(1)\ntouche g1 0 2\nverifie image g1 0 2 101\n"
                       "verifie Label4 \"Contraste 1.00 : 1\"\nverifie visible Label5 oui\n"
                       "verifie Label5 \"Texte illisible : une autre couleur le remplace\"\n");
}

/// Whatever the colour records hold, the chooser opens and puts all in order again.
TEST_F(Outils, DesCouleursInsensees) {
    for (const char* valeur : {"#I#0", "#I#-5", "#I#99999999999", "#I#rouge", "#I#16777215", "OUI"}) {
        SCOPED_TRACE(valeur);
        for (int n = 1701; n <= 1749; ++n) t.regle(n, valeur);
        sans_mot_de_passe();
        tient_texte(t, ouvre +
                           "touche g1 32 0\ntouche btx(4)\ntouche teinte\ntouche \"Valider\"\ntouche g1 32 0\n"
                           "touche \"Par défaut\"\ntouche \"Oui\"\nverifie couleur btx(4) FFFFFF\n");
    }
}

}  // namespace
