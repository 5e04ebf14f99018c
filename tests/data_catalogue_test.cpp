// The catalogue, the styles and the key program, also from files that are cut, damaged, huge or missing.
#include "data/catalogue.h"

#include "atelier.h"
#include "data/styles.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace {

class CatalogueTest : public tests::Atelier {
  protected:
    const catalogue::Tables& lis(std::string_view contenu) const {
        terrain.pose("worvalune.wdo", contenu);
        catalogue::charge_catalogue();
        return catalogue::courant();
    }
};

using Articles = std::vector<std::string_view>;

TEST_F(CatalogueTest, ChaqueGenreDeLigneVaDansSaTable) {
    terrain.pose("orvalune.wdo", "\r\n  \r\nun\r\n#DIR#C:\\Orvalune\r\ntrois");
    const auto& t =
        lis("#SERV#07-Nadia\r\n#SERV#21 Trop\r\n#SERV#0 -Zero\n#SERV#07 Nadia B.\r\n#SERV#-1 Non\r\n"
            "#FAMI#02 Viandes|COU:7\r\n#FAMI#03 Poissons\r\n#FAM\r\n"
            "#ARTI#000018880000000024  |DES:A|FA1:2|FA2:98\r\n#ARTI#000028880000000031  |DES:B|FA1:2\r\n"
            "#ARTI#000038880000000048  |DES:Sans famille\r\n#ARTI#00004x|FA1:121|\r\n#ARTI#00005x|FA1:120|\r\n"
            "#TABL#5\r\n#TABL#005\r\n#TABL#1234\r\n#AUTRE#\r\n#CCOF#9\r\n#CCOF#3125\r\n#CCOU#0660000\r\n");
    EXPECT_EQ(t.noms_serveurs[7], "Nadia B.");
    EXPECT_EQ(t.noms_serveurs[0], "Zero");
    EXPECT_EQ(t.noms_serveurs[1], "");
    EXPECT_EQ(t.noms_familles[2], "Viandes|COU:7");
    EXPECT_EQ(t.articles[2], (Articles{"8880000000024  |DES:A|FA1:2|FA2:98", "8880000000031  |DES:B|FA1:2"}));
    EXPECT_EQ(t.articles[0], Articles{"8880000000048  |DES:Sans famille"});
    EXPECT_EQ(t.articles[120].size(), 1u);
    EXPECT_EQ(t.liste_tables, "xxx005|005|123|");
    EXPECT_EQ(catalogue::tables(), (std::vector<std::string>{"005", "005", "123"}));
    EXPECT_TRUE(catalogue::table_connue("005"));
    EXPECT_FALSE(catalogue::table_connue("015"));
    EXPECT_EQ(t.couleurs_familles, "3125" + std::string(20, ' '));
    const int chiffres[] = {3, 1, 7, 5, 0};
    for (int n = 0; n < 5; ++n) EXPECT_EQ(catalogue::chiffre_famille(n), chiffres[n]) << n;
    EXPECT_EQ(catalogue::chiffre_couleur(t.couleurs_serveurs, 1), 6);
    EXPECT_EQ(t.rep_catalogue, "C:\\Orvalune");
    EXPECT_EQ(t.lignes_orvalune[1], "un");
    EXPECT_EQ(t.lignes_orvalune[3], "trois");
    EXPECT_EQ(t.nb_lignes_orvalune, 3);
}

