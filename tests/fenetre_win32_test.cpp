// What the messages of Windows become, posted by hand; then the real window, where there is a display.
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <string>
#include <thread>

#include "evenements.h"
#include "platform/ecran/entrees_win32.h"
#include "platform/ecran/fenetre.h"

namespace {

using namespace ecran;
using Sorte = Evenement::Sorte;

constexpr WPARAM seul = POINTER_MESSAGE_FLAG_PRIMARY;

/// Messages to a decoder, and what it made of them.
struct EntreesWin32 : testing::Test {
    std::vector<TOUCHINPUT> touches;  ///< what the next WM_TOUCH brings
    std::vector<DWORD> stylos;        ///< contacts that are pens
    ecran::EntreesWin32 entrees{[this](WPARAM, LPARAM) { return touches; },
                                [this](DWORD contact) -> DWORD {
                                    return std::count(stylos.begin(), stylos.end(), contact) > 0 ? PT_PEN : PT_TOUCH;
                                }};

    void TearDown() override { SetMessageExtraInfo(0); }

    std::optional<LRESULT> recoit(UINT message, WPARAM wp = 0, LPARAM lp = 0) {
        return entrees.decode(nullptr, message, wp, lp);
    }
    std::string lues() { return vide(entrees); }
    /// What these words become. A word is who ("1" a contact, "+2" one that is not the primary, "s" the mouse, "d" and
    /// "p" the mouse that the system makes of a finger and of a pen), what (">" down, "~" moved, "<" up, "x" up and
    /// cancelled,
    /// "!" taken away, "o" out of reach) and where.
    std::string recus(const std::string& mots) {
        std::istringstream flux(mots);
        for (std::string mot; flux >> mot;) joue(mot);
        return lues();
    }
    /// One WM_TOUCH of an older system, with all these words' contacts.
    std::optional<LRESULT> recoit_touches(const std::string& mots) {
        touches.clear();
        std::istringstream flux(mots);
        for (std::string mot; flux >> mot;) {
            const Mot m(mot);
            constexpr DWORD gestes[] = {TOUCHEVENTF_DOWN, TOUCHEVENTF_MOVE, TOUCHEVENTF_UP};
            TOUCHINPUT t{};
            t.x = m.x * 100 + 49;
            t.y = m.y * 100 + 49;
            t.dwID = static_cast<DWORD>(std::stoi(m.qui));
            t.dwFlags = gestes[m.geste] | (m.qui[0] == '+' ? 0 : TOUCHEVENTF_PRIMARY);
            touches.push_back(t);
        }
        return recoit(WM_TOUCH);
    }

