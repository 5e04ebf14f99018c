// A line of the note on the screens: quantity, remarks, details and courses, correction from the summary, and the bytes
// that are kept of it.
#include "data/complements.h"
#include "data/lignes.h"
#include "data/styles.h"
#include "dialogs/eta_com.h"
#include "dialogs/menufor.h"
#include "dialogs/sai_detail.h"
#include "dialogs/sai_menu.h"
#include "dialogs/sel_arti.h"
#include "platform/systeme/texte.h"
#include "scene.h"

namespace {

using tests::fois;
using tests::page1252;
using tests::Terrain;

const std::string steak = "8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1";
const std::string salade = "8880000000048  |DES:Salade|PVE:7.90|FA1:1|FA2:0";
const std::string composition = "{{Entréeµ8880000000284|Salade de tomates¦" + fois(7, "|¦") + "8880000001090|Buffet¦" +
                                fois(7, "|¦") + "Platµ" + fois(15, "|¦") + "8880000002110|Pâtes {maison}¦µ" +
                                fois(16, "|¦") + "µ1|Steak Frites¦2|Frites¦" + fois(14, "|¦") + "µ" + fois(16, "|¦") +
                                "µ" + fois(16, "|¦") + "}}";
const std::string menu = "8880000000581  |DES:Menu midi|PVE:15.00|FA1:3|FA2:98|";

class Ligne : public tests::Scene {
  protected:
    /// The line of etat::texte_travail is opened as a key or the summary opens it.
    static void ouvre() {
        complements::prend(etat::texte_travail);
        if (lignes::est_menu_a_prix_fixe(etat::texte_travail)) menufor::montre_menufor();
        sel_arti::montre_sel_arti();
    }
    void deviennent(const std::vector<tests::Cas>& cas) const { tiennent(etat::texte_travail, ouvre, cas); }
};

TEST_F(Ligne, LaQuantiteEtLesValidations) {
    const std::string plus = "bt_droi > ", moins = "bt_gauc > ", sel = "g1 1 0 > tape Sans sel > tape entree > ";
    const std::string refus = "Label1 = Une quantité va de 1 à 9999, elle reste ce qu'elle était ! > Fermer > ";
    deviennent(
        {{steak,
          "Label1 = Entrecôte 300 g > Label3 = 24.50  > bt_gauc > Label6 = 1 > " + fois(998, plus) +
              "Label6 = 999 > Label5 = 24475.50  > Valider",
          steak + " ##QUA:999.00##"},
         {steak + " ##QUA:999.00##", plus + "Label6 = 1000 > Label5 = 24500.00  > Valider", steak + " ##QUA:1000.00##"},
         // Fourteen characters of fifteen are cut out.
         {steak + " ##QUA:1000.00##", fois(995, moins) + "Label6 = 5 > " + sel + "Valider",
          steak + " # ##QUA:005.00##{Sans sel}"},
         {steak + " ##QUA:002.00##", "Label6 = 2 > " + plus + sel + "Valider", steak + " ##QUA:003.00##{Sans sel}"},
         // With a remark, one blank more each time.
         {steak + " ##QUA:003.00##{Sans sel}", "Valider", steak + "  ##QUA:003.00##{Sans sel}"},
         // Held, a key goes on, faster and faster; let go before, it is touched once. The number itself opens the
         // keypad.
         {steak,
          "tient bt_droi 499 > Label6 = 2 > tient bt_droi 1000 > Label6 = 5 > tient bt_droi 5000 > Label6 = 75 > "
          "Label5 = 1837.50  > tient bt_gauc 9000 > Label6 = 1 > Label6 > verifie ecran clav_num > attend 100 > "
          "tape 012 > Valider > Label6 = 12 > Label5 = 294.00  > Label6 > attend 100 > tape 1.5 > Valider > " +
              refus + "Label6 > attend 100 > tape 0 > Valider > " + refus +
              "Label6 > attend 100 > tape 10000 > Valider > " + refus +
              "Label6 > attend 100 > Valider > verifie ecran sel_arti > "
              "Label6 > attend 100 > tape 7 > tape echappement > Label6 = 12 > Valider",
          steak + " ##QUA:012.00##"},
         // A held key stops where the keypad does; a touch goes on.
         {steak + " ##QUA:9997.00##",
          "tient bt_droi 9000 > Label6 = 9999 > tient bt_droi 1000 > Label6 = 9999 > bt_droi > Label6 = 10000 > "
          "Label5 = 245000.00  > tient bt_gauc 600 > Label6 = 9999 > Valider",
          steak + " # ##QUA:9999.00##"},
         {steak, "Effacer > Non > Effacer > btc(5) > verifie ecran sel_arti > Effacer > Oui", ""},
         {"8880000000024  |DES:Offert", "Label3 = > Label5 = 0.00  > Valider",
          "8880000000024  |DES:Offert ##QUA:001.00##"}});
}

TEST_F(Ligne, LesRemarquesViennentChangentEtPartent) {
    const auto tape = [](int rang, const std::string& texte) {
        return "g1 " + std::to_string(rang) + " 0 > tape " + texte + " > tape entree\n";
    };
    std::string pleine, gardees;
    for (int r = 1; r <= 20; ++r) pleine += tape(r, "r" + std::to_string(r));
    for (int r = 1; r <= 20; ++r) gardees += r == 3 ? "" : "{r" + std::to_string(r) + "}";
    deviennent(
        {{steak, tape(2, "Bleu") + tape(4, "À point") + tape(5, "{a|b} |DES:x") + tape(20, "fin") + tape(7, "   ") + R"(
                     g1 0 0 = Informations complémentaires > g1 0 0 > g1 1 0 > Text1 = > tape Sans sel > Valider
                     g1 2 0 > Label1 = Voulez vous annuler la ligne  Bleu ? > Non > Label1 = Bleu > Text1 = Bleu
                     tape  froid > Valider > g1 2 0 = Bleu froid > verifie image g1 2 0 110
                     g1 4 0 > Non > tape xyz > Annuler > g1 4 0 = À point
                     g1 1 0 > Oui > g1 1 0 = Bleu froid > g1 2 0 = > g1 3 0 = À point > verifie lignes g1 21
                     g1 6 0 > tape à vider > tape entree > g1 6 0 > Non > C > Valider > g1 6 0 = > Valider)",
          steak + " ##QUA:001.00##{Bleu froid}{À point}{(a/b) /DES:x}{fin}"},
         // A full grid takes no more, until a row is free.
         {steak, pleine + R"(
                     A > Riz > verifie image g1(1) 4 0 0 > Fermer > verifie lignes g1 21 > g1 20 0 = r20 > g1 3 0 > Oui
                     A > Riz > verifie image g1(1) 4 0 101 > Fermer > g1 19 0 = r20 > g1 20 0 = Riz > Valider)",
          steak + " ##QUA:001.00##" + gardees + "{Riz}"}});
}

