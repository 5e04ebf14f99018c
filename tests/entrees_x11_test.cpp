// What the events of an X11 server become, made by hand; and how a sleep of the machine shows.
#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>

#include "evenements.h"
#include "platform/ecran/entrees_x11.h"
#include "platform/ecran/veille_x11.h"

namespace {

using namespace ecran;

/// Events to a decoder, and what it made of them.
struct EntreesDeX11 : testing::Test {
    /// A key's number is the character that it types; 1 to 3 are the special keys.
    EntreesX11 entrees{[](const xcb_input_key_press_event_t& e) {
        if (e.detail <= 3) return Frappe{static_cast<Cle>(e.detail - 1), {}};
        return Frappe{{}, std::u32string(1, e.detail)};
    }};

    /// As the server sends it: the mask of the buttons lies behind it.
    struct Envoye {
        xcb_input_button_press_event_t e{};
        std::uint32_t boutons = 0;
    };
    std::string recoit(const Envoye& e) {
        entrees.decode(reinterpret_cast<const xcb_ge_generic_event_t&>(e));
        return vide(entrees);
    }
    /// What these words become. A word is who ("1" a finger that came alone, "+2" another one, "s" the mouse, "r" its
    /// right button, "d" the mouse that the server makes of a finger), what (">" down, "~" moved, "-" moved without a
    /// button, "<" up) and where.
    std::string recus(const std::string& mots) {
        std::string t;
        std::istringstream flux(mots);
        for (std::string mot; flux >> mot;) {
            const std::string lu = recoit(evenement(mot));
            if (!lu.empty()) t += (t.empty() ? "" : " ") + lu;
        }
        return t;
    }
    std::string touche(std::uint32_t numero, bool repetee = false) {
        Envoye e;
        e.e.event_type = XCB_INPUT_KEY_PRESS;
        e.e.detail = numero;
        e.e.flags = repetee ? XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT : 0;
        return recoit(e);
    }

  private:
    static Envoye evenement(const std::string& mot) {
        constexpr std::uint16_t doigt[] = {XCB_INPUT_TOUCH_BEGIN, XCB_INPUT_TOUCH_UPDATE, 0, XCB_INPUT_TOUCH_END};
        constexpr std::uint16_t souris[] = {XCB_INPUT_BUTTON_PRESS, XCB_INPUT_MOTION, XCB_INPUT_MOTION,
                                            XCB_INPUT_BUTTON_RELEASE};
        const auto fin = mot.find_first_of(">~-<");
        const std::size_t geste = std::string_view(">~-<").find(mot[fin]);
        const bool est_souris = std::string_view("srd").find(mot[0]) != std::string_view::npos;
        Envoye e;
        double x = 0, y = 0;
        std::sscanf(mot.c_str() + fin + 1, "%lf,%lf", &x, &y);
        e.e.event_x = static_cast<xcb_input_fp1616_t>(x * 65536);
        e.e.event_y = static_cast<xcb_input_fp1616_t>(y * 65536);
        e.e.event_type = est_souris ? souris[geste] : doigt[geste];
        e.e.buttons_len = 1;
        e.boutons = mot[fin] == '~' ? 1U << 1 : 0;
        if (est_souris) {
            e.e.detail = mot[0] == 'r' ? 3 : 1;
            e.e.flags = mot[0] == 'd' ? XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED : 0;
        } else {
            e.e.detail = static_cast<std::uint32_t>(std::stoi(mot));
            e.e.flags = mot[0] == '+' ? 0 : XCB_INPUT_TOUCH_EVENT_FLAGS_TOUCH_EMULATING_POINTER;
        }
        return e;
    }
};

TEST_F(EntreesDeX11, UnDoigtSeulAgit) {
    EXPECT_EQ(recus("7>10.9,20 7~11,21 7~-0.5,22 7<13,23"), "appui:10,20 glisse:11,21 glisse:-1,22 relache:13,23");
    EXPECT_EQ(recus("1>10,10 +2>90,90 +2~91,91 1<10,10 +3>50,50 +2<92,92 +3<50,50 4>30,30"),
              "appui:10,10 relache:10,10 appui:30,30");
    EXPECT_EQ(recus("5>60,60 4<30,30 5<60,60"), "perdu appui:60,60 relache:60,60") << "the first one's end was lost";
    recus("6>10,10");
    entrees.lache();
    EXPECT_EQ(recus("6~11,11 6<11,11 8>20,20"), "perdu appui:20,20") << "hidden under the finger";
}

TEST_F(EntreesDeX11, LaSourisDUnDoigtNeComptePas) {
    EXPECT_EQ(recus("1>10,10 d>10,10 d~12,12 1~12,12 d<12,12 1<12,12"), "appui:10,10 glisse:12,12 relache:12,12");
    EXPECT_EQ(recus("s-5,5 r>5,5 r<5,5 s>20,20 s~21,21 1>80,80 1<80,80 s<22,22"),
              "appui:20,20 glisse:21,21 relache:22,22")
        << "a palm beside a pen";
    EXPECT_EQ(recus("s>20,20 s-30,30 s<30,30"), "appui:20,20 perdu") << "released elsewhere, unheard";
}

TEST_F(EntreesDeX11, LeClavierDonneSesSignesEtSesTouches) {
    std::string lus;
    for (const std::uint32_t c : {0xE9, 0x20AC, 0x0153, 0x61, 0x3A9, 0x1F600, 0x7F, 0x85}) lus += touche(c) + " ";
    EXPECT_EQ(lus, "car:233 car:128 car:156 car:97     ");
    EXPECT_EQ(touche(1) + touche(2) + touche(3), "cle:0cle:1cle:2");
    EXPECT_EQ(touche(1, true) + touche(2, true) + touche(3, true) + touche('a', true), "cle:2car:97") << "held down";
}

TEST(Sommeil, LHeureQuiAAvanceSansLaMachine) {
    constexpr std::int64_t seconde = 1'000'000'000;
    Sommeil s;
    EXPECT_FALSE(s.constate(500 * seconde, 100 * seconde)) << "it slept before the start";
    EXPECT_FALSE(s.constate(900 * seconde + 40, 500 * seconde)) << "a long wait awake";
    EXPECT_TRUE(s.constate(930 * seconde, 510 * seconde));
    EXPECT_FALSE(s.constate(931 * seconde, 511 * seconde)) << "told once";
}

}  // namespace
