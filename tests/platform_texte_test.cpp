// The text of the page 1252, and the arithmetic of the clock.
#include "platform/systeme/texte.h"

#include <gtest/gtest.h>

#include "platform/systeme/horloge.h"

namespace {

using horloge::DateHeure;

TEST(Texte, ChaqueOctetRevientDeUtf8) {
    for (int i = 0; i < 256; ++i) {
        const std::string t(1, static_cast<char>(i));
        EXPECT_EQ(texte::depuis_utf8(texte::vers_utf8(t)), t) << i;
        const auto utf16 = texte::vers_utf16(t);
        ASSERT_EQ(utf16.size(), 1u);
        EXPECT_EQ(texte::octet(utf16[0]), i);
    }
    EXPECT_EQ(texte::depuis_utf8("Œufs à 3 €"),
              "\x8C"
              "ufs \xE0 3 \x80");
    EXPECT_EQ("¤Ððµ¦§"_t, "\xA4\xD0\xF0\xB5\xA6\xA7");
}

TEST(Texte, UnUtf8FauxOuHorsDeLaPageEstRefuse) {
    for (const char* faux :
         {"\xC3", "\xC3(", "\xC0\xAF", "\xE0\x80\xAF", "\x80", "\xF5\x80\x80\x80", "寿司", "\xF0\x9F\x8D\x95"}) {
        EXPECT_FALSE(texte::depuis_utf8(faux)) << faux;
    }
    EXPECT_EQ(texte::depuis_utf8_tolerant("a寿é\xC3"), "a?\xE9?");
}

TEST(Texte, LesLettresAccentueesOntDeuxCasses) {
    EXPECT_EQ(texte::majuscules("crème brûlée à l'œil ÿ × ÷"_t), "CRÈME BRÛLÉE À L'ŒIL Ÿ × ÷"_t);
    EXPECT_EQ(texte::minuscules("CRÈME ŒIL Ÿ × ÷ ß"_t), "crème œil ÿ × ÷ ß"_t);
    EXPECT_EQ(texte::pour_chercher("ÀÁÂÃÄÅàåÆæÇçÈËêÌÏîÐðÑñÒÖø×÷ÙÜûÝýÞþŸÿß"_t),
              "aaaaaaaaaeaecceeeiii  nnooo  uuuyy  yyss");
    EXPECT_EQ(texte::pour_chercher("Bœuf d'Aubrac, 3 ŠŽ…"_t), "boeuf d aubrac  3 sz ");
}

TEST(Texte, LesColonnesEtLesLignesNeSortentJamaisDuTexte) {
    EXPECT_EQ(texte::colonnes("abcdef", 3, 2), "cd");
    EXPECT_EQ(texte::colonnes("abc", 3, 9), "c");
    EXPECT_EQ(texte::colonnes("abc", 4), "");
    EXPECT_EQ(texte::colonnes("abc", 0, 2), "");
    EXPECT_EQ(texte::complete("abc", 2) + texte::complete("a", 3), "aba  ");
    EXPECT_EQ(texte::rogne("  a b\t "), "a b\t");
    const std::vector<std::string_view> attendues{"a", "", "b\rc", "d"};
    EXPECT_EQ(texte::lignes("a\r\n\nb\rc\r\nd"), attendues);
    EXPECT_TRUE(texte::lignes("").empty());
}

TEST(Horloge, LesSecondesPassentLesFinsDeMoisEtDAnnee) {
    const std::tuple<std::string_view, std::int64_t, std::string_view> table[] = {
        {"2021-12-31 23:59:59", 1, "2022-01-01 00:00:00"},
        {"2022-01-01 00:00:00", -1, "2021-12-31 23:59:59"},
        {"2020-02-28 23:59:30", 60, "2020-02-29 00:00:30"},
        {"2100-02-28 12:00:00", 86400, "2100-03-01 12:00:00"},
        {"2020-03-01 00:00:00", -86400, "2020-02-29 00:00:00"},
        {"2021-05-19 12:30:00", 365 * 86400, "2022-05-19 12:30:00"}};
    for (const auto& [depart, secondes, arrivee] : table) {
        const auto de = horloge::depuis_texte(depart), a = horloge::depuis_texte(arrivee);
        ASSERT_TRUE(de && a) << depart;
        EXPECT_EQ(horloge::plus_secondes(*de, secondes), *a) << depart;
    }
}

TEST(Horloge, UneDateQuiNExistePasEstRefusee) {
    for (const auto* faux : {"2021-02-29 12:00:00", "2021-13-01 12:00:00", "2021-00-01 12:00:00", "2021-05-19 24:00:00",
                             "2021-05-19 12:60:00", "2021-05-19", "2021-05-19 12:30:00 ", "2021-5-19 12:30:00", "",
                             "0000-01-01 00:00:00"}) {
        EXPECT_FALSE(horloge::depuis_texte(faux)) << faux;
    }
}

}  // namespace