TEST_F(Ligne, LesDetailsSePrennentEtSeRendent) {
    deviennent({{steak + "{Bien chaud}", R"(
        g2 0 2 = B > Label_detail(1) = Viandes · Garnitures > Label_detail(2) = Menus
        A > label_haut = Saisie d'un détail > label_bas = Win_Orvalune 2.01 > verifie police g1(0) 0 0 20
        g1(0) 0 0 = Viandes > verifie couleur g1(0) 0 0 FD6706 > g1(0) 8 0 = Sauces > g1(1) 0 0 = Garnitures
        Saignante > Sauce Poivre > Frites > verifie image g1(0) 1 0 101 > verifie image g1(0) 2 0 0 > sel_arti.g1 4 0 =
        Saignante > verifie image g1(0) 1 0 0 > verifie image g1(0) 11 0 101 > Saignante > g1(0) 4 0 > g1(1) 14 0
        verifie couleur g2 0 0 ECE7DE > Précédent > g1(0) 0 0 = Viandes > Suivant > verifie couleur g2 0 0 1F2A36 > g1(0) 0 0 = > avec Label_vide(0) > sans Label_vide(1)
        g1(1) 0 0 = Menus > Oeuf Mimosa
        verifie image g1(1) 2 0 101 > g2 0 3 > Suivant > g1(1) 0 0 = > Précédent > Précédent
        verifie image g1(0) 1 0 101 > Fermer > g1 1 0 = Bien chaud > g1 2 0 = Sauce Poivre > g1 5 0 = Oeuf Mimosa
        g1 4 0 > Oui > A > verifie image g1(0) 1 0 0 > Fermer > Valider)",
                 steak + " ##QUA:001.00##{Bien chaud}{Sauce Poivre}{Frites}{Oeuf Mimosa}"}});
    // Each key opens two of the twenty categories; the pages end at the first and the last.
    const std::pair<std::string, int> debuts[] = {
        {"A", 0}, {"B", 2}, {"C", 4}, {"D", 6}, {"D" + fois(9, " > Suivant"), 18}, {"B" + fois(9, " > Précédent"), 0}};
    for (const auto& [touches, debut] : debuts) {
        joue(sel_arti::montre_sel_arti, touches + " > Fermer > Valider");
        EXPECT_EQ(etat::debut_detail, debut) << touches;
    }
}

