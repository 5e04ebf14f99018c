// Every setting acts: it is changed in the toolbox, by touch, and the screen that reads it shows the change.
#include "rejeux.h"
#include "scene.h"

namespace {

using tests::route;
using tests::tient_texte;

const std::string outils = "logil > attend 300 > ", ferme_outils = "g2 0 5 > verifie ecran Form1 > ";
/// Sets a table, so that no page asks for it.
const std::string table = "btx(1) > g2 0 0 > g3 0 0 > g1 0 1 > g2 0 5 > ";

/// Touches a row and answers its keypad: with a number, or with one of the font sizes.
std::string rangee(int n, const std::string& reponse) {
    return "g1 " + std::to_string(n) + " 0 > attend 100 > " + reponse + " > Valider > verifie ecran ch_outils > ";
}
std::string nombre(int n, const std::string& valeur) {
    return rangee(n, "Effacer > tape " + valeur);
}
std::string visibles(int premiere_cachee) {
    return "avec btx(" + std::to_string(premiere_cachee - 1) + ") > sans btx(" + std::to_string(premiere_cachee) +
           ") > ";
}

class Effets : public tests::Restaurant {
  protected:
    Effets() {
        t.regle(200, "OUI");
        std::string carte;
        for (int n = 10; n <= 29; ++n) {
            const std::string no = std::to_string(n), serveur = std::to_string(n - 9);
            carte += "#SERV#" + serveur + " Serveur\r\n#FAMI#" + serveur + " Famille\r\n#TABL#" + serveur +
                     "\r\n#ARTI#000" + no + "88800000000" + no + "  |DES:Article " + no + "|PVE:1.00|FA1:2|FA2:0\r\n";
        }
        t.pose("reseau/worvalune.wdo", carte);
    }
    /// A list page that starts with keys of 3 x 2 cells, twelve a page on a grid of 12 x 6: what leads to it from the
    /// home page, and the first of its four rows in the toolbox.
    void liste(const std::string& montre, int n) {
        tient_texte(t, route(table + montre + visibles(13) + outils + rangee(n, "34") + nombre(n + 1, "6") +
                             nombre(n + 2, "3") + ferme_outils + montre + visibles(5) + "verifie police btx(1) 34 > " +
                             outils + nombre(n + 3, "3") + ferme_outils + montre + visibles(4)));
    }
};

TEST_F(Effets, LesListesDeTouches) {
    liste("Serveurs > ", 4);
    liste("Familles > ", 9);
    liste("btx(1) > ", 14);
}

TEST_F(Effets, LaGrilleEtLesAutresEcrans) {
    // Its keys were placed for the grid of the start.
    tient_texte(t,
                route(table + outils + nombre(1, "6") + nombre(2, "4") + ferme_outils + "Familles > " + visibles(13)));
    tient_texte(t, route(table + "Familles > " + visibles(5)));
    t.regle(25, "#I#12");
    t.regle(26, "#I#6");
    tient_texte(
        t,
        route("btx(1) > verifie image g2 0 0 11 > " + outils + rangee(19, "44") + rangee(21, "48") + rangee(22, "28") +
              rangee(23, "24") + rangee(25, "24") + nombre(26, "4") + nombre(27, "2") + rangee(31, "38") +
              "g1 28 0 > Non > g1 30 0 > attend 100 > tape 3 > Valider > verifie police Label1 29 > btc(5) > "
              "g1 35 0 > Oui > g1 36 0 > Non > " +
              ferme_outils + R"(
        verifie image g2 0 0 61 > btx(5) > verifie police Label1 48 > verifie police g1 28 > A > verifie police g1(0) 24
        g2 0 5 > g2 0 5 > Note > verifie police g1 44 > g2 0 5 > g2 0 0 > verifie police g3 38 > Liste > verifie police g1 24
        g1 0 3 = 004 > verifie lignes g1 5 > g2 0 0 > 009 > g2 0 0 > g3 2 2 > g3 2 2 > g1 0 1 > g2 0 5 > verifie ecran Form1
        logil > verifie ecran clav_num)"));
}

/// A size beyond the screen would put keys where no finger reaches them, a tiny one would make them too small.
TEST_F(Effets, UneTailleDEcranInsenseeTientSurLEcran) {
    const struct {
        const char *record, *ecran;
        std::pair<int, int> taille;
    } cas[] = {{"#I#0:05000:09999", "1280x800", {1280, 800}}, {"#I#0:01280:00770", "800x1280", {800, 770}},
               {"#I#0:00000:-0005", "1280x800", {800, 800}},  {"#I#0:01280:00320", "1280x800", {1280, 800}},
               {"#I#0:00324:00450", "800x480", {324, 450}},   {"#I#101024:00600", "1280x800", {1024, 600}},
               {"#I#110000:00768", "1280x800", {800, 768}}};
    for (const auto& c : cas) {
        SCOPED_TRACE(c.record);
        t.regle(2, c.record);
        tient_texte(t, route("btx(1) > " + outils + "capture forme.png > " + ferme_outils),
                    std::string("--ecran ") + c.ecran);
        EXPECT_EQ(tests::taille_png(t.lis("forme.png")), c.taille);
    }
}

}  // namespace
