// The settings store as it is found: missing, short, cut, damaged, full of nonsense.
#include "atelier.h"
#include "platform/systeme/texte.h"

namespace {

using fichiers::Issue;

class ReglagesTest : public tests::Atelier {
  protected:
    std::string record(int n) const {
        return terrain.lis("wwinqx42.wdo").substr(static_cast<std::size_t>(n - 1) * 20, 20);
    }
};

TEST_F(ReglagesTest, UnMagasinTropCourtEstRefaitUnPlusLongComplete) {
    terrain.pose("wwinqx42.wdo", std::string(399, 'x'));
    ASSERT_TRUE(reglages::ouvre());
    EXPECT_EQ(terrain.lis("wwinqx42.wdo"), std::string(40000, ' '));
    reglages::ferme();

    terrain.pose("wwinqx42.wdo", std::string(400, ' ') + "#I#9");
    ASSERT_TRUE(reglages::ouvre());
    EXPECT_EQ(reglages::nombre(21), 9) << "half a record is read as far as it goes";
    EXPECT_EQ(reglages::nombre(25), 6);
    EXPECT_EQ(reglages::texte(1999), "");
    EXPECT_EQ(terrain.lis("wwinqx42.wdo").substr(400), "#I#9" + std::string(76, ' ') + "#I#006" + std::string(14, ' '));
}

TEST_F(ReglagesTest, UnReglagePrendSonDefautLaPremiereFois) {
    ASSERT_TRUE(reglages::ouvre());
    const std::pair<int, std::string_view> defauts[] = {
        {3, "20"},  {5, "14"},  {6, "2"},   {7, "2"},    {8, "10"},   {10, "14"}, {11, "2"},  {12, "2"},
        {13, "10"}, {20, "18"}, {21, "2"},  {22, "2"},   {23, "10"},  {30, "20"}, {40, "20"}, {41, "18"},
        {42, "20"}, {50, "1"},  {51, "28"}, {25, "006"}, {26, "008"}, {60, "36"}, {61, "3"},  {62, "8"}};
    for (const auto& [n, defaut] : defauts) {
        EXPECT_EQ(reglages::nombre(n), std::stoi(std::string(defaut))) << n;
        EXPECT_EQ(record(n), texte::complete("#I#" + std::string(defaut), 20)) << n;
        ASSERT_EQ(reglages::ecrit(n, "#I#1"), Issue::fait);
        EXPECT_EQ(reglages::nombre(n), 1) << n << " may be that small";
    }
    for (const int n : {1, 2, 55, 200, 201, 202, 1701}) EXPECT_EQ(reglages::nombre(n), 0) << "no default, not written";
    EXPECT_EQ(record(2) + record(55), std::string(40, ' '));
}

TEST_F(ReglagesTest, UneValeurQuiNeVautRienNeNuitPas) {
    const std::pair<std::string_view, int> table[] = {
        {"#I#12", 12},        {"#I# 7 ", 7}, {"#I#", 6}, {"#I#0", 6},     {"#I#-4", 6}, {"#I#abc", 6},
        {"#I#99999999", 100}, {"#i#12", 6},  {"12", 6},  {"#I#12.9", 12}, {"#I#3,5", 3}};
    for (const auto& [contenu, attendu] : table) {
        terrain.regle(25, contenu);
        ASSERT_TRUE(reglages::ouvre());
        EXPECT_EQ(reglages::nombre(25), attendu) << contenu;
        const std::string_view reste = contenu.starts_with("#I#") ? contenu : "#I#006";
        EXPECT_EQ(record(25), texte::complete(reste, 20)) << "what is set stays as it was entered";
        reglages::ferme();
    }
    std::string zeros(40000, '\0');
    terrain.pose("wwinqx42.wdo", zeros.replace(480, 7, "#I#11\r\n"));
    ASSERT_TRUE(reglages::ouvre());
    EXPECT_EQ(reglages::nombre(25), 11);
    EXPECT_EQ(reglages::nombre(26), 8);
    EXPECT_EQ(reglages::texte(55), "");
    EXPECT_EQ(reglages::brut(55), std::string(20, ' '));
}

}  // namespace
