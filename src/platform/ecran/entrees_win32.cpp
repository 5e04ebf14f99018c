// The messages of systems newer than the oldest one that is served: they are only compared with.
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#include "platform/ecran/entrees_win32.h"

#include <windowsx.h>

namespace ecran {

// GUID_MONITOR_POWER_ON
const GUID etat_de_l_ecran = {0x02731015, 0x4510, 0x4526, {0x99, 0xE6, 0xE5, 0xA1, 0x7E, 0xBD, 0x1A, 0xEA}};

namespace {

using Sorte = Evenement::Sorte;

constexpr DWORD souris = ~DWORD{0};  ///< its contact number: none that the system gives

/// What GetMessageExtraInfo() tells of a mouse message made of a pen or a finger, and the mark of the finger.
constexpr LPARAM masque_simulee = 0xFFFFFF00, simulee = 0xFF515700, simulee_doigt = 0x80;

/// In the second argument of a key message: the key was down already.
constexpr LPARAM touche_repetee = 1 << 30;

POINT point(LPARAM lp) {
    return {GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
}

POINT dans_la_fenetre(HWND fenetre, POINT ecran) {
    ScreenToClient(fenetre, &ecran);
    return ecran;
}

}  // namespace

std::vector<TOUCHINPUT> lis_touches(WPARAM nombre, LPARAM contacts) {
    std::vector<TOUCHINPUT> lues(LOWORD(nombre));
    const auto source = reinterpret_cast<HTOUCHINPUT>(contacts);
    if (!GetTouchInputInfo(source, LOWORD(nombre), lues.data(), sizeof(TOUCHINPUT))) return {};
    CloseTouchInputHandle(source);
    return lues;
}

DWORD sorte_de_contact(DWORD contact) {
    using Fonction = BOOL(WINAPI*)(UINT32, POINTER_INPUT_TYPE*);
    static const auto lis = reinterpret_cast<Fonction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "GetPointerType")));
    POINTER_INPUT_TYPE sorte = PT_TOUCH;
    return lis != nullptr && lis(contact, &sorte) ? static_cast<DWORD>(sorte) : static_cast<DWORD>(PT_TOUCH);
}

std::optional<LRESULT> EntreesWin32::decode(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
    if (message == WM_TOUCH) return decode_touches(fenetre, wp, lp);
    if (message >= WM_POINTERUPDATE && message <= WM_POINTERCAPTURECHANGED) {
        return decode_pointeur(fenetre, message, wp, lp);
    }
    if ((message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_CAPTURECHANGED) {
        return decode_souris(fenetre, message, wp, lp);
    }
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST) return decode_clavier(message, wp, lp);
    return decode_systeme(message, wp, lp);
}

