// What the messages of Windows become, posted by hand; then the real window, where there is a display.
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

#include "platform/ecran/entrees_win32.h"
#include "platform/ecran/fenetre.h"

namespace {

using namespace ecran;
using Sorte = Evenement::Sorte;

/// The queue as a text: a letter for each event, with its place, its character or its key.
std::string vide(Entrees& entrees) {
    std::string t;
    while (!entrees.vide()) {
        const Evenement e = entrees.prend();
        const std::string place = std::to_string(e.x) + "," + std::to_string(e.y);
        if (!t.empty()) t += ' ';
        switch (e.sorte) {
            case Sorte::rien:
                t += "rien";
                break;
            case Sorte::appui:
                t += "appui:" + place;
                break;
            case Sorte::glisse:
                t += "glisse:" + place;
                break;
            case Sorte::relache:
                t += "relache:" + place;
                break;
            case Sorte::perdu:
                t += "perdu";
                break;
            case Sorte::caractere:
                t += "car:" + std::to_string(e.code);
                break;
            case Sorte::cle:
                t += "cle:" + std::to_string(static_cast<int>(e.cle));
                break;
            case Sorte::repeindre:
                t += "repeindre";
                break;
            case Sorte::reveil:
                t += "reveil";
                break;
            case Sorte::fermeture:
                t += "fermeture";
                break;
            case Sorte::extinction:
                t += "extinction";
                break;
            case Sorte::fin:
                t += "fin";
                break;
        }
    }
    return t;
}

constexpr WPARAM seul = POINTER_MESSAGE_FLAG_PRIMARY, autre = 0, annule = POINTER_MESSAGE_FLAG_CANCELED;

/// Messages to a decoder, and what it made of them.
struct EntreesWin32 : testing::Test {
    std::vector<TOUCHINPUT> touches;  ///< what the next WM_TOUCH brings
    std::vector<DWORD> stylos;        ///< contacts that are pens
    Entrees entrees{[this](WPARAM, LPARAM) { return touches; },
                    [this](DWORD contact) -> DWORD {
                        return std::count(stylos.begin(), stylos.end(), contact) > 0 ? PT_PEN : PT_TOUCH;
                    }};

    void TearDown() override { SetMessageExtraInfo(0); }

    std::optional<LRESULT> recoit(UINT message, WPARAM wp = 0, LPARAM lp = 0) {
        return entrees.decode(nullptr, message, wp, lp);
    }
    void pointeur(UINT message, WORD doigt, WPARAM drapeaux, int x, int y) {
        EXPECT_EQ(recoit(message, MAKEWPARAM(doigt, drapeaux), MAKELPARAM(x, y)), 0) << "left to the system";
    }
    void souris(UINT message, int x, int y, LPARAM faite_de = 0) {
        SetMessageExtraInfo(faite_de);
        recoit(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, y));
        SetMessageExtraInfo(0);
    }
    void touche(DWORD doigt, DWORD drapeaux, int x, int y) {
        TOUCHINPUT t{};
        t.x = x * 100 + 49;
        t.y = y * 100 + 49;
        t.dwID = doigt;
        t.dwFlags = drapeaux;
        touches.push_back(t);
    }
    std::string lues() { return vide(entrees); }
};

TEST_F(EntreesWin32, OneFingerPressesSlidesAndIsReleased) {
    pointeur(WM_POINTERUPDATE, 7, seul, 5, 5);  // a pen that hovers
    pointeur(WM_POINTERDOWN, 7, seul, 10, 20);
    pointeur(WM_POINTERUPDATE, 7, seul, 11, 21);
    pointeur(WM_POINTERUPDATE, 7, seul, 12, 22);
    pointeur(WM_POINTERUP, 7, seul, 13, 23);
    pointeur(WM_POINTERCAPTURECHANGED, 7, seul, 0, 0);  // follows every release
    EXPECT_EQ(lues(), "appui:10,20 glisse:12,22 relache:13,23");

    pointeur(WM_POINTERDOWN, 8, seul, -4, 3);  // on a monitor to the left
    pointeur(WM_POINTERUP, 8, seul, -4, 3);
    EXPECT_EQ(lues(), "appui:-4,3 relache:-4,3");
}