  private:
    struct Mot {
        std::string qui;
        std::size_t geste;
        int x = 0, y = 0;
        explicit Mot(const std::string& mot) : qui(mot, 0, mot.find_first_of(">~<x!o")) {
            geste = std::string_view(">~<x!o").find(mot[qui.size()]);
            std::sscanf(mot.c_str() + qui.size() + 1, "%d,%d", &x, &y);
        }
    };
    void joue(const std::string& mot) {
        const Mot m(mot);
        constexpr UINT pointeur[] = {WM_POINTERDOWN, WM_POINTERUPDATE,         WM_POINTERUP,
                                     WM_POINTERUP,   WM_POINTERCAPTURECHANGED, WM_POINTERLEAVE};
        constexpr UINT souris[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, 0, WM_CAPTURECHANGED};
        const LPARAM ou = MAKELPARAM(m.x, m.y);
        if (const auto sorte = std::string_view("sdp").find(m.qui); sorte != std::string_view::npos) {
            constexpr LPARAM faite_de[] = {0, 0xFF515780, 0xFF515700};
            SetMessageExtraInfo(faite_de[sorte]);
            recoit(souris[m.geste], souris[m.geste] == WM_LBUTTONUP ? 0 : MK_LBUTTON, ou);
            SetMessageExtraInfo(0);
            return;
        }
        const WPARAM drapeaux =
            (m.qui[0] == '+' ? 0 : seul) | (mot[m.qui.size()] == 'x' ? POINTER_MESSAGE_FLAG_CANCELED : 0);
        const auto rendu = recoit(pointeur[m.geste], MAKEWPARAM(std::stoi(m.qui), drapeaux), ou);
        EXPECT_EQ(rendu.has_value(), pointeur[m.geste] != WM_POINTERLEAVE) << mot << " is left to the system or not";
    }
};

TEST_F(EntreesWin32, UnDoigtAppuieGlisseEtSeLeve) {
    EXPECT_EQ(recus("7~5,5 7>10,20 7~11,21 7~12,22 7<13,23 7!0,0"), "appui:10,20 glisse:12,22 relache:13,23")
        << "a pen hovers first; a release takes the capture away";
    EXPECT_EQ(recus("8>-4,3 8<-4,3"), "appui:-4,3 relache:-4,3") << "on a monitor to the left";
}

TEST_F(EntreesWin32, LeSecondDoigtNeFaitRienTantQueTousNeSontPasLeves) {
    EXPECT_EQ(recus("1>10,10 +2>90,90 +2~91,91 1<10,10 +3>50,50 +2<92,92 +3<50,50"), "appui:10,10 relache:10,10");
    EXPECT_EQ(recus("4>30,30"), "appui:30,30");
}

TEST_F(EntreesWin32, UnDoigtRetireNeToucheRienEtNAssourditPasLEcran) {
    EXPECT_EQ(recus("1>10,10 1!10,10 2>10,10 2x10,10 3>10,10"), "appui:10,10 perdu appui:10,10 perdu appui:10,10");
    EXPECT_EQ(recoit(WM_CANCELMODE), std::nullopt) << "the system has its part to do";
    EXPECT_EQ(recus("3<10,10"), "perdu");
    EXPECT_EQ(recus("4>10,10 5>60,60 5<60,60"), "appui:10,10 perdu appui:60,60 relache:60,60")
        << "its release never came: the next finger, alone on the glass, acts all the same";
}

TEST_F(EntreesWin32, UnePaumeACoteDuStyletNAgitPasEtNeLuiPrendRien) {
    stylos = {1, 3};
    EXPECT_EQ(recus("1>10,10 2>80,80 2~81,81 1<11,11 3>20,20 2<81,81 3o0,0 4>30,30 s>50,50 4<30,30"),
              "appui:10,10 relache:11,11 appui:20,20 perdu appui:30,30 relache:30,30");
    EXPECT_EQ(recus("s>50,50"), "appui:50,50") << "a contact that was lost does not deafen the mouse";
}

TEST_F(EntreesWin32, UnInstalleurQuiVeutLeFichierFinitLeLogiciel) {
    EXPECT_EQ(recoit(WM_QUERYENDSESSION, 0, ENDSESSION_CLOSEAPP), TRUE);
    EXPECT_EQ(recoit(WM_ENDSESSION, FALSE, ENDSESSION_CLOSEAPP), std::nullopt);
    EXPECT_EQ(lues(), "extinction");
    EXPECT_EQ(recoit(WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP), 0);
    EXPECT_EQ(lues(), "fin");
    EXPECT_EQ(recoit(WM_ENDSESSION, TRUE, 0), std::nullopt) << "the system ends it itself";
}

TEST_F(EntreesWin32, LaSourisQueLeSystemeFaitDUnDoigtNeComptePas) {
    EXPECT_EQ(recus("d>1,1 d<1,1"), "appui:1,1 relache:1,1") << "it reports nothing else: then it does count";
    EXPECT_EQ(recus("1>10,10 1<10,10 d>10,10 d~10,10 d<10,10 p>10,10 p<10,10 s>20,20 s~21,21 s<22,22"),
              "appui:10,10 relache:10,10 appui:20,20 glisse:21,21 relache:22,22");
}

TEST_F(EntreesWin32, LaSourisPerdSonBouton) {
    EXPECT_EQ(recus("s>10,10 s!0,0 s<10,10 s>10,10"), "appui:10,10 perdu appui:10,10");
    recoit(WM_MOUSEMOVE, 0, MAKELPARAM(70, 70));  // released outside, unheard
    EXPECT_EQ(recus("s>30,30 s<30,30"), "perdu appui:30,30 relache:30,30");
}

TEST_F(EntreesWin32, LesDoigtsDUnSystemePlusAncien) {
    EXPECT_EQ(recoit_touches(""), std::nullopt) << "what cannot be read is the system's to close";
    EXPECT_EQ(recoit_touches("1>10,20"), 0);
    recoit_touches("1~11,21 +2>80,80");
    recoit_touches("+2<80,80 1<12,22");
    EXPECT_EQ(lues(), "appui:10,20 glisse:11,21 relache:12,22");
    for (const char* mot : {"3>10,20", "4>60,60", "4<60,60"}) recoit_touches(mot);
    EXPECT_EQ(lues(), "appui:10,20 perdu appui:60,60 relache:60,60") << "the first one's release never comes";
    EXPECT_EQ(recus("d>12,22 d<12,22"), "");
    EXPECT_EQ(recus("p>40,40 p<40,40"), "appui:40,40 relache:40,40") << "there a pen is a mouse";
}

TEST_F(EntreesWin32, LeClavierDonneSesSignesEtSesTouches) {
    for (const WPARAM c : {0xE9, 0x20AC, 0x0153, 0x61}) EXPECT_EQ(recoit(WM_CHAR, c), 0);
    for (const WPARAM c : {0x03A9, 0xD83D, 0x08, 0x0D, 0x1B, 0x7F}) EXPECT_EQ(recoit(WM_CHAR, c), 0);
    EXPECT_EQ(recoit(WM_DEADCHAR, '^'), std::nullopt);
    EXPECT_EQ(lues(), "car:233 car:128 car:156 car:97");

    for (const WPARAM cle : {VK_RETURN, VK_ESCAPE, VK_BACK}) recoit(WM_KEYDOWN, cle);
    EXPECT_EQ(recoit(WM_KEYDOWN, 'A'), std::nullopt);
    EXPECT_EQ(lues(), "cle:0 cle:1 cle:2");
    constexpr LPARAM tenue = 1 << 30;
    for (const WPARAM cle : {VK_RETURN, VK_ESCAPE, VK_BACK}) recoit(WM_KEYDOWN, cle, tenue);
    recoit(WM_CHAR, 'a', tenue);
    EXPECT_EQ(lues(), "cle:2 car:97") << "held down";

    EXPECT_EQ(recoit(WM_SYSKEYDOWN, VK_F4), std::nullopt) << "the system makes the end of it";
    EXPECT_EQ(recoit(WM_SYSCHAR, 'a'), 0) << "it would beep";
    EXPECT_EQ(recoit(WM_SYSCOMMAND, SC_KEYMENU | 3), 0) << "it would open the system's menu";
    EXPECT_EQ(recoit(WM_SYSCOMMAND, SC_CLOSE), std::nullopt);
    EXPECT_EQ(recoit(WM_CLOSE), 0);
    EXPECT_EQ(lues(), "fermeture");
}

TEST_F(EntreesWin32, LeSommeilLaSeanceEtLEcran) {
    const auto ecran = [this](BYTE etat) {
        POWERBROADCAST_SETTING reglage{etat_de_l_ecran, 1, {etat}};
        recoit(WM_POWERBROADCAST, PBT_POWERSETTINGCHANGE, reinterpret_cast<LPARAM>(&reglage));
    };
    ecran(1);  // told at once when it is asked for
    EXPECT_EQ(lues(), "");
    ecran(0);
    ecran(1);
    EXPECT_EQ(lues(), "reveil");
    recoit(WM_POWERBROADCAST, PBT_APMSUSPEND);
    EXPECT_EQ(lues(), "");
    recoit(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    recoit(WM_POWERBROADCAST, PBT_APMRESUMESUSPEND);
    EXPECT_EQ(lues(), "reveil") << "one sleep, two messages";

    recoit(WM_DISPLAYCHANGE, 32, MAKELPARAM(800, 1280));
    recoit(WM_SIZE, SIZE_RESTORED, MAKELPARAM(800, 1280));
    recoit(WM_DPICHANGED, MAKEWPARAM(144, 144));
    EXPECT_EQ(lues(), "repeindre");
    recoit(WM_SIZE, SIZE_MINIMIZED);
    recoit(WM_ENDSESSION, FALSE);
    EXPECT_EQ(lues(), "");
    EXPECT_EQ(recoit(WM_QUERYENDSESSION), TRUE);
    recoit(WM_ENDSESSION, TRUE);
    EXPECT_EQ(lues(), "extinction");
}

/// The real window over the whole screen.
struct FenetreWin32 : testing::Test {
    std::string refus;
    std::unique_ptr<Fenetre> fenetre = cree_fenetre(Mode::plein_ecran, "Essai", 0, 0, refus);
    HWND poignee = FindWindowW(L"Orvalune", L"Essai");

    void SetUp() override {
        if (!fenetre) GTEST_SKIP() << "no display";
        ASSERT_NE(poignee, nullptr);
        vide_la_file();
    }
    void vide_la_file() {
        while (fenetre->attend(50).sorte != Sorte::rien) continue;
    }
    Evenement apres(UINT message, WPARAM wp = 0, LPARAM lp = 0) {
        PostMessageW(poignee, message, wp, lp);
        return fenetre->attend(2000);
    }
    COLORREF pixel(int x, int y) const {
        const HDC dc = GetDC(poignee);
        const COLORREF c = GetPixel(dc, x, y);
        ReleaseDC(poignee, dc);
        return c;
    }
};

TEST_F(FenetreWin32, MontreLesZonesEtLesGardePourLeSysteme) {
    const TailleEcran t = fenetre->taille();
    EXPECT_EQ(t.largeur, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(t.hauteur, GetSystemMetrics(SM_CYSCREEN));
    Image image{t.largeur, t.hauteur, {}};
    image.pixels.resize(static_cast<std::size_t>(t.largeur) * t.hauteur);
    std::fill(image.pixels.begin(), image.pixels.end(), 0x00336699);
    const Zone tout[] = {{0, 0, t.largeur, t.hauteur}};
    fenetre->montre(image, tout);
    std::fill(image.pixels.begin(), image.pixels.end(), 0x00CC8844);
    const Zone deux[] = {{10, 10, 20, 20}, {-5, 30, 15, t.hauteur + 9}};
    fenetre->montre(image, deux);

    const auto verifie = [&] {
        const COLORREF avant = RGB(0x33, 0x66, 0x99), apres = RGB(0xCC, 0x88, 0x44);
        EXPECT_EQ(pixel(9, 9), avant);
        EXPECT_EQ(pixel(10, 10), apres);
        EXPECT_EQ(pixel(20, 19), avant);
        EXPECT_EQ(pixel(14, t.hauteur - 1), apres);
        EXPECT_EQ(pixel(15, 30), avant);
        EXPECT_EQ(pixel(t.largeur - 1, t.hauteur - 1), avant);
    };
    verifie();
    const HDC dc = GetDC(poignee);
    PatBlt(dc, 0, 0, t.largeur, t.hauteur, BLACKNESS);  // as if something had lain above it
    ReleaseDC(poignee, dc);
    ASSERT_EQ(pixel(9, 9), RGB(0, 0, 0));
    InvalidateRect(poignee, nullptr, TRUE);
    fenetre->attend(200);
    verifie();
}

TEST_F(FenetreWin32, SeReveilleDUnAutreFilEtVientDevant) {
    const auto debut = std::chrono::steady_clock::now();
    std::thread autre([&] { fenetre->reveille(); });
    EXPECT_EQ(fenetre->attend(20000).sorte, Sorte::rien);
    autre.join();
    std::thread encore([&] { fenetre->vient_devant(); });
    EXPECT_EQ(fenetre->attend(20000).sorte, Sorte::reveil);
    encore.join();
    EXPECT_LT(std::chrono::steady_clock::now() - debut, std::chrono::seconds(10));
    vide_la_file();
    EXPECT_EQ(GetForegroundWindow(), poignee);

    ShowWindow(poignee, SW_MINIMIZE);
    const TailleEcran avant = fenetre->taille();
    EXPECT_GT(avant.largeur, 100) << "hidden away, it keeps its size";
    fenetre->vient_devant();
    vide_la_file();
    EXPECT_FALSE(IsIconic(poignee));
}

TEST_F(FenetreWin32, CouvreLaBarreDesTachesTantQuElleSert) {
    const auto dessus = [this] { return (GetWindowLongPtrW(poignee, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    fenetre->vient_devant();
    vide_la_file();
    EXPECT_TRUE(dessus());
    const HWND autre = CreateWindowExW(0, L"STATIC", L"Autre", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                       nullptr, nullptr);
    SetForegroundWindow(autre);
    vide_la_file();
    EXPECT_FALSE(dessus());
    HWND derriere = GetWindow(autre, GW_HWNDNEXT);
    while (derriere != nullptr && !IsWindowVisible(derriere)) derriere = GetWindow(derriere, GW_HWNDNEXT);
    EXPECT_EQ(derriere, poignee) << "right behind what is active";
    SetForegroundWindow(poignee);
    vide_la_file();
    EXPECT_TRUE(dessus());
    DestroyWindow(autre);
}

TEST_F(FenetreWin32, UnDoigtUneFinEtUnTourArriventALaBoucle) {
    const Evenement appui = apres(WM_POINTERDOWN, MAKEWPARAM(5, seul), MAKELPARAM(123, 45));
    EXPECT_EQ(appui.sorte, Sorte::appui);
    EXPECT_EQ(appui.x, 123);
    EXPECT_EQ(appui.y, 45);
    EXPECT_EQ(apres(WM_POINTERUP, MAKEWPARAM(5, seul), MAKELPARAM(123, 45)).sorte, Sorte::relache);
    EXPECT_NE(SendMessageW(poignee, 0x02CC /* WM_TABLET_QUERYSYSTEMGESTURESTATUS */, 0, 0) & 1, 0) << "it waits";
    EXPECT_EQ(apres(WM_CLOSE).sorte, Sorte::fermeture);

    const TailleEcran t = fenetre->taille();
    SetWindowPos(poignee, nullptr, 0, 0, 300, 200, SWP_NOZORDER);  // the size of before the turn
    ASSERT_EQ(fenetre->taille().largeur, 300);
    EXPECT_EQ(apres(WM_DISPLAYCHANGE, 32, MAKELPARAM(t.largeur, t.hauteur)).sorte, Sorte::repeindre);
    vide_la_file();
    EXPECT_EQ(fenetre->taille().largeur, t.largeur);

    WINDOWPLACEMENT turned{};  // turned while it was hidden away
    turned.length = sizeof turned;
    ShowWindow(poignee, SW_MINIMIZE);
    GetWindowPlacement(poignee, &turned);
    turned.rcNormalPosition = {0, 0, 300, 200};
    SetWindowPlacement(poignee, &turned);
    SendMessageW(poignee, WM_DISPLAYCHANGE, 32, MAKELPARAM(t.largeur, t.hauteur));
    ShowWindow(poignee, SW_RESTORE);
    ASSERT_EQ(fenetre->taille().largeur, 300);
    vide_la_file();
    EXPECT_EQ(fenetre->taille().largeur, t.largeur);
    EXPECT_EQ(fenetre->taille().hauteur, t.hauteur);
}

}  // namespace
