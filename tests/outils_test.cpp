// The toolbox: its rows and actions, what it writes, how it ends the program; the colour chooser; the technician's
// keys.
#include <cstdlib>
#include <filesystem>

#include "config/ch_outils.h"
#include "config/ggcoul.h"
#include "dialogs/clav_num.h"
#include "dialogs/formes.h"
#include "main_screen/attend_tempo.h"
#include "platform/peinture/placement.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"
#include "scene.h"

namespace {

namespace fs = std::filesystem;
using tests::fois;
using tests::route;
using tests::tient_texte;

const std::string garde = "attend 300 > ", ferme = "g2 0 5";

class Outils : public tests::Scene {
  protected:
    /// Without the code prompt.
    Outils() { static_cast<void>(reglages::ecrit(reglages::sans_mot_de_passe, "OUI")); }
    /// Cases of a row: what it is touched for, and the record that it edits.
    void rangee(int n, int record, const std::vector<tests::Cas>& cas) const {
        for (const tests::Cas& c : cas) {
            const std::string etapes = garde + "g1 " + std::to_string(n) + " 0 > " + c.etapes + " > " + ferme;
            reglent(record, ch_outils::montre_ch_outils, {{c.avant, etapes, c.apres}});
        }
    }
    /// The row closes the files and hands over to another program.
    void passe_la_main(int n, const std::string& question, const std::string& programme) const {
        const std::string touche = garde + "g1 " + std::to_string(n) + " 0 > Label1 = " + question + " > ";
        joue(ch_outils::montre_ch_outils, touche + "Non > verifie ecran ch_outils > " + ferme);
        arrete(ch_outils::montre_ch_outils, touche + "Oui");
        EXPECT_NE(processus::derniere_commande().find(programme), std::string::npos);
        EXPECT_TRUE(reglages::ouvre());
    }
};

TEST_F(Outils, LesRangeesEtLaGarde) {
    joue(ch_outils::montre_ch_outils, R"(
        label_haut = Boite à Outils > label_bas = Manier avec précautions > verifie lignes g1 42 > sans Command111
        g1 0 0 =  Grille générale d'affichage > verifie couleur g1 0 0 FFE0C0 > g1 0 4 = > g1 1 0 =  Nb de colonnes
        g1 1 1 = 12 > g1 1 4 = #SW42#25 > g1 1 5 = Entrez le nb de colonnes > g1 28 1 = > g1 41 4 = #MAJJ#
        # Too early, and on a heading, a touch does nothing.
        g1 1 0 > verifie ecran ch_outils > attend 299 > g1 1 0 > attend 1 > g1 0 0 > verifie ecran ch_outils
        # Ten rows are in view and passed at a time, the last page is full.
        Haut > Nb de colonnes > attend 100 > tape echappement > Bas > Largeur touches familles > attend 100
        tape echappement > Grosseur ecriture Note > attend 100 > tape echappement > Bas > Bas > Bas > Gestion des couleurs
        tape echappement > g2 0 5)");
}

TEST_F(Outils, LesValeurs) {
    const std::string dix_sept = "12345678901234567";
    rangee(
        1, 25,
        {{"#I#12", "attend 100 > Label2 = Entrez le nb de colonnes > Label5 = 12 > C > Valider > g1 1 1 = 1", "#I#1"},
         {"#I#12", "attend 100 > tape 5 > tape echappement > g1 1 1 = 12", "#I#12"},
         {"#I#1", "attend 100 > tape 234567890123456 > tape 7 > Valider > g1 1 1 = " + dix_sept, "#I#" + dix_sept},
         {"#I#12",
          "attend 100 > tape 3456789012345678 > Valider > Label1 = Valeur trop longue (17 caractères au plus), "
          "le réglage reste ce qu'il était ! > btc(5) > g1 1 1 = 12",
          "#I#12"}});
    rangee(
        16, 7,
        {{"#I#2", "attend 100 > Label2 = valeur :  Hauteur touches Serveur > Effacer > Valider > g1 16 1 = ", "#I#"}});
    rangee(9, 20,
           {{"#I#18",
             "attend 100 > Label2 = valeur :  Grosseur ecriture Famille > g3 2 2 = 54 > 34 > Valider > g1 9 1 = 34",
             "#I#34"}});
    rangee(30, 50,
           {{"#I#1",
             "attend 100 > Effacer > tape 4 > Valider > Label1 = Verification Boite de dialogue ! > "
             "verifie police Label1 31 > Fermer > g1 30 1 = 4",
             "#I#4"},
            {"#I#1", "attend 100 > tape 234567890123456789 > Valider > verifie police Label1 24 > Fermer", "#I#1"}});
    rangee(28, 55,
           {{"", "Label1 =  Vérification du N° de table > Oui > g1 28 1 = OUI", "OUI"},
            {"OUI", "Non > g1 28 1 = NON", "NON"},
            {"OUI", "btc(5) > g1 28 1 = NON", "NON"}});
    rangee(35, 201, {{"OUI", "Non", "NON"}});
}

/// However wide the screen, the rows have letters of one size, at which no label is cut; the size asked for where it
/// fits. Two keys change it, within bounds.
TEST_F(Outils, LesRangeesOntUneSeuleTaille) {
    reglent(reglages::police_outils, ch_outils::montre_ch_outils,
            {{"#I#20", "g2 0 3 > verifie police g1 20 > g2 0 4 > verifie police g1 22 > " + ferme, "#I#22"},
             {"#I#22", "g2 0 3 > g2 0 3 > " + ferme, "#I#20"},
             {"#I#58", "g2 0 4 > g2 0 4 > verifie police g1 60 > " + ferme, "#I#60"}});
    const struct {
        int largeur;
        const char* voulue;
        int montree;
    } cas[] = {{1280, "#I#20", 20}, {1280, "#I#60", 48}, {554, "#I#60", 18}};
    for (const auto& c : cas) {
        SCOPED_TRACE(std::to_string(c.largeur) + " " + c.voulue);
        ecran_de(c.largeur, 800);
        static_cast<void>(reglages::ecrit(reglages::police_outils, c.voulue));
        regarde(ch_outils::montre_ch_outils, [&](ecran::Forme& f) {
            for (const ecran::Aspect& a : f("g1").grille.cellules)
                EXPECT_TRUE(a.police == c.montree || a.police == 0) << a.texte;
            EXPECT_EQ(f("g1").grille.cellule(41, 1).police, c.montree);
        });
    }
}

/// Left at either question, or with an empty answer, the program goes on; else it ends, for the next start to read.
TEST_F(Outils, LaResolutionTapeeArreteLeProgramme) {
    constexpr int record = reglages::record_resolution;
    const std::string tape = garde + "g1 33 0 > C > tape 1024 > Valider > ";
    rangee(33, record,
           {{"#I#0:01280:00770",
             "Text1 = 01280 > C > Valider > g1 33 0 > tape 9 > Annuler > g1 33 0 > C > tape 1024 > "
             "Valider > Text1 = 00770 > C > Valider > g1 33 0 > C > tape 1024 > Valider > tape 9 > "
             "Annuler > verifie ecran ch_outils",
             "#I#0:01280:00770"}});
    arrete(ch_outils::montre_ch_outils, tape + "C > tape 768 points > Valider");
    EXPECT_EQ(reglage(record), "#I#0:01024:00768    ");
    static_cast<void>(reglages::ecrit(record, "#I#101024:00768"));
    arrete(ch_outils::montre_ch_outils, garde +
                                            "g1 33 0 > Text1 = 1024: > C > tape 1280 > Valider > Text1 = 0768  > "
                                            "C > tape 800 > Valider");
    EXPECT_EQ(reglage(record), "#I#1001280000800    ");
    // The picture of a format closes the toolbox.
    reglent(record, ch_outils::montre_ch_outils, {{"#I#0:01280:00770", "g2 0 0 > Image1", "#I#0:00554:00770"}});
}

TEST_F(Outils, LaReconnexionEtLaMiseAJourPassentLaMain) {
    passe_la_main(34, "Confirmez la reconnexion de la tablette au réseau serveur ?", "orvapara.exe");
    const std::string question =
        "Confirmez la mise à jour de Win_Orvalune,  le logiciel va être fermé et vous devrez le relancer aprés la mise "
        "à jour ?";
    passe_la_main(41, question, "iexplore.exe https://www.orvalune.example/majwolu.exe");
}

/// What the store cannot take is told.
TEST_F(Outils, UnReglageQuiNeSEcritPas) {
    reglages::ferme();
    fs::remove("wwinqx42.wdo");
    fs::create_directory("wwinqx42.wdo");
    const std::string refus = "Label1 = Le réglage n'a pas pu être enregistré, il reste ce qu'il était ! > btc(5) > ";
    joue(ch_outils::montre_ch_outils, garde + "g1 1 0 > attend 100 > tape 2 > Valider > " + refus +
                                          "g1 1 1 = > g1 35 0 > Oui > " + refus + "g1 35 1 = > " + ferme);
    joue(ggcoul::montre_ggcoul,
         "g1 0 2 > g2 0 5 > Label1 = Les couleurs n'ont pas pu être enregistrées, recommencez ! > btc(5) > g2 0 0 > "
         "Oui > "
         "Label1 = Les couleurs n'ont pas pu être enregistrées, recommencez ! > btc(5) > g2 0 4");
}

/// The code opens the toolbox, nothing else does; the wait for the network, broken off, makes no new attempt.
TEST_F(Outils, LesTouchesDuTechnicien) {
    terrain.regle(200, "");
    const std::string code = "logil > attend 100 > 5 > 8 > 2 > ";
    tient_texte(terrain, route("btx(2) > sans Command2 > " + code + "Valider > label_geste = Mot de passe refusé · > " +
                               code + R"(6 > Valider
        verifie ecran ch_outils > g2 0 5 > reseau absent > logo > tient logoserv 2000 > btc(3) > tient label_haut 2000
        avec Command1 > tient logoserv 2000 > verifie ecran attend_tempo > reseau present > p11 > g2 0 4 = En attente
        reseau absent > tient logoserv 2000 > attend 7000 > reseau present > attend 1000 > g2 0 4 = Envoyer
        Page 1 > Label_num = 1 > Command3 > Label_num = 0 > Command1 > verifie ecran w_prog > Command1
        Command4 > verifie ecran clavv > tape entree > Command5 > verifie ecran eta_com > g2 0 5
        tient label_haut 2000 > sans Command2 > tient logoserv 2000 > btc(3) > tient label_haut 2000
        Command6 > verifie ecran menufor > g2 0 5 > Command7 > verifie ecran sai_menu > label_bas > Non)"));
    tient_texte(terrain, route("btx(2) > verifie ecran Form1 > Command2") + "verifie arret\n", "--service");
    EXPECT_FALSE(terrain.existe("prov.txt"));
}

TEST_F(Outils, LAttenteDuReseauCompteEtSeReferme) {
    joue(attend_tempo::montre_attend_tempo, R"(
        Label1 = Impossible de se connecter au réseau, un nouvel essai sera fait dans         secondes... > Label2 = 5
        Label4 = 5 > sans Label2 > attend 999 > Label4 = 5 > attend 1 > Label4 = 4 > attend 3000 > Label4 = 1 > sans Label3
        attend 1000 > Label2 = 0 > Label4 = - > Label3 = Nouvelle tentative de connexion > avec Label3 > attend 1000
        Label4 = - > attend 1999 > verifie ecran attend_tempo > attend 1)");
    EXPECT_FALSE(attend_tempo::abandon);
    joue(attend_tempo::montre_attend_tempo, "attend 2000 > p11");
    EXPECT_TRUE(attend_tempo::abandon);
}

class Identification : public Outils {
  protected:
    const std::string identifie =
        "g1 39 0 > Label1 = Lancez le routeur Orvalune en mode identification tablette cliquez sur 'OK' > btc(5) > ";
    const std::string fait = "Label1 = Envoi du code d'identification effectué ! > btc(5) > ";
    const std::string echec =
        "Label1 = Le code d'identification n'a pas pu être envoyé, vérifiez le réseau et recommencez ! > btc(5) > ";
    void envoie(const std::string& etapes) const {
        for (const auto& f : terrain.fichiers("reseau", ".txt"))
            fs::remove(terrain.reseau() / f);  // of the same second
        tient_texte(terrain, route("btx(2) > logil > " + garde + etapes));
    }
};

/// The answer is told on whatever screen is open by then, whose own question goes on; and what arrives past the time
/// allowed is told too.
TEST_F(Identification, ElleArriveEtSeDitOuQueLOnSoit) {
    envoie(identifie + fait + "verifie ecran ch_outils");
    const auto fichiers = terrain.fichiers("reseau", ".txt");
    ASSERT_EQ(fichiers.size(), 1U);
    EXPECT_TRUE(fichiers[0].starts_with("00_00_0_19-05-2021-")) << fichiers[0];
    EXPECT_TRUE(terrain.lis("reseau/" + fichiers[0]).starts_with("#ID#"));
    EXPECT_EQ(terrain.lis("reseau/" + fichiers[0]).size(), 16U);

    envoie("reseau absent > " + identifie + echec + "verifie ecran ch_outils");
    const std::string lente = "reseau lent 3000 > " + identifie;
    envoie(lente + "g1 1 0 > attend 4000 > " + fait + "verifie ecran clav_num > Label5 = 12 > Valider > g1 1 1 = 12");
    envoie(lente + "g1 36 0 > attend 4000 > " + fait + "Oui > g1 36 1 = OUI");
    envoie(lente + "g2 0 5 > attend 4000 > " + fait + "verifie ecran Form1");
    envoie("reseau lent 12000 > " + identifie + "attend 10000 > " + echec + "attend 2000 > " + fait +
           "verifie ecran ch_outils");
}

/// On Windows the records go to a fixed directory of drive C: only the emulator's drive is a test's to write to.
class Releve : public Outils {
  protected:
    const fs::path maintenance = fichiers::repertoire_maintenance, fichier = maintenance / "dupm42tab.txt";

    void SetUp() override {
        if (maintenance.is_absolute() && std::getenv("WINEPREFIX") == nullptr)
            GTEST_SKIP() << "not an emulator's drive";
        emporte();
    }
    void TearDown() override { emporte(); }
    void releve(const std::string& suite) const {
        arrete(ch_outils::montre_ch_outils,
               garde + "sans Command111 > tient label_haut 2000 > avec Command111 > Command111" + suite);
        etat::service = false;
    }
    void emporte() const {
        std::error_code ignoree;
        fs::remove(fichier, ignoree);
        fs::remove(maintenance, ignoree);
    }
};

/// One test, since the directory is the same for all that run at a time.
TEST_F(Releve, EcritMilleRecordsOuDitQuIlNePeut) {
    releve("");
    const std::string releve_ecrit = terrain.lis(fs::absolute(fichier).string());
    ASSERT_EQ(releve_ecrit.size(), 1000U * 29U);
    EXPECT_EQ(releve_ecrit.substr(29, 29), "0002 : #I#0:01280:00770    \r\n");
    EXPECT_EQ(releve_ecrit.substr(199 * 29, 29), "0200 : OUI                 \r\n");

    emporte();
    fs::create_directories(fichier);
    releve(" > Label1 = Le relevé des réglages n'a pas pu être écrit, le logiciel s'arrête ! > btc(5)");
    EXPECT_TRUE(fs::is_directory(fichier));
}

class Couleurs : public Outils {
  protected:
    void regle(std::initializer_list<std::pair<int, const char*>> records) const {
        for (const auto& [n, valeur] : records) static_cast<void>(reglages::ecrit(n, valeur));
    }
    void est_regle(std::initializer_list<std::pair<int, const char*>> records) const {
        for (const auto& [n, valeur] : records) EXPECT_EQ(reglages::texte(n), valeur) << n;
    }
};

TEST_F(Couleurs, SeChoisissentEtSeRemettent) {
    regle({{1733, "#I#7"}, {1749, "#I#8"}, {1720, "#I#9"}});
    joue(ggcoul::montre_ggcoul, R"(
        label_haut = Choix des couleurs > verifie couleur btx(1) 1F2A36 > verifie couleur btx(5) 23704F
        verifie couleur btx(8) B95A86 > sans Label5 > btx(2) > g1 0 2 > verifie couleur btx(2) D9782D
        verifie couleur Label2 D9782D > verifie image g1 0 2 101 > sans Label5
        bt_coul(1) > g1 0 0 > Label4 = Contraste 3.14 : 1 > avec Label5
        # Hue and lightness; black, white and grey get a middle colour, so that the hue is seen.
        bt_coul(0) > btx(1) > g1 1 5 > teinte 0 55 > verifie couleur btx(1) 2CD926 > clarte 0 170
        verifie couleur btx(1) F9FEF9 > clarte 0 0 > verifie couleur btx(1) 010501 > teinte 0 0 > verifie couleur btx(1) D93226
        btx(9) > clarte > Annuler)");
    est_regle({{1701, ""}, {1702, ""}, {1712, ""}, {1709, ""}});
    joue(ggcoul::montre_ggcoul, R"(
        verifie couleur btx(1) 1F2A36 > g1 1 5 > btx(2) > g1 0 2 > bt_coul(1) > g1 0 0 > btx(8) > bt_coul(0) > g1 1 0
        btx(9) > g1 0 3 > g2 0 5)");
    est_regle(
        {{1701, "#I#0"}, {1702, "#I#2980057"}, {1712, "#I#16777215"}, {1708, "#I#11039295"}, {1709, "#I#5228272"}});
    joue(ch_outils::montre_ch_outils,
         "verifie couleur label_haut 000000 > verifie couleur g2 0 0 D9782D > verifie couleur g1 1 0 F0C64F > verifie "
         "couleur g1 0 0 FFE0C0 > attend "
         "300 > g1 32 0 > "
         "btx(3) > g1 0 2 > g2 0 5 > g1 1 0 > attend 100 > verifie couleur g3 0 0 D9782D > "
         "verifie couleur g2 0 5 23704F > Valider > g2 0 5");
    joue(ggcoul::montre_ggcoul,
         "g2 0 0 > Non > verifie couleur btx(2) D9782D > g2 0 0 > Oui > verifie couleur btx(2) 1F2A36 > g2 0 5");
    est_regle({{1701, ""},
               {1702, ""},
               {1703, ""},
               {1708, ""},
               {1709, ""},
               {1712, ""},
               {1733, ""},
               {1749, ""},
               {1720, "#I#9"}});
}

/// A text colour that cannot be told from its ground is announced, and the example shows what screens put instead. A
/// contrast just below the one wanted is not written as reached, and warned of: 777777, 5A7D7E, 767676 under white.
TEST_F(Couleurs, LExempleMontreCeQueLesEcransPeignent) {
    regle({{1701, "#I#7829367"}, {1702, "#I#8289626"}, {1703, "#I#7763574"}});
    for (const int n : {1711, 1712, 1713}) regle({{n, "#I#16777215"}});
    joue(ggcoul::montre_ggcoul, R"(
        Label4 = Contraste 4.47 : 1 > avec Label5 > Label5 = Texte peu lisible : il faut au moins 4.5 : 1
        btx(2) > Label4 = Contraste 4.49 : 1 > avec Label5 > btx(3) > Label4 = Contraste 4.54 : 1 > sans Label5
        bt_coul(0) > g1 0 2 > bt_coul(1) > g1 0 2 > verifie image g1 0 2 101 > Label4 = Contraste 1.00 : 1 > avec Label5
        Label5 = Texte illisible : une autre couleur le remplace > g2 0 4)");
}

/// The manager's colours on a key: a text that can be told from its ground is his own, another is replaced by one that
/// can be read.
TEST_F(Couleurs, UneEncreTropProcheDuFondEstRemplacee) {
    constexpr int remplacee = ecran::sans_couleur;
    const struct {
        const char *fond, *encre;  ///< as stored, red in the low byte
        int vu, ecrit;
    } cas[] = {{"#I#3154905", "#I#3154905", 0xD92330, remplacee},
               {"#I#2980057", "#I#16777215", 0xD9782D, 0xFFFFFF},
               {"#I#0", "#I#1052688", 0x000000, remplacee},
               {"#I#16777215", "#I#15790320", 0xFFFFFF, remplacee},
               {"", "#I#16777215", 0xFFFFFF, remplacee},
               {"", "#I#255", 0xFFFFFF, 0xFF0000},
               {"#I#255", "", 0xFF0000, remplacee}};
    for (const auto& c : cas) {
        SCOPED_TRACE(std::string(c.fond) + " " + c.encre);
        regle({{1703, c.fond}, {1713, c.encre}, {1709, c.fond}});
        regarde([] { clav_num::demande("", "Combien ?"); },
                [&](ecran::Forme& f) {
                    const ecran::Aspect& a = f("g3").grille.cellule(0, 0);
                    const ecran::Couleur fond = ecran::fond_montre(a), encre = ecran::encre_montree(a);
                    EXPECT_EQ(fond, c.vu);
                    EXPECT_TRUE(encre == c.ecrit || c.ecrit == remplacee);
                    EXPECT_GE(ecran::contraste(fond, encre), c.ecrit == remplacee ? 4.5 : 2);
                    ecran::Aspect neuf;
                    formes::colore_chiffre(neuf, 9);
                    EXPECT_EQ(neuf.fond, *c.fond ? c.vu : ecran::palette::chiffres[9]);
                });
    }
}

/// Whatever the settings hold, toolbox and colour chooser open, are read and closed, and put all in order again.
TEST_F(Outils, DesReglagesInsenses) {
    for (const char* valeur :
         {"#I#0", "#I#-3", "#I#99999999999", "#I#abc", "#I#", "OUI", "\xFF\xFE\x01 #I#5", "#I#16777215"}) {
        SCOPED_TRACE(valeur);
        for (int n = 3; n <= 62; ++n) static_cast<void>(reglages::ecrit(n, valeur));
        for (int n = 1701; n <= 1749; ++n) static_cast<void>(reglages::ecrit(n, valeur));
        joue(
            ch_outils::montre_ch_outils,
            garde +
                "g2 0 1 > g2 0 3 > g2 0 4 > g2 0 2 > g1 1 0 > attend 100 > Effacer > tape 12 > Valider > g1 1 1 = 12 > "
                "g1 25 0 > attend 100 > 24 > Valider > g1 25 1 = 24 > g1 32 0 > btx(4) > teinte > g2 0 5 > g1 32 0 > "
                "g2 0 0 > Oui > verifie couleur btx(4) FFFFFF > g2 0 5 > " +
                ferme);
    }
}

}  // namespace
