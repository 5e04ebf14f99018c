// Remarks and courses between what is typed, the line that keeps them, and the order file.
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

}  // namespace
