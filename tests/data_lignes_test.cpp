// Numbers and note lines: byte for byte, and for every remark that somebody might type.
#include "data/lignes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "data/complements.h"
#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace {

using Remarques = std::vector<std::string>;

const std::string article("8880000000024  |DES:Entrecôte|PVE:24.50|FA1:2|FA2:0|COU:4"_t);

TEST(Nombres, LeDebutDUnTexteEstLuSansJamaisEchouer) {
    const std::pair<std::string, double> table[] = {
        {"15.00", 15},  {"  7|", 7}, {"10|FA2:98", 10}, {"abc", 0},  {"-3x", -3}, {".5", .5},
        {"1.2.3", 1.2}, {"-", 0},    {"+4", 4},         {"0x10", 0}, {"1e3", 1},  {"002.00##{9}", 2},
        {"1,5", 1},     {"nan", 0},  {"inf", 0},        {".", 0},    {"\t5", 0},  {std::string(2000, '9'), 0}};
    for (const auto& [texte, attendu] : table) EXPECT_EQ(nombres::lis(texte), attendu) << texte;
    EXPECT_EQ(nombres::entier_int("99999999999"), 2147483647);
    EXPECT_EQ(nombres::entier(" 7.9"), 7);
    EXPECT_EQ(nombres::entier("-7.9"), -7);
}

TEST(Nombres, LesMontantsSArrondissentSurLaValeurDecimale) {
    const std::pair<double, std::string_view> table[] = {
        {0.125, "0.13"},      {1.005, "1.01"},     {-1.005, "-1.01"},  {2.675, "2.68"},
        {-0.001, "0.00"},     {0, "0.00"},         {99.995, "100.00"}, {1e15, "1000000000000000.00"},
        {0.1 + 0.2, "0.30"},  {24.5, "24.50"},     {NAN, "0.00"},      {INFINITY, "0.00"},
        {0.35 * 1.5, "0.53"}, {1.15 * 0.1, "0.12"}};
    for (const auto& [valeur, attendu] : table) EXPECT_EQ(nombres::montant(valeur), attendu) << valeur;
    EXPECT_EQ(nombres::montant_simple(1.005F), "1.01") << "single precision keeps its own shortest decimals";
    EXPECT_EQ(nombres::quantite(1000), "1000.00");
    EXPECT_EQ(nombres::entier_complete(1234, 3), "1234");
    EXPECT_EQ(nombres::entier_complete(0.5, 3), "001");
    EXPECT_EQ(nombres::general(1.5) + nombres::general(3), "1.53");
}

TEST(Lignes, UneLigneValideePlusieursFoisOctetParOctet) {
    const std::string x = article;
    const std::string une = lignes::validee(x, 2, {});
    EXPECT_EQ(une, x + " ##QUA:002.00##");
    const std::string avec = lignes::validee(une, 2, Remarques{"Sans sel"});
    EXPECT_EQ(avec, x + " ##QUA:002.00##{Sans sel}") << "without a remark the blank before the marker is cut off";
    const std::string deux = lignes::validee(avec, 3, Remarques{"Sans sel"});
    EXPECT_EQ(deux, x + "  ##QUA:003.00##{Sans sel}");
    EXPECT_EQ(lignes::validee(deux, 3, Remarques{"Sans sel"}), x + "   ##QUA:003.00##{Sans sel}");
    EXPECT_EQ(lignes::validee(x + " ##QUA:1000.00##{Sans sel}", 5, Remarques{"Sans sel"}),
              x + " # ##QUA:005.00##{Sans sel}");
    EXPECT_EQ(lignes::validee(x, 1000, {}), x + " ##QUA:1000.00##");
    EXPECT_EQ(lignes::validee("  " + x + "  ", 1, Remarques{"", "  ", " a point "}), x + " ##QUA:001.00##{a point}");
}

TEST(Lignes, LesChampsSeLisentHorsDesRemarques) {
    const std::string ligne = article + " ##QUA:003.00##{|DES:faux|PVE:1|COU:9|FA2:99 ##QUA:7}{Bleu}";
    EXPECT_EQ(lignes::reference(ligne), "8880000000024  ");
    EXPECT_EQ(lignes::libelle(ligne), "Entrecôte"_t);
    EXPECT_EQ(lignes::prix_affiche(ligne), "24.50");
    EXPECT_EQ(lignes::total(Remarques{"1|PVE:12.345 ##QUA:003.00##", "1|PVE:12.345"}), "49.40") << "37.05 and 12.35";
    EXPECT_EQ(lignes::chiffre_couleur(ligne), 4);
    EXPECT_EQ(lignes::quantite(ligne), 3);
    EXPECT_EQ(lignes::quantite_courte("x##QUA:1000.00##"), 1000) << "six characters: 1000.0";
    EXPECT_FALSE(lignes::est_menu_compose(ligne));
    EXPECT_EQ(lignes::segments(ligne), (Remarques{"|DES:faux|PVE:1|COU:9|FA2:99 ##QUA:7", "Bleu"}));

    EXPECT_EQ(lignes::libelle("1|DES:Seul ##QUA:001.00##{x}"), "Seul") << "the record ends before the quantity";
    EXPECT_EQ(lignes::libelle("sans rien"), "");
    EXPECT_FALSE(lignes::prix("1|DES:x").has_value());
    EXPECT_FALSE(lignes::quantite("{##QUA:5}").has_value());
    EXPECT_EQ(lignes::segments("a{ouverte ##QUA:2"), Remarques{"ouverte ##QUA:2"});
    EXPECT_EQ(lignes::segments("a{}b{c}"), (Remarques{"", "c"}));
}

