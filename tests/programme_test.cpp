// The editor of the key program: what it does on the screen, and what it leaves in the file.

#include "config/w_prog.h"
#include "scene.h"

namespace {

using tests::page1252;
using tests::route;
using tests::tient_texte;

constexpr std::size_t longueur_record = 256;

class Programme : public tests::Scene {
  protected:
    Programme() { etat::page_programme = 0; }
    /// Opens the file as it is now, and plays a route that closes the editor.
    void edite(const std::string& etapes) const {
        programme_touches::ferme();
        static_cast<void>(programme_touches::prepare());
        joue(w_prog::montre_w_prog, etapes);
    }
    std::string record(int page, int ligne) const {
        return terrain.lis("progppb.wdo")
            .substr(static_cast<std::size_t>(page * 100 + ligne - 1) * longueur_record, longueur_record);
    }
    void compare(int page, int ligne, std::size_t debut, const std::string& attendu) const {
        EXPECT_EQ(record(page, ligne).substr(debut, attendu.size()), attendu) << ligne << ", offset " << debut;
    }
};

TEST_F(Programme, LesCasesEtLesLignes) {
    const std::string cachees = std::string(40, '\0') + std::string(37, '\xFF');
    std::string fichier = terrain.lis("progppb.wdo");
    fichier.replace(12 * longueur_record + 57, 2, "\0b", 2).replace(12 * longueur_record + 77, cachees.size(), cachees);
    terrain.pose("progppb.wdo", fichier);
    edite(R"(
        Label1 = 0 > verifie lignes g1 96 > g1 0 2 = Libellé > g1 1 0 = 01 > g1 95 0 = 95 > g1 1 7 = #FAMI#02
        verifie couleur g1 1 8 C24B45 > verifie image g1 1 5 20 > g1 14 0 > g1 0 1 > verifie ecran w_prog
        # A reference makes the key visible; LH changes only when it is blank.
        g1 13 1 > Label1 = Modification > tape 8880000000048 > btc(2) > g1 13 6 = 1 > g1 13 3 = 11
        g1 14 3 > tape 05 > tape entree > g1 14 1 > tape X > tape entree > g1 14 3 = 05
        # Left, nothing changes; an empty text empties the cell, a long one is cut.
        g1 14 1 > tape Y > btc(5) > g1 14 1 = X
        g1 14 3 > tape retour > tape retour > tape entree > g1 14 3 = > g1 14 3 > tape  42 3 > tape entree > g1 14 3 = 42
        g1 13 2 > Text1 > tape Café crème > Valider > btc(2)
        # Copied, pasted over, cut; an operation is done once, and can be left.
        Command3 > Label4 = COPIER > verifie couleur Shape4 D98E04 > g1 13 2 > Label4 = > verifie couleur Shape4 FFFFFF
        Command4 > g1 3 4 > g1 3 0 = 03 > g1 3 1 = 8880000000048 > g1 3 2 = Café crème > g1 3 7 = > g1 3 6 = 1
        Command5 > Label4 = COUPER > g1 1 5 > g1 1 0 = 01 > g1 1 2 = > g1 1 7 = > verifie image g1 1 5 0
        Command4 > Label4 = COLLER > g1 20 1 > g1 20 2 = Viandes > verifie couleur g1 20 8 C24B45 > verifie image g1 20 5 20
        Command3 > Label4 > Label4 = > verifie ecran w_prog
        # A colour is typed or chosen, a picture chosen.
        g1 13 8 > tape 12800 > tape entree > verifie couleur g1 13 8 003200 > g1 13 8 > bt_choix > Rouge
        g1 20 8 > bt_choix > Fermer > bt_choix > Aucune > g1 20 8 = > g1 13 8 = 4541378
        g1 5 5 > g3 12 1 > oui > bt_valide > g1 5 5 = 012N > verifie image g1 5 5 12 > Command1)");
    EXPECT_EQ(record(0, 13), "8880000000048  " + page1252("Café crème") + std::string(30, ' ') + "11" +
                                 std::string("\0b", 2) + "    1   4541378   " + cachees + std::string(100, ' ') +
                                 "\r\n")
        << "the bytes that the editor does not show stay";
    EXPECT_EQ(record(0, 1), std::string(254, ' ') + "\r\n");
    compare(0, 20, 15, "Viandes ");
    compare(0, 20, 59, "20  1   " + std::string(10, ' '));
    compare(0, 5, 59, "012N");
    EXPECT_EQ(terrain.lis("progppb.wdo").size(), 5000 * longueur_record);
}

TEST_F(Programme, LesPagesEtLeursTitres) {
    const std::string avant = terrain.lis("progppb.wdo");
    edite(R"(
        Command2 > Text1 = 0 > tape retour > btc(2) > Label1 = 0
        Command2 > tape 1 > tape entree > Label1 = 1 > g1 1 2 = Accueil > Command1)");
    EXPECT_TRUE(terrain.lis("progppb.wdo") == avant) << "what was not changed is not written";
    edite(R"(
        Label1 = 1 > Command2 > tape retour > tape toto > tape entree > Label1 = 0
        Text1 > tape Salle > tape entree > Text2 > tape Terrasse > tape entree > Text2 > tape x > Annuler
        Command2 > tape retour > tape 99 > tape entree > Label1 = 49 > Text2 = > Text1 = > verifie ecran w_prog
        Command2 > Label2 = KMZ > Text1 = 49 > tape echappement > Command1)");
    EXPECT_EQ(etat::page_programme, 49);
    etat::page_programme = -3;
    edite("Label1 = 0 > Text1 = Salle > Text2 = Terrasse > tape echappement");
    compare(0, 98, 15, "Salle ");
    compare(0, 98, 154, "Terrasse ");
}

/// A key never names one thing and does another; what the manager has typed stays as long as the action does. Keys of
/// one kind are made in a row: the chooser opens where the last one was found.
TEST_F(Programme, UneAutreActionChangeLaToucheEntiere) {
    edite(R"(
        g1 1 6 > tape retour > tape 0 > tape entree > g1 1 7 > bt_choix > Articles > Viandes > Magret de canard
        g1 1 1 = 8880000000031 > g1 1 2 = Magret de canard > g1 1 5 = > g1 1 8 = 2980057 > g1 1 6 = 0 > g1 1 3 = 22
        g1 31 7 > bt_choix > label_haut = Action de la touche · Viandes > Entrecôte 300 g > g1 31 1 = 8880000000024
        g1 1 7 > bt_choix > Fonctions > Note > g1 1 1 = > g1 1 2 = Note > g1 1 5 = 022 > g1 1 8 = > g1 1 7 = #FONC#NOTE
        g1 1 2 > tape  de la table > tape entree
        g1 1 7 > bt_choix > label_haut = Action de la touche · Fonctions > Note > g1 1 2 = Note de la table
        g1 30 2 > tape Midi > tape entree > g1 30 7 > bt_choix > g2 0 0 > Entrées
        g1 30 2 = Midi > g1 30 6 = 1 > g1 30 3 = 22 > g1 30 7 = #FAMI#01
        g1 33 3 > tape 31 > tape entree > g1 34 7 > bt_choix > Menus > g1 34 3 = 22
        g1 35 7 > bt_choix > Bières pression > g1 35 7 = #FAMI#35 > g1 36 7 > bt_choix > Articles > Sous-groupes
        Bières pression > Demi > g1 36 1 = 8880000000611
        g1 37 7 > bt_choix > Pages > Fermer > bt_choix > label_haut = Action de la touche · Pages > Page 1
        g1 37 7 = #PAGE#1 > Command1)");
}

/// Any text of a cell is copied whole, from one opening to the next, and a reference that was emptied counts as typed.
TEST_F(Programme, LeSigneParagrapheEtUneReferenceVidee) {
    edite("g1 3 2 > tape  §1§ > tape entree > Command3 > g1 3 2 > Command1");
    edite(R"(
        Command4 > g1 40 2 > g1 40 1 = > g1 40 2 = Entrées §1§ > g1 40 3 = 22 > g1 40 7 = #FAMI#01
        g1 40 6 > tape retour > tape 0 > tape entree > g1 40 1 > tape entree > g1 40 1 = > g1 40 6 = 1 > Command1)");
}

/// The raw editor of any settings record: an empty answer changes nothing, one of blanks neither; nothing is cut.
TEST_F(Programme, LesReglagesBruts) {
    const auto tape = [](const std::string& numero, const std::string& valeur) {
        return "Command6 > Label1 = Entrez le numero de switch ? > tape " + numero +
               " > btc(2) > Label1 = Valeur du switch N° " + numero + " ? > Text1 > C > tape " + valeur +
               " > Valider > ";
    };
    for (const int n : {300, 301}) static_cast<void>(reglages::ecrit(n, "garde"));
    edite(
        tape("200", "OUI") + "btc(2) > " + tape("25", "9") + "btc(3) > " + tape("300", "x") + "btc(5) > " +
        tape("301", "  ") + "btc(2) > " + tape("300", "123456789012345678901") +
        "btc(2) > Label1 = Valeur trop longue (20 caractères au plus), le réglage reste ce qu'il était ! > btc(5) > " +
        tape("0", "x") +
        "btc(2) > Label1 = Le réglage n'a pas pu être enregistré, il reste ce qu'il était ! > btc(5) > Command6 > "
        "btc(5) > "
        "Command6 > tape entree > btc(2) > Command6 > tape 202 > btc(2) > tape retour > tape x > btc(2) > Command1");
    const std::pair<int, const char*> attendus[] = {
        {200, "OUI"}, {25, "#I#12"}, {300, "garde"}, {301, "garde"}, {202, "x"}};
    for (const auto& [n, valeur] : attendus) EXPECT_EQ(reglages::texte(n), valeur) << n;
}

/// From a blank key program to a home page of six keys, by touches alone.
TEST_F(Programme, UnAccueilDeSixTouchesAuDoigt) {
    terrain.pose("progppb.wdo", "");
    tient_texte(terrain, route(R"(
        Sophie > sans btx(1) > tient label_haut 2000 > Command1
        g1 1 7 > bt_choix > Entrées > g1 1 3 = 11 > g1 2 7 > bt_choix > Bières pression
        g1 3 7 > bt_choix > Articles > Viandes > Entrecôte 300 g
        g1 4 7 > bt_choix > Articles > Sous-groupes > Bières pression > Demi
        g1 5 7 > bt_choix > Pages > Page 1 > g1 6 7 > bt_choix > Fonctions > Note
        Fermer > btx(1) = Entrées > verifie couleur btx(3) C24B45 > verifie image btt(6) 22
        Table > g3 0 0 > g1 0 1 > Valider > Entrecôte 300 g > Label1 = Entrecôte 300 g > Valider
        Demi > Label1 = Demi > Valider > Bières pression > btx(1) = Demi > Familles > Accueil
        Page 1 > Label_num = 1 > Familles > Accueil > btx(6) > verifie ecran eta_com > g2 0 5
        Entrées > btx(1) = Salade)"));
}

/// A record longer than the field of the action is completed from the catalogue when the key is touched.
TEST_F(Programme, UnLongArticleChoisiArriveEntier) {
    terrain.pose(
        "reseau/worvalune.wdo",
        terrain.lis("worvalune.wdo") + page1252("#ARTI#000098880000000888  |DES:Menu long|PVE:15.00|FA1:3|FA2:99|"
                                                "¤¤8880000000284  xSalade de tomates du jardinð5ð1Ð8880000000307  "
                                                "xLasagnes de la maisonð0ð2Ð\r\n"));
    tient_texte(terrain, route(R"(
        Sophie > Command1 > g1 25 7 > bt_choix > Articles > Menus > Menu long > Command1
        Table > g3 0 0 > g1 0 0 > Valider > Menu long > Valider > Note > Envoyer > btc(2) > attend 1500)"),
                "--service");
    EXPECT_NE(terrain.lis("reseau/2021-05-19-12-30-00_01_001_001_.txt").find("8880000000307"), std::string::npos);
}

/// What cannot be saved is said, and the way out stays open.
TEST_F(Programme, UnFichierQuiNePeutEtreEcrit) {
    programme_touches::ferme();
    std::filesystem::remove("progppb.wdo");
    std::filesystem::create_directory("progppb.wdo");
    const std::string refus = "La page n'a pas pu être enregistrée";
    for (const char* change : {"g1 7 2 > tape Essai > tape entree > ", "Text1 > tape Essai > tape entree > "}) {
        edite("verifie lignes g1 96 > g1 7 0 = 07 > " + std::string(change) +
              "Command2 > tape 1 > tape entree > Label1 = " + refus +
              ", recommencez ! > btc(5) > Label1 = 0 > Command1 > Label1 = " + refus +
              " et ses changements seront perdus, fermer quand même ? > btc(3) > Command1 > btc(2)");
    }
}

/// On a narrow screen the long columns take small letters, and all can be touched.
TEST_F(Programme, SurUnEcranDebout) {
    ecran_de(554, 800);
    edite(R"(
        verifie police g1 1 7 8 > verifie police g1 1 8 8 > verifie police g1 5 1 11
        g1 1 5 > Label2 = 20 > g3 12 1 > oui > bt_valide > g1 1 5 = 012N > g1 1 8 > bt_choix > Rouge
        g1 1 7 > bt_choix > Fonctions > Quitter > g1 1 2 = Quitter > Command1)");
}

}  // namespace