TEST_F(CatalogueTest, CeQuiDepasseLesTablesEstCompteMaisPasGarde) {
    std::string c;
    for (int i = 1; i <= 301; ++i) c += "#ARTI#00000" + std::to_string(i) + "|FA1:7\r\n";
    std::string entete;
    for (int i = 1; i <= 20; ++i) entete += "ligne " + std::to_string(i) + "\r\n\r\n";
    terrain.pose("orvalune.wdo", entete);
    const auto& t = lis(c);
    EXPECT_EQ(t.nb_articles[7], 301);
    EXPECT_EQ(t.articles[7].size(), 300u);
    EXPECT_EQ(t.articles[7].back(), "300|FA1:7");
    EXPECT_EQ(t.nb_lignes_orvalune, 20);
    EXPECT_EQ(t.lignes_orvalune[15], "ligne 15");
    EXPECT_EQ(t.liste_tables, "xxx");

    const auto& u = lis("#ARTI#00000a|FA1:7\r\n#ARTI#00000   \r\n#ARTI#00000b|FA1:7\r\n#ARTI#00000\r\n");
    EXPECT_EQ(u.nb_articles[7], 2) << "a new reading begins at nothing";
    EXPECT_TRUE(catalogue::articles_de(0).empty()) << "a blank record ends a family";
    EXPECT_EQ(catalogue::articles_de(7).size(), 2u);
    EXPECT_TRUE(catalogue::articles_de(-1).empty());
    EXPECT_TRUE(catalogue::articles_de(121).empty());
}

TEST_F(CatalogueTest, UneRelectureImpossibleLaisseLaCarteEnMain) {
    lis("#SERV#01 Sophie\r\n#ARTI#000018880000000024  |DES:Une longue pièce|PVE:1|FA1:2\r\n");
    std::filesystem::remove("worvalune.wdo");
    catalogue::charge_catalogue();
    EXPECT_EQ(catalogue::courant().noms_serveurs[1], "Sophie");
    std::filesystem::create_directory("worvalune.wdo");
    catalogue::charge_catalogue();
    ASSERT_EQ(catalogue::articles_de(2).size(), 1u);
    EXPECT_TRUE(catalogue::articles_de(2)[0].starts_with("8880000000024  |DES:Une")) << "and its text is still there";

    const std::string entier(catalogue::articles_de(2)[0]);
    EXPECT_EQ(catalogue::complete_article("8880000000024  |DES:Une lon          "), entier);
    EXPECT_EQ(catalogue::complete_article("8880000000024"), entier);
    EXPECT_EQ(catalogue::complete_article("8880000000024  |DES:Autre"), "8880000000024  |DES:Autre");
    EXPECT_EQ(catalogue::complete_article("888"), "888");
}

using StylesTest = tests::Atelier;

TEST_F(StylesTest, LeFichierDesChoixEstRempliUneFoisPourToutes) {
    const auto rempli = [&](std::string_view avant) {
        terrain.pose("w_styl72.wdo", avant);
        EXPECT_TRUE(styles::init_styles());
        return terrain.lis("w_styl72.wdo");
    };
    horloge::rend_virtuelle({});
    const std::string f = rempli(std::string(4000, '\0'));
    horloge::rend_reelle();
    ASSERT_EQ(f.size(), 501u * 128);
    EXPECT_EQ(f.substr(0, 16), "#INIT#19-05-202 ");
    EXPECT_EQ(f.substr(19 * 128, 128), std::string(15, ' ') + texte::complete("Viandes", 101) +
                                           std::string("\x05\x05\x66\0\xFD\x67\x06\0\0\0\0\0", 12));
    EXPECT_EQ(f.substr(23 * 128, 128), std::string(116, ' ') + std::string("\0\0\0\0\xFF\xFF\xFF\0\0\0\0\0", 12));
    const auto choix = styles::lis();
    ASSERT_EQ(choix.size(), 502u);
    EXPECT_EQ(choix[29].libelle, "Béarnaise"_t);
    EXPECT_EQ(choix[20].texte, 0x660505);
    EXPECT_EQ(choix[28].fond, 16567555);
    EXPECT_EQ(choix[91].libelle, "Buffet Dessert");
    EXPECT_EQ(rempli(std::string(501 * 128, 'x') + "au-delà").substr(500 * 128), f.substr(500 * 128) + "au-delà");
    const std::string court = "#INIT#" + std::string(122, 'q') + "court";
    EXPECT_EQ(rempli(court), court) << "what is initialised stays, whatever it holds";
    EXPECT_EQ(styles::lis()[2].libelle, "");
    EXPECT_EQ(styles::lis()[2].fond, 0xFFFFFF);
    std::filesystem::remove("w_styl72.wdo");
    std::filesystem::create_directory("w_styl72.wdo");
    EXPECT_FALSE(styles::init_styles());
    EXPECT_EQ(styles::lis().size(), 502u);
}