/// Fingers and pens since Windows 8; the message itself tells all that is needed of them.
std::optional<LRESULT> EntreesWin32::decode_pointeur(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
    const DWORD contact = GET_POINTERID_WPARAM(wp);
    const POINT p = dans_la_fenetre(fenetre, point(lp));
    switch (message) {
        case WM_POINTERDOWN:
            source_ = Source::pointeurs;
            pose(contact, sorte_de_(contact), IS_POINTER_PRIMARY_WPARAM(wp), p.x, p.y);
            return 0;
        case WM_POINTERUPDATE:
            glisse(contact, p.x, p.y);
            return 0;
        case WM_POINTERUP:
            IS_POINTER_CANCELED_WPARAM(wp) ? perd(contact) : leve(contact, p.x, p.y);
            return 0;
        case WM_POINTERCAPTURECHANGED:
            perd(contact);
            return 0;
        case WM_POINTERLEAVE:  // it is no longer near the glass
            perd(contact);
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

/// Fingers on Windows 7.
std::optional<LRESULT> EntreesWin32::decode_touches(HWND fenetre, WPARAM wp, LPARAM lp) {
    const auto lues = lecture_(wp, lp);
    if (lues.empty()) return std::nullopt;
    source_ = Source::touches;
    for (const TOUCHINPUT& t : lues) {
        const POINT p = dans_la_fenetre(fenetre, {TOUCH_COORD_TO_PIXEL(t.x), TOUCH_COORD_TO_PIXEL(t.y)});
        const bool seul = (t.dwFlags & TOUCHEVENTF_PRIMARY) != 0;
        if ((t.dwFlags & TOUCHEVENTF_DOWN) != 0) pose(t.dwID, PT_TOUCH, seul, p.x, p.y);
        if ((t.dwFlags & TOUCHEVENTF_MOVE) != 0) glisse(t.dwID, p.x, p.y);
        if ((t.dwFlags & TOUCHEVENTF_UP) != 0) leve(t.dwID, p.x, p.y);
    }
    return 0;
}

bool EntreesWin32::est_souris_simulee() const {
    const LPARAM info = GetMessageExtraInfo();
    if (source_ == Source::souris || (info & masque_simulee) != simulee) return false;
    return source_ == Source::pointeurs || (info & simulee_doigt) != 0;  // a pen on Windows 7 is a mouse
}

std::optional<LRESULT> EntreesWin32::decode_souris(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
    if (message == WM_CAPTURECHANGED) return perd(souris), 0;
    if (est_souris_simulee()) return 0;
    const POINT p = point(lp);
    switch (message) {
        case WM_LBUTTONDOWN:
            pose(souris, PT_MOUSE, true, p.x, p.y);
            SetCapture(fenetre);
            return 0;
        case WM_MOUSEMOVE:
            (wp & MK_LBUTTON) != 0 ? glisse(souris, p.x, p.y) : perd(souris);
            return 0;
        case WM_LBUTTONUP:
            leve(souris, p.x, p.y);
            ReleaseCapture();
            return 0;
        default:
            return std::nullopt;
    }
}

/// Alt alone opens no menu and Alt with a letter does not beep; Alt+F4 is left to the system, which makes a WM_CLOSE of
/// it.
std::optional<LRESULT> EntreesWin32::decode_clavier(UINT message, WPARAM wp, LPARAM lp) {
    const bool repetee = (lp & touche_repetee) != 0;
    if (message == WM_SYSCHAR) return 0;
    if (message == WM_KEYDOWN && (wp == VK_RETURN || wp == VK_ESCAPE || wp == VK_BACK)) {
        const Cle cle = wp == VK_RETURN ? Cle::entree : wp == VK_ESCAPE ? Cle::echappement : Cle::retour_arriere;
        return presse(cle, repetee), 0;
    }
    if (message != WM_CHAR) return std::nullopt;
    return frappe(static_cast<char32_t>(wp)), 0;
}

std::optional<LRESULT> EntreesWin32::decode_systeme(UINT message, WPARAM wp, LPARAM lp) {
    switch (message) {
        case WM_CANCELMODE:
            perd_tout();
            return std::nullopt;
        case WM_ACTIVATE:
            if (LOWORD(wp) == WA_INACTIVE) perd_tout();
            return std::nullopt;
        case WM_SYSCOMMAND:
            return (wp & 0xFFF0) == SC_KEYMENU ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_CLOSE:
            return ajoute(Sorte::fermeture), 0;
        case WM_QUERYENDSESSION:  // another program may still refuse; the end itself leaves no time for anything
            return ajoute(Sorte::extinction), TRUE;
        case WM_ENDSESSION:  // an installer needs the program's file: it waits for the end, and starts it again
            if (wp == 0 || (lp & ENDSESSION_CLOSEAPP) == 0) return std::nullopt;
            return ajoute(Sorte::fin), 0;
        case WM_SIZE:
            if (wp != SIZE_MINIMIZED) ajoute(Sorte::repeindre);
            return 0;
        case WM_DISPLAYCHANGE:
        case WM_DPICHANGED:
            ajoute(Sorte::repeindre);
            return 0;
        case WM_POWERBROADCAST:
            decode_alimentation(wp, lp);
            return TRUE;
        default:
            return std::nullopt;
    }
}

/// A tablet that never quite sleeps reports its screen alone: dark, then lit again.
void EntreesWin32::decode_alimentation(WPARAM wp, LPARAM lp) {
    if (wp == PBT_APMRESUMEAUTOMATIC || wp == PBT_APMRESUMESUSPEND) ajoute(Sorte::reveil);
    if (wp != PBT_POWERSETTINGCHANGE || lp == 0) return;
    const auto& reglage = *reinterpret_cast<const POWERBROADCAST_SETTING*>(lp);
    if (!IsEqualGUID(reglage.PowerSetting, etat_de_l_ecran)) return;
    const bool eteint = reglage.Data[0] == 0;
    if (ecran_eteint_ && !eteint) ajoute(Sorte::reveil);
    ecran_eteint_ = eteint;
}

}  // namespace ecran