/// The router's own colours hold, but the text stays readable; a colour beyond three bytes is cut.
TEST_F(Ligne, LesCouleursDuFichierRestentLisibles) {
    using namespace std::string_literals;
    const std::string fichier = terrain.lis("w_styl72.wdo");
    const auto montre = [&](const std::string& texte_fond) {
        const std::string r =
            std::string(15, ' ') + texte::complete("Bleu nuit", 40) + std::string(61, ' ') + texte_fond;
        terrain.pose("w_styl72.wdo", std::string(fichier).replace(21 * 128, r.size(), r));
        std::pair<int, int> couleurs;
        regarde(sai_detail::montre_sai_detail, [&](ecran::Forme& f) {
            const ecran::Aspect& a = f("g1", 0).grille.cellule(2, 0);
            EXPECT_EQ(a.texte, "Bleu nuit");
            couleurs = {a.encre, a.fond};
        });
        return couleurs;
    };
    etat::debut_detail = 0;
    std::string separe(128, ' ');
    separe.replace(120, 4, "\xA0\x20\x30\x00"s);
    terrain.pose("w_styl72.wdo", std::string(fichier).replace(21 * 128, separe.size(), separe));
    joue(sai_detail::montre_sai_detail, "verifie couleur g1(0) 2 0 A02030 > g1(0) 2 0 > Fermer");
    for (const char rien : {' ', '\0'}) {
        terrain.pose("w_styl72.wdo", std::string(fichier).replace(21 * 128, 128, std::string(128, rien)));
        joue(sai_detail::montre_sai_detail, "verifie couleur g1(0) 2 0 ECE7DE > Fermer");
    }
    using Couleurs = std::pair<int, int>;
    EXPECT_EQ(montre("\xA0\x20\x30\x00\xA0\x20\x30\xFF"s), Couleurs(0xFFFFFF, 0xA02030)) << "confused with its ground";
    EXPECT_EQ(montre("\xFF\xFF\x10\x00\xA0\x20\x30\x00"s), Couleurs(0xFFFF10, 0xA02030));
    EXPECT_EQ(montre("\x30\x20\x10\x00\xF0\xF0\x30\x7F"s), Couleurs(0x302010, 0xF0F030));
}