TEST_F(EntreesWin32, TheSecondFingerDoesNothingUntilAllAreUp) {
    pointeur(WM_POINTERDOWN, 1, seul, 10, 10);
    pointeur(WM_POINTERDOWN, 2, autre, 90, 90);
    pointeur(WM_POINTERUPDATE, 2, autre, 91, 91);
    pointeur(WM_POINTERUP, 1, seul, 10, 10);
    pointeur(WM_POINTERDOWN, 3, autre, 50, 50);  // while the second still lies there
    pointeur(WM_POINTERUP, 2, autre, 92, 92);
    pointeur(WM_POINTERUP, 3, autre, 50, 50);
    EXPECT_EQ(lues(), "appui:10,10 relache:10,10");
    pointeur(WM_POINTERDOWN, 4, seul, 30, 30);
    EXPECT_EQ(lues(), "appui:30,30");
}

TEST_F(EntreesWin32, AFingerThatIsTakenAwayFiresNoKeyAndDoesNotDeafenTheScreen) {
    pointeur(WM_POINTERDOWN, 1, seul, 10, 10);
    pointeur(WM_POINTERCAPTURECHANGED, 1, seul, 10, 10);
    pointeur(WM_POINTERDOWN, 2, seul, 10, 10);
    pointeur(WM_POINTERUP, 2, seul | annule, 10, 10);
    pointeur(WM_POINTERDOWN, 3, seul, 10, 10);
    EXPECT_EQ(recoit(WM_CANCELMODE), std::nullopt) << "the system has its part to do";
    pointeur(WM_POINTERUP, 3, seul, 10, 10);
    EXPECT_EQ(lues(), "appui:10,10 perdu appui:10,10 perdu appui:10,10 perdu");

    // Its release never came: the next finger, alone on the glass, acts all the same.
    pointeur(WM_POINTERDOWN, 4, seul, 10, 10);
    pointeur(WM_POINTERDOWN, 5, seul, 60, 60);
    pointeur(WM_POINTERUP, 5, seul, 60, 60);
    EXPECT_EQ(lues(), "appui:10,10 perdu appui:60,60 relache:60,60");
}

TEST_F(EntreesWin32, APalmBesideThePenNeitherActsNorTakesThePressAway) {
    stylos = {1, 3};
    pointeur(WM_POINTERDOWN, 1, seul, 10, 10);
    pointeur(WM_POINTERDOWN, 2, seul, 80, 80);
    pointeur(WM_POINTERUPDATE, 2, seul, 81, 81);
    pointeur(WM_POINTERUP, 1, seul, 11, 11);
    pointeur(WM_POINTERDOWN, 3, seul, 20, 20);  // the palm lies there still
    pointeur(WM_POINTERUP, 2, seul, 81, 81);
    EXPECT_EQ(recoit(WM_POINTERLEAVE, MAKEWPARAM(3, seul)), std::nullopt);
    pointeur(WM_POINTERDOWN, 4, seul, 30, 30);
    souris(WM_LBUTTONDOWN, 50, 50);
    pointeur(WM_POINTERUP, 4, seul, 30, 30);
    EXPECT_EQ(lues(), "appui:10,10 relache:11,11 appui:20,20 perdu appui:30,30 relache:30,30");
    souris(WM_LBUTTONDOWN, 50, 50);
    EXPECT_EQ(lues(), "appui:50,50") << "a contact that was lost does not deafen the mouse";
}

TEST_F(EntreesWin32, AnInstallerThatNeedsTheFileEndsTheProgram) {
    EXPECT_EQ(recoit(WM_QUERYENDSESSION, 0, ENDSESSION_CLOSEAPP), TRUE);
    EXPECT_EQ(recoit(WM_ENDSESSION, FALSE, ENDSESSION_CLOSEAPP), std::nullopt);
    EXPECT_EQ(lues(), "extinction");
    EXPECT_EQ(recoit(WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP), 0);
    EXPECT_EQ(lues(), "fin");
    EXPECT_EQ(recoit(WM_ENDSESSION, TRUE, 0), std::nullopt) << "the system ends it itself";
}

