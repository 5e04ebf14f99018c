// Remarks and courses between what is typed, the line that keeps them, and the order file.
#include <random>

#include "data/commande.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "dialogs/sel_arti.h"
#include "platform/systeme/texte.h"
#include "scene.h"

namespace {

using tests::fois;
using tests::page1252;
using Remarques = std::vector<std::string>;

TEST(Compositions, CeQuiEstLisibleEstLu) {
    const auto lus = [](const std::string& utf8) {
        std::string r;
        for (const lignes::Service& s : lignes::services(page1252(utf8))) {
            r += s.nom + ":";
            for (const std::string& c : s.choix) r += c + ",";
        }
        return r;
    };
    EXPECT_EQ(lus("Eµ1|a¦|¦2|b¦Pµ3|c¦µ|¦Dµ4| d ¦"), "E:a,,b,P:c,D:d,");
    EXPECT_EQ(lus("1|a¦2|b¦"), ":a,b,") << "no name at all";
    EXPECT_EQ(lus("Eµ1|a¦b¦Pµc"), "E:a,b,") << "a choice without reference, and a course that breaks off";
    EXPECT_EQ(lus("Eµ1|a¦2|b"), "E:a,b,");
    EXPECT_EQ(lus("Eµ" + fois(17, "1|a¦") + "Pµ1|b¦"), "E:" + fois(16, "a,") + "E:a,P:b,")
        << "a dish too many for one page stands on another";
    EXPECT_EQ(lus(""), "");
    EXPECT_EQ(lus("Entrée"), "");
    const std::string ouvertes = fois(60000, "{{a##QUA:");
    EXPECT_EQ(lignes::composition(ouvertes), "a") << "many that never end";
}

/// What a router wrote around a label, control characters too, never makes a choice that cannot be taken back.
TEST(Complements, UnChoixSeReprendToujours) {
    for (const std::string libelle : {"Riz", " Riz ", "Riz\t", "\x01Riz \x1F", "{Riz}|"}) {
        complements::prend("8880000000024  |DES:x");
        complements::bascule(libelle);
        EXPECT_TRUE(complements::est_pris(libelle)) << libelle;
        EXPECT_TRUE(complements::est_marque(libelle)) << libelle;
        complements::bascule(libelle);
        EXPECT_FALSE(complements::est_pris(libelle)) << libelle;
        EXPECT_EQ(lignes::validee(etat::texte_travail, 1, complements::rangs()),
                  "8880000000024  |DES:x ##QUA:001.00##");
    }
}

class Choix : public tests::Scene {};

/// Every character that a keyboard can give goes through note, correction and file, and comes back.
TEST_F(Choix, ChaqueSigneDeLaPageReviendraInchange) {
    std::string comp, frappes;
    int rang = 0;
    for (int premier = 33; premier < 256; premier += 30) {
        std::string r;
        for (int c = premier; c < std::min(256, premier + 30); ++c) {
            const bool manque = c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D || c == 0xA0;
            if (!manque) r += static_cast<char>(c);
        }
        frappes += "g1 " + std::to_string(++rang) + " 0 > tape " + texte::vers_utf8(r) + " > tape entree > ";
        comp += lignes::neutralise(r) + "|";
    }
    etat::texte_travail = "8880000000024  |DES:x";
    for (const std::string& etapes :
         {frappes + "bt_droi > Valider", std::string("Label6 = 2 > Valider"), std::string("Valider")}) {
        complements::prend(etat::texte_travail);
        joue(sel_arti::montre_sel_arti, etapes);
    }
    note({etat::texte_travail});
    EXPECT_NE(commande::contenu().find("#REF#8880000000024  {2.00}\r\n#COMP#" + comp + "\r\n#NOTE#\r\n"),
              std::string::npos);
}

/// Whatever a waiter types or a catalogue holds, the order file reads block by block, and its remarks are those taken.
TEST(Commandes, LeFichierSeLitToujours) {
    std::mt19937 hasard(98);
    const auto tire = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(hasard); };
    const std::string_view morceaux[] = {
        "{",   "}",     "|",   "{{",  "}}",    "##QUA:005.00##", "FA2:99", "|FA2:98|", "|DES:", "|PVE:9.50",
        "Ð"_t, "|¤¤"_t, "µ"_t, "¦"_t, "#REF#", "#COMP#",         "#NOTE#", "\t",       "é"_t,   "8880000000024  ",
        " "};
    const auto texte_au_hasard = [&] {
        std::string r;
        for (std::size_t k = tire(8); k > 0; --k) r += morceaux[tire(std::size(morceaux))];
        return r;
    };
    for (int tour = 0; tour < 3000; ++tour) {
        complements::prend("8880000000024  |DES:x" + texte_au_hasard());
        const std::string article = etat::texte_travail;
        for (std::size_t k = tire(4); k > 0; --k) complements::bascule(texte_au_hasard());
        complements::pose(tire(20), texte_au_hasard());
        Remarques prises;
        for (const std::string& r : complements::rangs()) {
            if (!texte::rogne(r).empty()) prises.emplace_back(texte::rogne(r));
        }
        const std::string ligne = lignes::validee(article, 3, complements::rangs());
        ASSERT_EQ(lignes::segments(ligne), prises) << ligne;
        ASSERT_EQ(lignes::composition(ligne).has_value(), lignes::composition(article).has_value()) << ligne;
        // Cut out, a marker in the catalogue's own text lets an open composition run on.
        if (!lignes::quantite(article)) {
            ASSERT_EQ(lignes::composition(ligne), lignes::composition(article)) << ligne;
            ASSERT_EQ(lignes::est_menu_compose(ligne), lignes::est_menu_compose(article)) << ligne;
        }
        etat::lignes_note[1] = ligne;
        etat::nb_lignes_note = 1;
        const std::string fichier = commande::contenu();
        const auto lues = texte::lignes(fichier);
        ASSERT_GE(lues.size(), 8U);
        ASSERT_EQ((lues.size() - 5) % 3, 0U) << fichier;
        for (std::size_t i = 5; i < lues.size(); ++i) {
            constexpr std::string_view bloc[] = {"#REF#", "#COMP#", "#NOTE#"};
            ASSERT_TRUE(lues[i].starts_with(bloc[(i - 5) % 3])) << fichier;
        }
        std::string comp = "#COMP#";
        if (!lignes::est_menu_compose(ligne)) {
            for (const std::string& r : prises) comp += r + "|";
        }
        ASSERT_EQ(lues[6], comp);
    }
    etat::nb_lignes_note = 0;
    etat::lignes_note[1].clear();
}

}  // namespace