TEST(Lignes, UneCompositionNEstPasUneRemarqueEtResteEnPlace) {
    const std::string composition("{{Entréeµ8880000000284|Salade¦|¦}}"_t);
    const std::string menu = "8880000000574  |DES:Menu|PVE:15.00|FA1:10|FA2:98|" + composition;
    EXPECT_TRUE(lignes::est_menu_a_prix_fixe(menu));
    EXPECT_TRUE(lignes::segments(menu).empty());
    EXPECT_EQ(lignes::composition(menu), composition.substr(2, composition.size() - 4));
    const std::string validee = lignes::validee(menu, 1, Remarques{"Lasagnes"});
    EXPECT_EQ(validee, menu + " ##QUA:001.00##{Lasagnes}");
    EXPECT_EQ(lignes::segments(validee), Remarques{"Lasagnes"});
    EXPECT_EQ(lignes::validee(validee, 2, Remarques{"Frites"}), menu + "  ##QUA:002.00##{Frites}");

    const std::string ouverte = menu.substr(0, menu.size() - 2);  // without "}}"
    std::string l = ouverte;
    for (const std::string r : {"Lasagnes", "Frites", ""}) {
        l = lignes::validee(l, 2, Remarques{r});
        EXPECT_EQ(lignes::composition(l), lignes::composition(menu));
        EXPECT_EQ(lignes::segments(l), r.empty() ? Remarques{} : Remarques{r});
        EXPECT_EQ(lignes::quantite(l), 2);
    }
    EXPECT_EQ(l, ouverte + "   ##QUA:002.00##");
    EXPECT_FALSE(lignes::composition("{a}{b}").has_value());
}

TEST(Complements, LesRangsSuiventLesRemarquesEtNEnPerdentAucune) {
    complements::prend("1|DES:x{a}{b}");
    ASSERT_EQ(complements::rangs().size(), 20u);
    complements::bascule(" c ");
    complements::pose(5, "{d|e}");
    complements::retire(0);
    EXPECT_EQ(complements::rangs()[0], "b");
    EXPECT_EQ(complements::rangs()[1], "c");
    EXPECT_EQ(complements::rangs()[4], "(d/e)");
    EXPECT_EQ(complements::rangs().size(), 20u);
    complements::pose(99, "hors");
    complements::retire(99);

    complements::prend(lignes::validee(article, 1, Remarques(25, "x")));
    complements::bascule("y");
    ASSERT_EQ(complements::rangs().size(), 25u) << "no row is free";
    complements::retire(3);
    complements::bascule("y");
    EXPECT_EQ(complements::rangs()[24], "y");
    EXPECT_EQ(lignes::segments(lignes::validee(article, 1, complements::rangs())).size(), 25u);
}

TEST(Complements, UnChoixSePrendEtSeRend) {
    complements::prend("1|DES:x{Sauce Poivre}");
    for (const char* choix : {"Frites", "Sel {fin}|", "Riz"}) complements::bascule(choix);
    complements::bascule("  Frites ");
    const auto& rangs = complements::rangs();
    EXPECT_EQ(Remarques(rangs.begin(), rangs.begin() + 4), (Remarques{"Sauce Poivre", "Sel (fin)/", "Riz", ""}));
    EXPECT_EQ(rangs.back(), "") << "a remark typed there begins with what is typed";
    EXPECT_TRUE(complements::est_pris("Sel {fin}|")) << "as the row holds it";
    EXPECT_FALSE(complements::est_pris("Poivre"));
    EXPECT_TRUE(complements::est_marque("Poivre"));
    EXPECT_FALSE(complements::est_marque("Sauce"));
    EXPECT_FALSE(complements::est_marque("  "));

    complements::pose(0, "  ");
    complements::bascule("");
    EXPECT_EQ(rangs[0], "Sel (fin)/") << "an empty choice closes the first gap";
    EXPECT_EQ(rangs.size(), 20u);
}

}  // namespace