TEST_F(Ligne, UnFichierDeStylesCourtOuAbimeNEstJamaisFatal) {
    const std::string tete = texte::complete("#INIT#", 128), entier = terrain.lis("w_styl72.wdo");
    const std::string initialises[] = {tete, tete.substr(0, 127), tete + std::string(3000, '\xD7'),
                                       tete + std::string(64000, '\0')};
    const std::string autres[] = {"", "#", std::string(64127, '\x93'), std::string(501 * 128, 'x')};
    const auto apres = [&](const std::string& fichier) {
        terrain.pose("w_styl72.wdo", fichier);
        etat::texte_travail = page1252(steak);
        joue(ouvre, "A > g1(0) 1 0 > " + fois(10, "g2 0 1 > g1(1) 14 0 > ") + "g2 0 5 > Valider");
        return terrain.lis("w_styl72.wdo");
    };
    for (const std::string& fichier : initialises) EXPECT_EQ(apres(fichier), fichier);
    for (const std::string& fichier : autres) EXPECT_EQ(apres(fichier), entier) << fichier.size();
    terrain.pose("w_styl72.wdo", std::string(entier).replace(0, 6, "#init#").replace(19 * 128 + 15, 7, "Ailleur"));
    joue(ouvre, "Label_detail(1) = Viandes · Garnitures > A > g1(0) 0 0 = Viandes > Fermer > Valider");
}

TEST_F(Ligne, LesPlatsDUnMenuAPrixFixe) {
    deviennent({{menu + composition, R"(
        label_haut = Menu composé > Label1 = Menu midi > Label2 = Entrée > Label3 = 1 / 3 > verifie police g1 0 0 20
        g1 0 0 = Salade de tomates > Salade de tomates > verifie image g1 0 0 101 > Buffet
        Salade de tomates > verifie image g1 0 0 0 > verifie image g1 0 1 101 > g1 1 0 > Précédent > Label2 = Entrée
        Suivant > Label2 = Plat > Pâtes {maison} > Suivant > Label2 = > Label3 = 3 / 3 > g1 1 0 = Frites
        Steak Frites > verifie image g1 1 0 0 > Suivant > Label3 = 3 / 3 > Précédent > verifie image g1 7 1 101
        Fermer > Label1 = Menu midi > Label5 = 15.00  > g1 2 0 = Pâtes (maison) > Valider)",
                 menu + composition + " ##QUA:001.00##{Buffet}{Pâtes (maison)}{Steak Frites}"},
                {menu + composition, "verifie image g1 0 1 0 > Fermer > g1 1 0 = > Valider",
                 menu + composition + " ##QUA:001.00##"}});
    for (const std::string& abimee : {std::string(), std::string("{{"), std::string("{{}}"),
                                      std::string("{{Entréeµ1|Seule"), composition.substr(0, composition.size() - 2),
                                      "{{Eµ" + fois(17, "1|Plat¦") + "Pµ1|Riz¦}}", "{{" + fois(20000, "µ1|Riz¦") + "}}",
                                      "{{Eµ1|" + std::string(1 << 20, 'x') + "¦}}", "{{" + std::string(1 << 20, 'x')}) {
        etat::texte_travail = page1252(menu + abimee);
        joue(ouvre, "g1 0 0 > g2 0 1 > g1 7 1 > g2 0 5 > Label5 = 15.00  > Valider");
    }
}

TEST_F(Ligne, LEssaiDuMenuComposeFinitLeLogiciel) {
    complements::prend(sai_menu::menu_exemple());
    arrete(sai_menu::montre_sai_menu, R"(
        label_haut = Menu composé > Label1 = DES:Menu 15 Euros > Label2 = Entrée > verifie lignes g1 9
        g1 8 0 = Buffet d'entrées > g1 0 1 = Buffet d'entrées > g1 7 1 = Harengs > g1 8 1 = > g2 0 0 > Label2 = Entrée
        Buffet d'entrées > verifie image g1 8 0 101 > verifie image g1 0 1 101 > g1 0 1 > verifie image g1 8 0 0
        Salade de tomates > g1 8 1 > g2 0 1 > Label2 = > g1 0 0 = Entrecote > g2 0 1 > g1 0 0 = Fromage
        g2 0 1 > g1 0 0 = Verre de rouge > g2 0 1 > g1 0 0 = > g2 0 1 > g2 0 0 > g1 0 0 = Verre de rouge
        g2 0 0 > g2 0 0 > g2 0 0 > verifie image g1 0 0 101 > g2 0 5)");
    EXPECT_EQ(complements::rangs()[0], "Salade de tomates");
}

