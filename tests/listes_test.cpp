// The lists that do not fit on one page: servers, families, articles, tables, the note; and the grid they lie on.
#include <cstdio>

#include "rejeux.h"

namespace {

using tests::page1252;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

std::string forme(const char* modele, int n) {
    char t[200];
    std::snprintf(t, sizeof t, modele, n, n);
    return t;
}

/// Lines made of a pattern that takes the number twice.
std::string lignes(const char* modele, int premier, int dernier) {
    std::string r;
    for (int n = premier; n <= dernier; ++n) r += forme(modele, n) + "\r\n";
    return r;
}

constexpr const char* modele_article = "#ARTI#000018880000%06d  |DES:Article %d|PVE:1.00|FA1:2|FA2:0";

/// More of everything than a page holds: servers 0 to 20 without 13, 20 families, 301 articles, 61 tables.
void grande_carte(const Terrain& t) {
    t.pose("reseau/worvalune.wdo", lignes("#SERV#%02d Serveur %d", 0, 12) + lignes("#SERV#%02d Serveur %d", 14, 21) +
                                       lignes("#FAMI#%02d Famille %d", 1, 19) + "#FAMI#20 Derni\xE8re|COU:7\r\n" +
                                       lignes(modele_article, 1, 301) + lignes("#TABL#%d", 1, 61) +
                                       "#CCOF#0100000000000000000012\r\n#CCOU#1200000000000000000009\r\n");
}

class Listes : public testing::Test {
  protected:
    Terrain t;
    Listes() {
        t.restaurant();
        grande_carte(t);
    }
    /// After these commands the text cannot be touched: it is on no key, or scrolled away.
    void ne_se_touche_pas(const std::string& commandes, const std::string& texte) {
        EXPECT_EQ(t.joue(commandes + "touche \"" + texte + "\"\n").statut, 2) << texte;
    }
};

TEST_F(Listes, LesServeursDePageEnPage) {
    t.touche(0, 25, "Inconnu", "#SERV#13");
    t.touche(0, 27, "Trop", "#SERV#21");
    t.touche(0, 29, "Sans nombre", "#SERV#xx");
    tient(t, "listes_serveurs.txt");
}

TEST_F(Listes, LesFamillesDePageEnPage) {
    tient(t, "listes_familles.txt");
}

TEST_F(Listes, LesArticlesDePageEnPage) {
    t.regle(6, "#I#1");
    t.regle(7, "#I#1");
    t.regle(8, "#I#99");
    tient(t, "listes_articles.txt");
}

TEST_F(Listes, LesTablesDePageEnPage) {
    tient(t, "listes_tables.txt");
    const std::string ouvre = "touche btx(2)\ntouche g2 0 0\ntouche \"Liste\"\nverifie ecran lis_tbb\n";
    const std::string bas = "touche g2 0 0\n", haut = "touche g2 0 1\n";
    ne_se_touche_pas(ouvre, "025");
    ne_se_touche_pas(ouvre + bas, "024");
    ne_se_touche_pas(ouvre + bas, "049");
    ne_se_touche_pas(ouvre + bas + bas + bas + bas, "039");
    ne_se_touche_pas(ouvre + bas + haut, "025");
}

TEST_F(Listes, SansTableLaListeEstVide) {
    t.pose("reseau/worvalune.wdo", "#SERV#01 Sophie\r\n");
    tient(t, "listes_vides.txt");
}

TEST_F(Listes, LeRecapitulatifDefileParDix) {
    std::string commandes = "touche btx(2)\ntouche g2 0 1\ntouche g3 0 0\ntouche g2 0 5\ntouche btx(2)\n";
    for (int page = 0; page < 3; ++page) {
        for (int k = 1; k <= 10; ++k) commandes += forme("touche btx(%d)\ntouche g2 0 5\n", k);
        commandes += "touche g2 0 1\n";
    }
    commandes += "touche g2 0 4\nverifie ecran eta_com\n";
    t.regle(8, "#I#10");
    const std::string bas = "touche g2 0 0\n", haut = "touche g2 0 1\n";
    tient_texte(t, commandes + haut + "touche \"Article 1\"\ntouche g2 0 5\n" + bas +
                       "touche \"Article 11\"\nverifie ecran sel_arti\nverifie Label1 \"Article 11\"\ntouche g2 0 5\n" +
                       "touche \"Article 11\"\ntouche g2 0 5\n" + bas + bas + bas +
                       "touche \"Article 30\"\ntouche g2 0 5\n" + haut + haut + haut + haut +
                       "touche \"Article 1\"\ntouche g2 0 5\nverifie lignes g1 31\nverifie Label6 \"30\"\n");
    ne_se_touche_pas(commandes + bas, "Article 10");
    ne_se_touche_pas(commandes + bas + bas + haut, "Article 10");
    ne_se_touche_pas(commandes, "Article 30");
}

/// Keys are cut at the edge of the grid, a later one lies on top, and what has no cell is not shown.
TEST(Grille, LesTouchesSontCoupeesAuBord) {
    Terrain t;
    t.restaurant();
    t.touche(0, 12, "Bord", "#PAGE#1", "99");
    t.touche(0, 24, "Sous", "#PAGE#3", "11");
    t.touche(0, 72, "Coin", "#PAGE#2", "11");
    t.touche(0, 73, "Dehors", "#PAGE#3", "11");
    t.touche(0, 74, "Autre", "#PAGE#3", "11");
    t.touche(0, 49, "Loin", "#PAGE#50", "21");
    t.touche(0, 51, "Avant", "#PAGE#-1", "21");
    t.touche(0, 53, page1252("Dernière"), "#PAGE#49", "21");
    t.touche(49, 1, "Fin", "#PAGE#0");
    tient(t, "grille.txt");
}

/// Whatever the layout settings hold, each page shows a key and goes to the next.
TEST(Grille, DesReglagesInsensesLaissentLEcranUtilisable) {
    for (const char* valeur : {"#I#0", "#I#-3", "#I#99999999999", "#I#abc", "#I#1"}) {
        SCOPED_TRACE(valeur);
        Terrain t;
        t.restaurant();
        grande_carte(t);
        for (int r = 3; r <= 62; ++r) t.regle(r, valeur);
        t.regle(55, "NON");
        tient(t, "reglages_insenses.txt");
    }
}

}  // namespace
