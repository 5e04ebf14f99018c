// The lists that do not fit on one page: servers, families, articles, tables, the note; and the grid they lie on.
#include "rejeux.h"

namespace {

using namespace tests;

const std::string suivant = "touche \"Suivant\"\n", precedent = "touche \"Précédent\"\n";
const std::string bas = "touche g2 0 0\n", haut = "touche g2 0 1\n";

/// Lines of a catalogue: the pattern with each number in the place of "?".
std::string lignes(const std::string& modele, int premier, int dernier) {
    std::string r;
    for (int n = premier; n <= dernier; ++n) {
        for (const char c : modele) r += c == '?' ? std::to_string(n) : std::string(1, c);
        r += "\r\n";
    }
    return r;
}

/// A page shows so many keys, which are numbered from `premier`.
std::string page(const std::string& nom, int premier, int touches) {
    const auto touche = [](int k) { return "btx(" + std::to_string(k) + ") "; };
    return "verifie " + touche(1) + '"' + nom + std::to_string(premier) + "\"\nverifie " + touche(touches) + '"' + nom +
           std::to_string(premier + touches - 1) + "\"\nverifie visible " + touche(touches + 1) + "non\n";
}

class Listes : public Restaurant {
  protected:
    /// More of everything than a page holds: servers 0 to 20 without 13, 20 families, 301 articles, 61 tables.
    Listes() {
        t.pose("reseau/worvalune.wdo",
               "#SERV#00 Serveur 0\r\n" + lignes("#SERV#0? Serveur ?", 1, 9) + lignes("#SERV#? Serveur ?", 10, 12) +
                   lignes("#SERV#? Serveur ?", 14, 21) + lignes("#FAMI#0? Famille ?", 1, 9) +
                   lignes("#FAMI#? Famille ?", 10, 19) + "#FAMI#20 Famille 20|COU:7\r\n#FAMI#00 |COU:3\r\n" +
                   lignes("#ARTI#000018880000000000  |DES:Article ?|PVE:1.00|FA1:2", 1, 301) +
                   lignes("#TABL#?", 1, 61) + "#CCOF#0100000000000000000012\r\n#CCOU#1200000000000000000009\r\n");
    }
    /// After these commands the one text can be touched, and the other is scrolled away.
    void montre(const std::string& commandes, const std::string& texte, const std::string& cache) {
        tient_texte(t, commandes + "touche \"" + texte + "\"\n");
        EXPECT_EQ(t.joue(commandes + "touche \"" + cache + "\"\n").statut, 2) << cache;
    }
};

TEST_F(Listes, LesServeursDePageEnPage) {
    t.touche(0, 25, "Inconnu", "#SERV#13");
    t.touche(0, 27, "Trop", "#SERV#21");
    t.touche(0, 29, "Sans nombre", "#SERV#xx");
    const auto est = [](const char* nom) {
        return std::string("verifie label_etat \"") + nom + " · 0 ligne · 0.00\"\n";
    };
    tient_texte(t, page("Serveur ", 0, 12) + "verifie couleur btx(1) C24B45\nverifie couleur btx(2) D9782D\n" +
                       "touche g2 0 5\n" + precedent + page("Serveur ", 0, 12) + suivant + page("Serveur ", 12, 9) +
                       "verifie visible btx(2) non\n" + suivant + page("Serveur ", 12, 9) + "touche btx(9)\n" +
                       est("Serveur 20") + "touche \"Inconnu\"\n" + est("Serveur 1") + "touche \"Serveurs\"\n" +
                       page("Serveur ", 0, 12) + "touche btx(1)\n" + est("Serveur 0") + "touche \"Trop\"\n" +
                       est("Serveur 1") + "touche \"Sans nombre\"\n" + est("Serveur 0"));
}

TEST_F(Listes, LesFamillesDePageEnPage) {
    tient_texte(t, "touche btx(2)\ntouche \"Familles\"\ntouche g3 0 0\ntouche g2 0 5\n" + page("Famille ", 1, 12) +
                       "verifie couleur btx(1) C24B45\nverifie couleur btx(2) FFFFFF\nverifie police btx(1) 18\n" +
                       suivant + page("Famille ", 13, 8) + "verifie couleur btx(8) 6E569C\nverifie image g2 0 1 0\n" +
                       haut + page("Famille ", 13, 8) +
                       "touche \"Famille 19\"\nverifie label_bas \"Famille 19 · 1 / 1\"\nverifie visible btx(1) non\n");
}

TEST_F(Listes, LesArticlesDePageEnPage) {
    for (const int record : {6, 7}) t.regle(record, "#I#1");
    t.regle(8, "#I#99");  // twelve columns of six rows hold 72
    tient_texte(t,
                "touche btx(2)\ntouche \"Viandes\"\ntouche g3 0 0\ntouche g2 0 5\nverifie label_haut \"Famille 2\"\n" +
                    page("Article ", 1, 72) + "verifie btt(1) \"1.00\"\n" + suivant + page("Article ", 73, 72) +
                    "touche btx(72)\nverifie Label1 \"Article 144\"\ntouche g2 0 5\n" +
                    "verifie label_bas \"Famille 2 · 2 / 5\"\n" + fois(3, suivant) + page("Article ", 289, 12) + haut +
                    page("Article ", 289, 12) + precedent + "touche \"Note\"\ntouche \"Fermer\"\n" +
                    page("Article ", 217, 72) + "touche logo\n" + page("Article ", 217, 72));
}

TEST_F(Listes, LesTablesDefilentParHuitRangees) {
    const std::string ouvre = "touche btx(2)\ntouche \"Table\"\ntouche \"Liste\"\n";
    tient_texte(t, ouvre + "verifie lignes g1 21\nverifie g1 20 0 \"061\"\nverifie police g1 0 0 36\ntouche g1 20 1\n" +
                       "verifie ecran lis_tbb\ntouche \"061\"\nverifie Label5 \"061\"\ntouche g2 0 2\n" +
                       "touche \"Fermer\"\nverifie Label5 \"061\"\n");
    montre(ouvre + haut, "001", "025");
    montre(ouvre + bas, "025", "024");
    montre(ouvre + bas, "048", "049");
    montre(ouvre + fois(4, bas), "040", "039");
    montre(ouvre + bas + haut, "024", "025");
}

TEST_F(Listes, SansCarteLesListesSontVides) {
    t.pose("reseau/worvalune.wdo", "#SERV#01 Sophie\r\n");
    tient(t, "listes_vides.txt");
}

TEST_F(Listes, LeRecapitulatifDefileParDix) {
    t.regle(8, "#I#10");
    std::string trente = "touche btx(2)\ntouche g2 0 1\ntouche g3 0 0\ntouche g2 0 5\ntouche btx(2)\n";
    for (int k = 1; k <= 30; ++k) {
        trente +=
            "touche btx(" + std::to_string((k - 1) % 10 + 1) + ")\ntouche g2 0 5\n" + (k % 10 == 0 ? suivant : "");
    }
    trente += "touche \"Note\"\nverifie lignes g1 31\nverifie Label6 \"30\"\n";
    montre(trente + haut, "Article 1", "Article 30");
    montre(trente + bas, "Article 11", "Article 10");
    montre(trente + fois(4, bas), "Article 30", "Article 10");
    montre(trente + fois(4, bas) + fois(4, haut), "Article 1", "Article 30");
    montre(trente + fois(2, bas) + haut + "touche \"Article 11\"\nverifie Label1 \"Article 11\"\ntouche g2 0 5\n",
           "Article 11", "Article 10");
}

/// Keys are cut at the edge of the grid, a later one lies on top, and what has no cell is not shown.
TEST(Grille, LesTouchesSontCoupeesAuBord) {
    Terrain t;
    t.restaurant();
    t.touche(0, 12, "Bord", "#PAGE#1", "99");
    t.touche(0, 24, "Sous", "#PAGE#3", "11");
    t.touche(0, 72, "Coin", "#PAGE#2", "11");
    t.touche(0, 73, "Dehors", "#PAGE#3", "11");
    t.touche(0, 49, "Loin", "#PAGE#50", "21");
    t.touche(0, 51, "Avant", "#PAGE#-1", "21");
    t.touche(0, 53, "Fin", "#PAGE#49", "21");
    const auto va = [](const std::string& touche, const char* page) {
        return "touche " + touche + "\nverifie Label_num \"" + page + "\"\nverifie visible btx(2) non\n" +
               "touche \"Familles\"\ntouche \"Accueil\"\nverifie Label_num \"0\"\n";
    };
    tient_texte(t, prend_table_1 + "verifie visible btx(73) non\nverifie couleur btx(12) FFFFFF\n" +
                       va("\"Coin\"", "2") + va("\"Sous\"", "3") + va("btx(12)", "1") + va("\"Loin\"", "50") +
                       va("\"Avant\"", "-1") + va("\"Fin\"", "49"));
}

/// Whatever the layout settings hold, each page shows a key and goes to the next, and each dialog opens and closes.
TEST_F(Listes, DesReglagesInsensesLaissentLEcranUtilisable) {
    for (const char* valeur : {"#I#0", "#I#-3", "#I#99999999999", "#I#abc", "#I#1"}) {
        SCOPED_TRACE(valeur);
        for (int r = 3; r <= 62; ++r) t.regle(r, valeur);
        t.regle(55, "NON");
        tient(t, "reglages_insenses.txt");
    }
}

}  // namespace