TEST_F(Ligne, LeRecapitulatifCorrigeUneNote) {
    const std::string magret = "8880000000031  |DES:Magret de canard|PVE:22.00|FA1:2|FA2:0";
    note({page1252(steak + " ##QUA:001.00##{Sans sel}"), magret + " ##QUA:003.00##", salade + " ##QUA:001.00##"});
    etat::table_couverts = "#N0122 ";
    joue(eta_com::montre_eta_com, R"(
        Label4 = 12 > Label5 = 2 > Label6 = 5 > verifie lignes g1 5 > g1 0 0 = Nb > g1 0 1 = Libellé > g1 2 0 = > g1 2 2 = 1
        g1 1 3 = 24.50 > g1 2 3 = > g1 3 3 = 66.00 > Label_total = 98.40
        g1 2 1 =    Sans sel > g1 3 0 = 3 > g1 4 1 = Salade > g1 0 1 > g2 0 2 > g2 0 4
        g1 2 1 > Label1 = Entrecôte 300 g > bt_droi > g1 2 0 > tape Bleu > tape entree > Valider
        verifie lignes g1 6 > g1 1 0 = 2 > g1 3 1 =    Bleu > g1 4 2 = 2 > Label6 = 6 > Label_total = 122.90
        g1 4 0 > Label6 = 3 > Effacer > Oui > label_geste = – Magret de canard > verifie lignes g1 5 > g1 4 1 = Salade > g1 4 2 = 2 > Label6 = 3 > Label_total = 56.90
        attend 1500 > label_geste = > Fermer)");
    EXPECT_EQ(etat::nb_lignes_note, 2);
    EXPECT_EQ(etat::lignes_note[1], page1252(steak + "  ##QUA:002.00##{Sans sel}{Bleu}"));
    EXPECT_EQ(etat::lignes_note[2], salade + " ##QUA:001.00##");
    EXPECT_EQ(etat::lignes_note[3], "");
}

TEST_F(Ligne, LaNotePleine) {
    Terrain t;
    t.restaurant();
    const std::string prend = "btx(5) > g2 0 5 > ", refusee = prend + "Label1 = La note est pleine ! > Fermer > ";
    const std::string mille = "Sophie > Table > g3 0 0 > g1 0 1 > Valider > " + fois(1000, prend) +
                              "label_etat = Sophie · Table 001 · 2 couverts · 1000 lignes · 24500.00 > " +
                              fois(2, refusee) + "Note > ";
    tests::tient_texte(t,
                       tests::route(mille + "verifie lignes g1 1001 > Label6 = 1000 > Label_total = 24500.00 > "
                                            "verifie couleur g2 0 0 1F2A36 > verifie couleur g2 0 1 ECE7DE > g2 0 1 > "
                                            "g1 1000 0 > Effacer > Oui > "
                                            "verifie lignes g1 1000 > "
                                            "verifie couleur g2 0 0 ECE7DE > verifie couleur g2 0 1 1F2A36 > "
                                            "Fermer > btx(5) > bt_droi > g2 0 5 > Note > "
                                            "Label6 = 1001 > Envoyer > Oui > attend 1500"));
    const std::string bloc = "\r\n#COMP#\r\n#NOTE#\r\n";
    EXPECT_EQ(tests::sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_001_002_.txt")),
              "#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#001\r\n#NBCOUVERT#2 \r\n" +
                  fois(999, "#REF#8880000000024  {1.00}" + bloc) + "#REF#8880000000024  {2.00}" + bloc);
}

}  // namespace
