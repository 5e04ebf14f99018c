// Every setting acts: it is changed in the toolbox, by touch, and the screen that reads it shows the change.
#include <algorithm>

#include "atelier.h"
#include "dialogs/formes.h"
#include "platform/peinture/peintre.h"
#include "rejeux.h"

namespace {

using tests::Terrain;
using tests::tient_texte;

const std::string outils = "touche logil\nattend 300\n";
const std::string ferme_outils = "touche g2 0 5\nverifie ecran Form1\n";

/// Types a number into a row.
std::string nombre(int rangee, const std::string& valeur) {
    std::string t = "touche g1 " + std::to_string(rangee) + " 0\nattend 100\ntouche \"Effacer\"\n";
    for (const char c : valeur) t += std::string("touche \"") + c + "\"\n";
    return t + "touche \"Valider\"\nverifie ecran ch_outils\n";
}
/// Chooses a font size for a row.
std::string taille(int rangee, const std::string& points) {
    return "touche g1 " + std::to_string(rangee) + " 0\nattend 100\ntouche \"" + points + "\"\ntouche \"Valider\"\n";
}
std::string visibles(int premiere_cachee) {
    return "verifie visible btx(" + std::to_string(premiere_cachee - 1) + ") oui\nverifie visible btx(" +
           std::to_string(premiere_cachee) + ") non\n";
}
std::string police(const std::string& controle, const std::string& points) {
    return "verifie police " + controle + " " + points + "\n";
}

/// Sets a table, so that no page asks for it.
const std::string table = "touche g2 0 0\ntouche g3 0 0\ntouche g1 0 1\ntouche g2 0 5\n";

class Effets : public testing::Test {
  protected:
    Terrain t;
    Effets() {
        t.restaurant();
        t.regle(200, "OUI");
        std::string carte;
        for (int n = 1; n <= 20; ++n) {
            const std::string deux = (n < 10 ? "0" : "") + std::to_string(n);
            carte += "#SERV#" + deux + " Serveur " + deux + "\r\n#FAMI#" + deux + " Famille " + deux + "\r\n#ARTI#000" +
                     deux + "88800000000" + deux + "  |DES:Article " + deux + "|PVE:1.00|FA1:2|FA2:0\r\n#TABL#" + deux +
                     "\r\n";
        }
        t.pose("reseau/worvalune.wdo", carte);
    }
    /// A list page that starts with keys of 3 x 2 cells, twelve a page on a grid of 12 x 6: what leads to it from the
    /// home page, and the first of its four rows in the toolbox.
    void liste(const std::string& montre, int rangee) {
        tient_texte(t, "touche btx(1)\n" + table + montre + visibles(13) + outils + taille(rangee, "34") +
                           nombre(rangee + 1, "6") + nombre(rangee + 2, "3") + ferme_outils + montre + visibles(5) +
                           police("btx(1)", "34") + outils + nombre(rangee + 3, "3") + ferme_outils + montre +
                           visibles(4));
    }
};

TEST_F(Effets, LesListesDeTouches) {
    liste("touche \"Serveurs\"\n", 4);
    liste("touche \"Familles\"\n", 9);
    liste("touche btx(1)\n", 14);
}

TEST_F(Effets, LaGrille) {
    tient_texte(t, "touche btx(1)\n" + table + outils + nombre(1, "6") + nombre(2, "4") + ferme_outils +
                       "touche \"Familles\"\n" + visibles(5));
}

TEST_F(Effets, LaLigneEtLaNote) {
    const std::string montre = "touche btx(5)\nverifie ecran sel_arti\n";
    tient_texte(t, "touche btx(1)\n" + outils + taille(19, "44") + taille(21, "48") + taille(22, "28") +
                       taille(23, "24") + ferme_outils + montre + police("Label1", "48") + police("g1", "28") +
                       "touche \"A\"\n" + police("g1(0)", "24") +
                       "touche g2 0 5\ntouche g2 0 5\ntouche \"Note\"\nverifie ecran eta_com\n" + police("g1", "44"));
}

TEST_F(Effets, LesTables) {
    tient_texte(t, "touche btx(1)\n" + outils + taille(25, "24") + nombre(26, "4") + nombre(27, "2") +
                       taille(31, "38") + "touche g1 28 0\ntouche \"Non\"\n" + ferme_outils + "touche g2 0 0\n" +
                       police("g3", "38") + "touche \"Liste\"\n" + police("g1", "24") +
                       "verifie g1 0 3 \"004\"\nverifie lignes g1 5\ntouche g2 0 0\ntouche \"009\"\n"
                       "touche g2 0 0\ntouche g3 2 2\ntouche g3 2 2\ntouche g1 0 1\ntouche g2 0 5\n"
                       "verifie ecran Form1\n" +
                       outils + "touche g1 28 0\ntouche \"Oui\"\n" + ferme_outils +
                       "touche g2 0 0\ntouche g2 0 5\nverifie ecran mini_97\n");
}

TEST_F(Effets, LesReglagesGeneraux) {
    tient_texte(t, "touche btx(1)\nverifie image g2 0 0 11\n" + outils + "touche g1 30 0\nattend 100\n" +
                       "touche \"Effacer\"\ntouche \"3\"\ntouche \"Valider\"\n" + police("Label1", "29") +
                       "touche btc(5)\ntouche g1 35 0\ntouche \"Oui\"\ntouche g1 36 0\ntouche \"Non\"\n" +
                       ferme_outils + "verifie image g2 0 0 61\ntouche logil\nverifie ecran clav_num\n");
}

/// The manager's colours on a painted key: a text that can be told from its ground is his own, another is replaced by
/// one that can be read.
class Couleurs : public tests::Atelier {
  protected:
    ecran::Forme forme;
    ecran::Peintre peintre;
    Couleurs() {
        forme.cadre = {0, 0, 200 * ecran::twips_par_pixel, 100 * ecran::twips_par_pixel};
        forme.ajoute({.nom = "btx",
                      .index = 1,
                      .genre = ecran::Genre::bouton,
                      .cadre = forme.cadre,
                      .texte = "MMMM",
                      .role = ecran::Role::touche,
                      .police = 40,
                      .gras = true,
                      .etiquette = 3});
        peintre.dimensionne(200, 100, 1);
        reglages::ouvre();
    }
    /// The pixels in the middle of the key, where its text runs.
    std::vector<ecran::Couleur> peint() {
        ecran::Forme* const pile[] = {&forme};
        peintre.peint(pile, {});
        std::vector<ecran::Couleur> r;
        for (std::size_t x = 20; x < 180; ++x) {
            r.push_back(static_cast<ecran::Couleur>(peintre.image().pixels[50 * 200 + x] & 0xFFFFFF));
        }
        return r;
    }
};

TEST_F(Couleurs, UneEncreTropProcheDuFondEstRemplacee) {
    const struct {
        const char *fond, *encre;  ///< as stored, red in the low byte
        ecran::Couleur vu, ecrit;  ///< ground, and own text or sans_couleur when it is replaced
    } cas[] = {
        {"#I#3154905", "#I#3154905", 0xD92330, ecran::sans_couleur},
        {"#I#2980057", "#I#16777215", 0xD9782D, 0xFFFFFF},
        {"#I#0", "#I#1052688", 0x000000, ecran::sans_couleur},
        {"#I#16777215", "#I#15790320", 0xFFFFFF, ecran::sans_couleur},
        {"", "#I#16777215", 0xFFFFFF, ecran::sans_couleur},
        {"", "#I#255", 0xFFFFFF, 0xFF0000},
        {"#I#255", "", 0xFF0000, ecran::sans_couleur},
    };
    for (const auto& c : cas) {
        SCOPED_TRACE(std::string(c.fond) + " " + c.encre);
        ASSERT_EQ(reglages::ecrit(reglages::fonds + 3, c.fond), fichiers::Issue::fait);
        ASSERT_EQ(reglages::ecrit(reglages::encres + 3, c.encre), fichiers::Issue::fait);
        ecran::Controle& touche = forme("btx", 1);
        touche.aspect.fond = touche.aspect.encre = ecran::sans_couleur;
        formes::colore(forme);
        const auto pixels = peint();
        EXPECT_NE(std::find(pixels.begin(), pixels.end(), c.vu), pixels.end());
        double lisible = 0;
        for (const auto p : pixels) lisible = std::max(lisible, ecran::contraste(p, c.vu));
        if (c.ecrit == ecran::sans_couleur) {
            EXPECT_GE(lisible, 4.5);
        } else {
            EXPECT_NE(std::find(pixels.begin(), pixels.end(), c.ecrit), pixels.end());
        }
    }
}

/// A size beyond the screen would put keys where no finger reaches them, a tiny one would make them too small.
TEST_F(Effets, UneTailleDEcranInsenseeTientSurLEcran) {
    const struct {
        const char *record, *ecran;
        std::string_view taille;  ///< of the form, as the picture's head has it: two numbers of four bytes
    } cas[] = {
        {"#I#0:05000:09999", "1280x800", {"\0\0\x05\0\0\0\x03\x20", 8}},
        {"#I#0:01280:00770", "800x1280", {"\0\0\x03\x20\0\0\x03\x02", 8}},
        {"#I#0:00000:-0005", "1280x800", {"\0\0\x03\x20\0\0\x03\x20", 8}},
        {"#I#0:01280:00320", "1280x800", {"\0\0\x05\0\0\0\x03\x20", 8}},
        {"#I#0:00324:00450", "800x480", {"\0\0\x01\x44\0\0\x01\xC2", 8}},
    };
    for (const auto& c : cas) {
        SCOPED_TRACE(c.record);
        t.regle(2, c.record);
        tient_texte(t, "touche btx(1)\n" + outils + "capture forme.png\n" + ferme_outils,
                    std::string("--ecran ") + c.ecran);
        EXPECT_EQ(t.lis("forme.png").substr(16, 8), c.taille);
    }
}

/// Whatever the settings hold, the toolbox can be reached, read and closed, and a setting be put right in it.
TEST_F(Effets, DesReglagesInsensesLaissentLaBoiteAOutils) {
    for (const char* valeur : {"#I#0", "#I#-3", "#I#99999999999", "#I#abc", "#I#", "OUI", "\xFF\xFE\x01 #I#5"}) {
        SCOPED_TRACE(valeur);
        for (int r = 3; r <= 62; ++r) t.regle(r, valeur);
        tient_texte(t, "touche btx(1)\n" + outils + "verifie ecran ch_outils\ntouche g2 0 1\ntouche g2 0 3\n" +
                           "touche g2 0 4\ntouche g2 0 2\n" + nombre(1, "12") + nombre(2, "6") +
                           "verifie g1 1 1 \"12\"\n" + taille(25, "24") + "touche g1 32 0\nverifie ecran ggcoul\n" +
                           "touche \"Annuler\"\n" + ferme_outils + "touche logo\n");
    }
}

}  // namespace