TEST_F(EntreesWin32, TheMouseThatTheSystemMakesOfAFingerDoesNotCount) {
    constexpr LPARAM fait_d_un_doigt = 0xFF515780, fait_d_un_stylet = 0xFF515700;
    souris(WM_LBUTTONDOWN, 1, 1, fait_d_un_doigt);  // it reports nothing else: then it does count
    souris(WM_LBUTTONUP, 1, 1, fait_d_un_doigt);
    EXPECT_EQ(lues(), "appui:1,1 relache:1,1");

    pointeur(WM_POINTERDOWN, 1, seul, 10, 10);
    pointeur(WM_POINTERUP, 1, seul, 10, 10);
    souris(WM_LBUTTONDOWN, 10, 10, fait_d_un_doigt);
    souris(WM_MOUSEMOVE, 10, 10, fait_d_un_doigt);
    souris(WM_LBUTTONUP, 10, 10, fait_d_un_doigt);
    souris(WM_LBUTTONDOWN, 10, 10, fait_d_un_stylet);
    souris(WM_LBUTTONUP, 10, 10, fait_d_un_stylet);
    souris(WM_LBUTTONDOWN, 20, 20);
    souris(WM_MOUSEMOVE, 21, 21);
    souris(WM_LBUTTONUP, 22, 22);
    EXPECT_EQ(lues(), "appui:10,10 relache:10,10 appui:20,20 glisse:21,21 relache:22,22");
}

TEST_F(EntreesWin32, TheMouseLosesItsButton) {
    souris(WM_LBUTTONDOWN, 10, 10);
    recoit(WM_CAPTURECHANGED);
    souris(WM_LBUTTONUP, 10, 10);
    souris(WM_LBUTTONDOWN, 10, 10);
    recoit(WM_MOUSEMOVE, 0, MAKELPARAM(70, 70));  // released outside, unheard
    souris(WM_LBUTTONDOWN, 30, 30);
    souris(WM_LBUTTONUP, 30, 30);
    EXPECT_EQ(lues(), "appui:10,10 perdu appui:10,10 perdu appui:30,30 relache:30,30");
}

TEST_F(EntreesWin32, FingersOfAnOlderSystem) {
    EXPECT_EQ(recoit(WM_TOUCH), std::nullopt) << "what cannot be read is the system's to close";
    touche(1, TOUCHEVENTF_DOWN | TOUCHEVENTF_PRIMARY, 10, 20);
    EXPECT_EQ(recoit(WM_TOUCH), 0);
    touches.clear();
    touche(1, TOUCHEVENTF_MOVE | TOUCHEVENTF_PRIMARY, 11, 21);
    touche(2, TOUCHEVENTF_DOWN, 80, 80);
    recoit(WM_TOUCH);
    touches.clear();
    touche(2, TOUCHEVENTF_UP, 80, 80);
    touche(1, TOUCHEVENTF_UP | TOUCHEVENTF_PRIMARY, 12, 22);
    recoit(WM_TOUCH);
    EXPECT_EQ(lues(), "appui:10,20 glisse:11,21 relache:12,22");

    touches.clear();
    touche(3, TOUCHEVENTF_DOWN | TOUCHEVENTF_PRIMARY, 10, 20);  // its release never comes
    recoit(WM_TOUCH);
    touches.clear();
    touche(4, TOUCHEVENTF_DOWN | TOUCHEVENTF_PRIMARY, 60, 60);
    recoit(WM_TOUCH);
    touches.clear();
    touche(4, TOUCHEVENTF_UP | TOUCHEVENTF_PRIMARY, 60, 60);
    recoit(WM_TOUCH);
    EXPECT_EQ(lues(), "appui:10,20 perdu appui:60,60 relache:60,60");

    souris(WM_LBUTTONDOWN, 12, 22, 0xFF515781);
    souris(WM_LBUTTONUP, 12, 22, 0xFF515781);
    EXPECT_EQ(lues(), "");
    souris(WM_LBUTTONDOWN, 40, 40, 0xFF515701);  // there a pen is a mouse
    souris(WM_LBUTTONUP, 40, 40, 0xFF515701);
    EXPECT_EQ(lues(), "appui:40,40 relache:40,40");
}

TEST_F(EntreesWin32, Keyboard) {
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

TEST_F(EntreesWin32, SleepSessionAndScreen) {
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
    std::unique_ptr<Fenetre> fenetre = cree_fenetre(Mode::plein_ecran, "Essai", 0, 0);
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

TEST_F(FenetreWin32, ShowsTheZonesAndKeepsThemForTheSystem) {
    const TailleEcran t = fenetre->taille();
    EXPECT_EQ(t.largeur, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(t.hauteur, GetSystemMetrics(SM_CYSCREEN));
    Image image{t.largeur, t.hauteur, std::vector<std::uint32_t>(static_cast<std::size_t>(t.largeur) * t.hauteur)};
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

TEST_F(FenetreWin32, IsWokenFromAnotherThreadAndCalledToTheFront) {
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

TEST_F(FenetreWin32, LiesAboveTheTaskBarOnlyWhileItIsActive) {
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

TEST_F(FenetreWin32, AFingerAnEndAndATurnReachTheLoop) {
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