using ProgrammeTest = tests::Atelier;
using programme_touches::Champ;
using programme_touches::Ligne;

TEST_F(ProgrammeTest, LeProgrammeVideEstCreeEtUnCourtRefait) {
    terrain.pose("progppb.wdo", std::string(250, 'x'));
    ASSERT_TRUE(programme_touches::prepare());
    std::string vide;
    for (int i = 0; i < 5000; ++i) vide += std::string(254, ' ') + "\r\n";
    EXPECT_TRUE(terrain.lis("progppb.wdo") == vide);
    programme_touches::ferme();

    terrain.pose("progppb.wdo", std::string(251, 'x'));
    ASSERT_TRUE(programme_touches::prepare());
    EXPECT_EQ(terrain.lis("progppb.wdo").size(), 251u) << "one byte more, and it is kept";
    EXPECT_EQ(programme_touches::lis_page(0).size(), 95u);
    EXPECT_EQ(programme_touches::lis_page(0)[0].libelle(), std::string(40, 'x'));
    EXPECT_EQ(programme_touches::lis_page(49)[94].action(), "");
    EXPECT_TRUE(programme_touches::lis_page(50).empty());
    EXPECT_TRUE(programme_touches::lis_page(-1).empty());
}

TEST_F(ProgrammeTest, UneLigneEcriteGardeLesOctetsQueLEditeurNeMontrePas) {
    terrain.touche(49, 95, "Bières", "#FAMI#05", "23", "212", "4541378", "18");
    ASSERT_TRUE(programme_touches::prepare());
    Ligne l = programme_touches::lis_page(49)[94];
    const std::vector<int> lus = {l.largeur(), l.hauteur(), l.image(), l.taille(), l.couleur(), l.visible()};
    EXPECT_EQ(lus, (std::vector<int>{2, 3, 212, 18, 4541378, 1}));
    l.record.replace(57, 2, "?!").replace(77, 77, std::string(77, 'h'));
    l.pose(Champ::libelle, std::string(50, 'L'));
    l.pose(Champ::lh, "0");
    l.pose(Champ::couleur, "0");
    l.pose(Champ::action, "");
    ASSERT_EQ(programme_touches::ecrit_ligne(49, 95, l), fichiers::Issue::fait);
    const std::string r = terrain.lis("progppb.wdo").substr((49 * 100 + 94) * 256, 256);
    EXPECT_EQ(r.substr(15, 44), std::string(40, 'L') + "0 ?!");
    EXPECT_EQ(r.substr(67), "0" + std::string(9, ' ') + std::string(77, 'h') + std::string(100, ' ') + "\r\n");
    l = programme_touches::lis_page(49)[94];
    EXPECT_EQ((std::vector<int>{l.largeur(), l.hauteur(), l.couleur()}), (std::vector<int>{1, 1, 0}))
        << "black, where a blank is the plain key";
    l.pose(Champ::couleur, "");
    EXPECT_EQ(l.couleur(), -1);

    Ligne titres = programme_touches::lis_titres(3);
    titres.pose(Champ::libelle, "Carte");
    titres.pose(Champ::action, "du jour");
    ASSERT_EQ(programme_touches::ecrit_titres(3, titres), fichiers::Issue::fait);
    EXPECT_EQ(programme_touches::lis_titres(3).libelle(), "Carte");
    EXPECT_EQ(terrain.lis("progppb.wdo").size(), 1280000u);
    for (const auto& [page, ligne] : {std::pair{50, 1}, std::pair{-1, 1}, std::pair{0, 0}, std::pair{0, 96}}) {
        EXPECT_EQ(programme_touches::ecrit_ligne(page, ligne, l), fichiers::Issue::refuse);
    }
}

}  // namespace
