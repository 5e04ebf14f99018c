// The dialogs through which all others ask: message box, keyboards, table and covers, pictures, screen format. Each is
// opened as its callers do, and what it gives back is compared.
#include "config/lis_bout.h"
#include "config/porpay.h"
#include "data/catalogue.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/clav_num.h"
#include "dialogs/clavv.h"
#include "dialogs/mini_97.h"
#include "dialogs/saisie.h"
#include "scene.h"

namespace {

using tests::fois;
using tests::Terrain;

class Dialogues : public tests::Scene {
  protected:
    void carte(const std::string& lignes) const {
        terrain.pose("worvalune.wdo", lignes);
        catalogue::charge_catalogue();
    }
};

TEST_F(Dialogues, LaBoiteMontreSesTouchesEtRendSaReponse) {
    constexpr std::int32_t libre = etat::saisie;
    const struct {
        std::int32_t demande, rendu;
        tests::Cas cas;
    } cas[] = {
        {0, 0, {"Fini !", "Label1 = Fini ! > sans btc(2) > sans btc(3) > sans Text1 > btc(5)", ""}},
        {etat::oui_non, etat::oui, {"Encore ?", "sans Text1 > tape n > tape retour > tape entree > Oui", ""}},
        {etat::oui_non, etat::non, {"Encore ?", "Non", ""}},
        {etat::oui_non, etat::oui_non, {"Encore ?", "Fermer", ""}},
        {libre, etat::oui, {"Nom ?|  ab ", "Label1 = Nom ? > Text1 =   ab  > tape c > btc(2)", "ab c"}},
        {libre, etat::non, {"Nom ?|ab", "tape retour > tape retour > tape retour > tape  x > btc(3)", "x"}},
        {libre, libre, {"Nom ?|ab", "tape c > btc(5)", ""}},
        {libre, etat::oui, {"Nom ?", "tape a\tb > tape entree > tape c > Text1 = a b c > btc(2)", "a b c"}},
        {libre, etat::oui, {"Nom ?|ab", "Text1 > Label1 = Nom ? > tape  c > Valider > tape d > btc(2)", "ab cd"}},
        {etat::saisie_majuscules, etat::oui, {"Nom ?", "Text1 > ttoc(15) = A > Annuler > btc(2)", ""}},
        {etat::fugitif,
         etat::fugitif,
         {"Parti !", "sans btc(2) > sans btc(3) > sans btc(5) > tape echappement > attend 1499 > sans Text1 > attend 1",
          ""}},
    };
    for (const auto& c : cas) {
        etat::code_dialogue = c.demande;
        tiennent(etat::texte_dialogue, mini_97::montre_mini_97, {c.cas});
        EXPECT_EQ(etat::code_dialogue, c.rendu) << c.cas.etapes;
    }
    // Who asks by the call gets the blanks too.
    donnent(mini_97::saisit, {{"Nom ?|a", "Text1 = a > tape  b  > btc(2)", "a b "}, {"Nom ?|a", "btc(3)", "-"}});
}

/// Sizes 1 to 10 are factors 1.0 to 1.9, all by joining the digits; the box stays in the middle, and on the screen.
TEST_F(Dialogues, LaBoiteALaTailleReglee) {
    const struct {
        const char* taille;
        int ecran_l, ecran_h, largeur, police;  ///< of the screen and the box in pixels
    } cas[] = {{"", 1280, 800, 700, 24},        {"#I#1", 1280, 800, 700, 24},   {"#I#5", 1280, 800, 980, 34},
               {"#I#10", 1920, 1080, 1330, 46}, {"#I#11", 1920, 1080, 770, 26}, {"#I#10", 1280, 800, 1268, 43},
               {"#I#10", 1920, 500, 975, 33},   {"#I#10", 554, 800, 542, 19}};
    for (const auto& c : cas) {
        SCOPED_TRACE(std::string(c.taille) + ", " + std::to_string(c.ecran_l));
        ecran_de(c.ecran_l, c.ecran_h);
        static_cast<void>(reglages::ecrit(reglages::taille_boites, c.taille));
        const auto regard = [&](ecran::Forme& f) {
            EXPECT_NEAR(f.cadre.largeur, c.largeur * 15, 15);
            EXPECT_NEAR(f.cadre.hauteur * 7, f.cadre.largeur * 3, 15);
            EXPECT_NEAR(f.cadre.gauche + f.cadre.droite(), c.ecran_l * 15, 15);
            EXPECT_NEAR(f.cadre.haut + f.cadre.bas(), (c.ecran_h - 30) * 15, 15);
            EXPECT_EQ(f("Label1").aspect.police, c.police);
        };
        regarde([] { mini_97::informe("Fini !"); }, regard);
    }
}

TEST_F(Dialogues, LePave) {
    const auto en_mode = [](std::string_view mode) {
        return [mode](const std::string& invite) { return clav_num::demande(mode, invite); };
    };
    donnent(en_mode(""),
            {{"Combien ?|12",
              "Label2 = Combien ? > 1 > g2 0 0 > attend 99 > 1 > Label5 = 12 > attend 1 > sans Label3 > "
              ". > 3 > C > 0 > g2 0 1 > g2 0 3 > Valider",
              "12.0"},
             {"Combien ?|12", "attend 100 > Effacer > C > 1 > 2 > 3 > 4 > 5 > 6 > 7 > 8 > 9 > 0 > 1 > 2 > Valider",
              "123456789012"},
             {"Combien ?", "attend 100 > tape 1x.5/: > Label5 = 1.5 > tape retour > tape entree", "1."},
             {"Combien ?|7", "attend 100 > 1 > tape echappement", "-"}});
    donnent(en_mode(clav_num::mode_cache),
            {{"Code ?",
              "attend 100 > 5 > . > 6 > Label3 = *** > sans Label5 > C > Label3 = ** > Effacer > 7 > Label3 = * > "
              "Valider",
              "7"}});
    donnent(en_mode(clav_num::mode_taille),
            {{"Taille ?|18",
              "attend 100 > Label5 = 18 > g3 0 0 = 14 > g3 2 2 = 54 > verifie couleur g3 0 0 C24B45 > "
              "verifie police g3 3 1 64 > tape 7 > 68 > verifie police Label5 68 > 34 > Valider",
              "34"}});
}

/// Touches keys one after another, each behind another one when that is given.
std::string touches(std::initializer_list<std::pair<int, int>> rangees, const std::string& avant = "") {
    std::string r;
    for (const auto& [premiere, derniere] : rangees) {
        for (int i = premiere; i <= derniere; ++i) r += avant + "ttoc(" + std::to_string(i) + ") > ";
    }
    return r;
}

TEST_F(Dialogues, LeClavierEtSesTroisPages) {
    const std::string toutes = touches({{1, 12}, {15, 25}, {27, 37}, {40, 50}});
    const auto clavier = [](etat::Demande genre) {
        return [genre](const std::string& invite) { return clavv::demande(genre, invite); };
    };
    donnent(
        clavier(etat::saisie),
        {{"Nom ?", "Label1 = Nom ? > ttoc(1) = && > " + toutes + "Valider",
          "&é''(-è_çà)+azertyuiop$qsdfghjklm*<wxcvbn,;:!"},
         {"Nom ?", "VERR. > " + toutes + "VERR. > ttoc(15) > Valider",
          "1234567890°=AZERTYUIOP£QSDFGHJKLM%>WXCVBN?./§a"},
         {"Nom ?", touches({{1, 12}, {15, 25}, {36, 37}}, "#~é€ > ") + "ttoc(2) > Valider",
          " ~#{}`\\^@[] ïë€îêôâûù £ µé"},
         {"Nom ?", "MAJ > ttoc(15) = A > ttoc(15) > ttoc(15) = a > ttoc(15) > ttoc(0) > Valider", "Aa "},
         {"Nom ?",
          "MAJ > verifie couleur ttoc(39) D98E04 > MAJ > ttoc(15) > #~é€ > ttoc(17) = € > #~é€ > ttoc(17) > Valider",
          "ae"},
         {"Nom ?", "#~é€ > VERR. > ttoc(15) = a > ttoc(15) > Valider", "a"},
         {"Nom ?|abcd",
          "ttoc(54) > ttoc(54) > ttoc(13) > ttoc(15) > Text1 = aacd > ttoc(55) > tape x > ttoc(55) > "
          "ttoc(55) > ttoc(51) > ttoc(52) > ttoc(53) > tape z > tape entree",
          "aacxdz"},
         {"Nom ?|abc", "C > ttoc(13) > ttoc(54) > tape \ty > Text1 = y > tape retour > tape z > Valider", "z"},
         {"Nom ?|abc", "tape def > Annuler", "-"}});
    donnent(clavier(etat::saisie_majuscules), {{"Nom ?", "ttoc(15) > ttoc(2) > VERR. > ttoc(15) > Valider", "A2a"}});
    tiennent(etat::texte_dialogue, clavv::montre_clavv, {{"Nom ?|abc", "tape def > Annuler", "abc"}});
}

TEST_F(Dialogues, LaListeDuClavierSuitCeQuiEstTape) {
    const auto demande = [](const std::string& invite) { return clavv::demande(etat::saisie, invite); };
    const auto propose = [&](const std::string& invite) {
        clavv::propose({"Saignante", "Bleu", "Bien cuite", "Sans sauce"});
        return demande(invite);
    };
    donnent(propose, {{"Cuisson ?",
                       "verifie lignes List1 4 > tape sa > verifie lignes List1 2 > List1 1 0 = Sans sauce > "
                       "tape retour > tape retour > tape Cui > List1 0 0",
                       "Bien cuite"},
                      {"Cuisson ?", fois(5, "ttoc(53) > ") + "ttoc(52) > Valider", "Bien cuite"},
                      {"Cuisson ?", "tape bleuet > verifie lignes List1 0 > ttoc(53) > Valider", "bleuet"}});
    donnent(demande, {{"Nom ?", "sans List1 > tape x > Valider", "x"}});
}

TEST_F(Dialogues, LaSaisieEtSonChoix) {
    const auto demande = [](bool chiffres) {
        const saisie::Choix choix = {"Choisir", 1, [] { return mini_97::saisit("Quoi ?"); }};
        return [=](const std::string& defaut) {
            return saisie::demande({"Nom ?", "KMZ", defaut, chiffres, chiffres ? choix : saisie::Choix{}});
        };
    };
    donnent(demande(false),
            {{"ab", "Label1 = Nom ? > Label2 = KMZ > sans bt_choix > tape retour > tape \tcd > Text1 = acd > btc(2)",
              "acd"},
             {"ab", fois(3, "tape retour > ") + "tape entree", ""},
             {"ab", "tape cd > btc(5)", "-"},
             {"ab", "Text1 > Label1 = Nom ? > ttoc(15) > Valider > Text1 = aba > tape b > btc(2)", "abab"}});
    donnent(
        demande(true),
        {{"ab", "Text1 > ttoc(2) = 2 > Annuler > Text1 = ab > Choisir > btc(3) > Choisir > tape cd > btc(2)", "cd"}});
}

TEST_F(Dialogues, LaTableEtLesCouverts) {
    tiennent(
        etat::table_couverts, ch_numtab::montre_ch_numtab,
        {{"",
          "Label5 = > Label7 = > g3 3 0 > g2 0 1 > g2 0 4 > g3 2 0 > g1 1 0 > Valider > "
          "Label1 = Le N° de table 7, est inconnu, voulez vous le corriger ? > Oui > Label5 = 7 > Valider > btc(5)",
          "#N0074 "},
         {"#N0074 ", "Label5 = 007 > Label7 = 4 > g3 0 0 > Valider > Non", "#N0714 "},
         {"#N0714 ",
          fois(4, "g3 3 0 > ") + "Label5 = > 1 > g3 3 1 > g3 0 0 > g3 0 1 > g1 3 0 > Label7 = 10 > Valider > Non",
          "#N01210"},
         {"#N01210",
          "Effacer > Label5 = > Label7 = > Liste > 015 > g1 3 1 > Label7 = 11 > Autres > "
          "Label2 = Entrez le nb de personnes > Label5 = > attend 100 > 1 > 2 > 3 > Valider > Label7 = 123 > "
          "Valider",
          "#N01512"},
         {"#N01512",
          "Autres > attend 100 > tape 9 > tape echappement > Label7 = 12 > Autres > attend 100 > Valider > "
          "Label7 = > g2 0 2 > Fermer > Label5 = 015 > 999 / 1 > Label5 = 999 > Label7 = 1 > Valider > Non",
          "#N9991 "},
         {"", "tape a0b1.2 > Label5 = 012 > tape retour > g1 0 1 > Valider", "#N0012 "},
         {"", "g3 3 1 > g1 0 1 > Valider", "#N0002 "}});
    EXPECT_EQ(etat::texte_table, "0") << "as typed";
    carte("#SERV#01 Sophie\r\n");
    joue(ch_numtab::montre_ch_numtab, "Liste > verifie lignes g1 0 > g2 0 0 > g2 0 1 > Fermer > 1 > Valider > btc(3)");
    // The word must be the whole of the record.
    for (const std::string valeur : {"", "OUI", "non", "#I#NON", "NON!", "NON", " NON"}) {
        static_cast<void>(reglages::ecrit(reglages::verification_table, valeur));
        const bool arretee = valeur == "NON" || valeur == " NON";
        joue(ch_numtab::montre_ch_numtab, arretee ? "999 / 1 > Valider" : "999 / 1 > Valider > Non");
    }
}

TEST_F(Dialogues, LImageDUneTouche) {
    tiennent(etat::texte_travail, lis_bout::montre_lis_bout,
             {{"20  ",
               "verifie lignes g3 50 > g3 49 1 = 049 > verifie image g3 49 1 49 > Label2 = 20 > "
               "verifie image Image1 20 > oui > bt_valide",
               "20 N"},
              {"20 N", "g3 12 1 > Label2 = 012 > verifie image Image1 12 > oui > bt_valide", "012 "},
              {"012N", "tape entree", "012N"},
              {"", "Label2 = > verifie image Image1 0 > oui > bt_valide", "   N"},
              {"N", "Label2 = > g3 7 1 > bt_valide", "007N"},
              {"20 N", "bt_no", "    "},
              {"20 N", "g3 12 1 > tape echappement", "20 N"}});
}

/// The first start needs an answer; later Escape leaves the format as it is.
TEST_F(Dialogues, LeFormatDeLEcran) {
    reglent(
        reglages::record_resolution, porpay::montre_porpay,
        {{"", "tape echappement > Image1", "#I#0:00554:00770"},
         {"#I#0:00554:00770", "tape echappement", "#I#0:00554:00770"},
         {"#I#0:00554:00770", "Image2", "#I#0:01280:00770"},
         {"",
          "bt_coul > Label2 = Entrez la résolution Horizontale ? > Label5 = 800 > attend 100 > Effacer > tape 1024 > "
          "Valider > Label2 = Entrez la résolution Verticale ? > attend 100 > C > C > C > tape 600 > Valider",
          "#I#101024:00600"},
         {"#I#0:00554:00770",
          "bt_coul > attend 100 > Effacer > Valider > bt_coul > Label5 = 554 > attend 100 > Valider > "
          "Label5 = 770 > attend 100 > Effacer > Valider > bt_coul > attend 100 > tape echappement > "
          "tape echappement",
          "#I#0:00554:00770"}});
    // A picture chosen at the first start counts at once.
    Terrain t;
    t.restaurant();
    t.regle(2, "");
    tests::tient_texte(t, tests::route("Image1 > verifie ecran Form1 > capture forme.png"));
    EXPECT_EQ(tests::taille_png(t.lis("forme.png")), std::pair(554, 770));
}

/// The same scenario on the same ground gives the same files and the same pictures, byte for byte.
TEST(Jumeaux, DeuxRejeuxDonnentLesMemesOctets) {
    std::string scenario = tests::scenario("commande.txt");
    int vues = 0;
    for (std::size_t p = 0; (p = scenario.find("verifie ecran ", p)) != std::string::npos; p += 40) {
        scenario.insert(p, "capture " + std::to_string(vues++) + ".png\n");
    }
    std::map<std::string, std::string> fichiers[2];
    for (auto& f : fichiers) {
        Terrain t;
        t.restaurant();
        tests::tient_texte(t, scenario);
        f = tests::photographie(t);
    }
    EXPECT_GE(vues, 5);
    EXPECT_TRUE(fichiers[0] == fichiers[1]);
    EXPECT_NE(fichiers[0]["0.png"], fichiers[0]["1.png"]);
}

}  // namespace
