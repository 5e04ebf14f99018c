// The window of Windows, by its own interface alone. The image is kept in a section of memory that the system draws
// from, so that a part that was covered comes back without being painted anew.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/ecran/entrees_win32.h"
#include "platform/ecran/fenetre.h"
#include "platform/ecran/tactile_win32.h"
#include "platform/systeme/texte_win32.h"

namespace ecran {
namespace {

constexpr const wchar_t* classe = L"Orvalune";
constexpr UINT message_reveil = WM_APP, message_devant = WM_APP + 1, message_rang = WM_APP + 2,
               message_place = WM_APP + 3;
constexpr int replacements_max = 20;
constexpr int icone_du_programme = 1;  ///< its number among the resources

/// The kept image. Only the interface's thread uses it.
class Copie {
  public:
    Copie() = default;
    ~Copie() { libere(); }
    Copie(const Copie&) = delete;
    Copie& operator=(const Copie&) = delete;

    HDC dc() const { return dc_; }

    /// False when the system has no memory left for an image of this size.
    bool dimensionne(int largeur, int hauteur) {
        if (dc_ != nullptr && largeur == largeur_ && hauteur == hauteur_) return true;
        libere();
        BITMAPINFO forme{};
        forme.bmiHeader = {sizeof(BITMAPINFOHEADER), largeur, -hauteur, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* points = nullptr;
        section_ = CreateDIBSection(nullptr, &forme, DIB_RGB_COLORS, &points, nullptr, 0);
        if (section_ == nullptr) return false;
        dc_ = CreateCompatibleDC(nullptr);
        ancienne_ = SelectObject(dc_, section_);
        pixels_ = static_cast<std::uint32_t*>(points);
        largeur_ = largeur;
        hauteur_ = hauteur;
        return true;
    }

    /// The zone lies within the image, which has the size of the copy.
    void prend(const Image& image, const Zone& z) {
        for (int y = z.haut; y < z.bas; ++y) {
            const std::size_t debut = static_cast<std::size_t>(y) * largeur_ + z.gauche;
            std::memcpy(pixels_ + debut, image.pixels.data() + debut,
                        static_cast<std::size_t>(z.droite - z.gauche) * 4);
        }
    }

  private:
    HDC dc_ = nullptr;
    HBITMAP section_ = nullptr;
    HGDIOBJ ancienne_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
    int largeur_ = 0, hauteur_ = 0;

    void libere() {
        if (dc_ != nullptr) {
            SelectObject(dc_, ancienne_);
            DeleteDC(dc_);
        }
        if (section_ != nullptr) DeleteObject(section_);
        dc_ = nullptr;
        section_ = nullptr;
    }
};

RECT moniteur(HMONITOR m) {
    MONITORINFO lu{};
    lu.cbSize = sizeof lu;
    if (GetMonitorInfoW(m, &lu)) return lu.rcMonitor;
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};  // it has just been unplugged
}

/// Where the program was started from, as far as the system tells: where its pointer, or the last finger, is.
RECT moniteur_du_depart() {
    POINT p{};
    GetCursorPos(&p);
    return moniteur(MonitorFromPoint(p, MONITOR_DEFAULTTOPRIMARY));
}

class FenetreWin32 final : public Fenetre {
  public:
    explicit FenetreWin32(Mode mode) : mode_(mode) {}
    ~FenetreWin32() override {
        SetThreadExecutionState(ES_CONTINUOUS);
        if (alimentation_ != nullptr) UnregisterPowerSettingNotification(alimentation_);
        if (fenetre_ != nullptr) DestroyWindow(fenetre_);
    }
    FenetreWin32(const FenetreWin32&) = delete;
    FenetreWin32& operator=(const FenetreWin32&) = delete;

    /// False when the system gives no window.
    bool ouvre(const std::wstring& titre, int largeur, int hauteur) {
        const RECT r = moniteur_du_depart();
        const bool plein = mode_ == Mode::plein_ecran;
        fenetre_ =
            CreateWindowExW(WS_EX_APPWINDOW, classe, titre.c_str(), plein ? WS_POPUP : style_fenetre, r.left, r.top,
                            r.right - r.left, r.bottom - r.top, nullptr, nullptr, GetModuleHandleW(nullptr), this);
        if (fenetre_ == nullptr) return false;
        if (!plein) donne_taille(r, largeur, hauteur);
        taille();  // known from now on, should it be hidden away
        reserve_les_doigts(fenetre_);
        alimentation_ = RegisterPowerSettingNotification(fenetre_, &etat_de_l_ecran, DEVICE_NOTIFY_WINDOW_HANDLE);
        ShowWindow(fenetre_, SW_SHOWNORMAL);
        se_met_devant();
        return true;
    }

    TailleEcran taille() const override {
        RECT r{};
        GetClientRect(fenetre_, &r);
        if (IsIconic(fenetre_) || r.right <= 0 || r.bottom <= 0) return derniere_taille_;
        derniere_taille_ = {static_cast<int>(r.right), static_cast<int>(r.bottom), densite(fenetre_)};
        return derniere_taille_;
    }

    bool se_voit() const override { return true; }

    Evenement attend(int ms) override {
        vide_les_messages();
        if (entrees_.vide()) {
            MsgWaitForMultipleObjectsEx(0, nullptr, ms < 0 ? INFINITE : static_cast<DWORD>(ms), QS_ALLINPUT,
                                        MWMO_INPUTAVAILABLE);
            vide_les_messages();
        }
        return entrees_.prend();
    }

    void montre(const Image& image, std::span<const Zone> zones) override {
        GdiFlush();  // what was drawn before is read from the copy that is about to change
        if (!copie_.dimensionne(image.largeur, image.hauteur)) return;
        const HDC dc = GetDC(fenetre_);
        for (const Zone& z : zones) {
            const Zone dedans = {std::max(0, z.gauche), std::max(0, z.haut), std::min(z.droite, image.largeur),
                                 std::min(z.bas, image.hauteur)};
            if (dedans.vide()) continue;
            copie_.prend(image, dedans);
            dessine(dc, dedans);
        }
        ReleaseDC(fenetre_, dc);
    }

    void reveille() override { PostMessageW(fenetre_, message_reveil, 0, 0); }
    void vient_devant() override { PostMessageW(fenetre_, message_devant, 0, 0); }

    static LRESULT CALLBACK recoit(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
        if (message == WM_NCCREATE) {
            const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lp);
            SetWindowLongPtrW(fenetre, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        }
        auto* elle = reinterpret_cast<FenetreWin32*>(GetWindowLongPtrW(fenetre, GWLP_USERDATA));
        if (elle == nullptr) return DefWindowProcW(fenetre, message, wp, lp);
        return elle->traite(fenetre, message, wp, lp);
    }

  private:
    static constexpr DWORD style_fenetre = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;

    Mode mode_;
    HWND fenetre_ = nullptr;
    HPOWERNOTIFY alimentation_ = nullptr;
    EntreesWin32 entrees_;
    bool reduite_ = false;  ///< to the task bar
    int replacements_ = 0;  ///< since the screen changed or the window was restored
    Copie copie_;
    mutable TailleEcran derniere_taille_{1, 1, 1};

    static void vide_les_messages() {
        MSG m;
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&m);
            DispatchMessageW(&m);
        }
    }

    void dessine(HDC dc, const Zone& z) const {
        if (copie_.dc() == nullptr) return;
        BitBlt(dc, z.gauche, z.haut, z.droite - z.gauche, z.bas - z.haut, copie_.dc(), z.gauche, z.haut, SRCCOPY);
    }

    /// Gives the inside the wished size, in the middle of the monitor but with its title in sight.
    void donne_taille(const RECT& r, int largeur, int hauteur) const {
        RECT dehors{}, dedans{};
        GetWindowRect(fenetre_, &dehors);
        GetClientRect(fenetre_, &dedans);
        const int l = largeur + (dehors.right - dehors.left) - dedans.right;
        const int h = hauteur + (dehors.bottom - dehors.top) - dedans.bottom;
        const int x = std::max(0, static_cast<int>(r.right - r.left - l) / 2);
        const int y = std::max(0, static_cast<int>(r.bottom - r.top - h) / 2);
        SetWindowPos(fenetre_, nullptr, r.left + x, r.top + y, l, h, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    /// After a turn of the tablet, a change of its density, or a way to another monitor.
    void couvre_le_moniteur() const {
        if (mode_ != Mode::plein_ecran || IsIconic(fenetre_)) return;  // hidden away, it does so when it comes back
        const RECT r = moniteur(MonitorFromWindow(fenetre_, MONITOR_DEFAULTTONEAREST));
        RECT la{};
        if (GetWindowRect(fenetre_, &la) && EqualRect(&la, &r)) return;
        SetWindowPos(fenetre_, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }

    void suit_la_densite(LPARAM lp) const {
        if (mode_ == Mode::plein_ecran) return couvre_le_moniteur();
        const RECT& r = *reinterpret_cast<const RECT*>(lp);
        SetWindowPos(fenetre_, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }

    /// Full screen it covers the others even where the system refuses to make it active.
    void se_met_devant() const {
        SetWindowPos(fenetre_, mode_ == Mode::plein_ecran ? HWND_TOPMOST : HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE);
        SetForegroundWindow(fenetre_);
    }

    void repond_a_l_appel() {
        if (IsIconic(fenetre_)) ShowWindow(fenetre_, SW_RESTORE);
        couvre_le_moniteur();
        se_met_devant();
        entrees_.ajoute(Evenement::Sorte::reveil);
    }

    /// Full screen, it lies above the task bar while it is active, and right behind the window that is active instead.
    void prend_son_rang() const {
        if (mode_ != Mode::plein_ecran) return;
        const HWND active = GetForegroundWindow();
        const bool toujours_devant = active == nullptr || (GetWindowLongPtrW(active, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
        const HWND rang = active == fenetre_ ? HWND_TOPMOST : toujours_devant ? HWND_NOTOPMOST : active;
        SetWindowPos(fenetre_, rang, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }

    bool est_active() const { return GetForegroundWindow() == fenetre_ && !IsIconic(fenetre_); }

    /// The screen stays lit while the order taking is in front, and no longer.
    void tient_l_ecran_allume() const {
        SetThreadExecutionState(est_active() ? ES_CONTINUOUS | ES_DISPLAY_REQUIRED : ES_CONTINUOUS);
    }

    LRESULT repeint(HWND fenetre) const {
        PAINTSTRUCT p;
        const HDC dc = BeginPaint(fenetre, &p);
        const RECT& r = p.rcPaint;
        dessine(dc, {static_cast<int>(r.left), static_cast<int>(r.top), static_cast<int>(r.right),
                     static_cast<int>(r.bottom)});
        EndPaint(fenetre, &p);
        return 0;
    }

    /// What moves or sizes the window; nothing when the system has to do its part.
    std::optional<LRESULT> tient_sa_place(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
        switch (message) {
            case WM_GETMINMAXINFO:  // a window may be larger than the screen, as the wish was
                reinterpret_cast<MINMAXINFO*>(lp)->ptMaxTrackSize = {32767, 32767};
                return 0;
            case WM_DISPLAYCHANGE:
                replacements_ = 0;
                couvre_le_moniteur();
                return std::nullopt;
            case WM_SIZE:  // restored: the tablet may have been turned meanwhile
            case WM_MOVE:
                if (message == WM_SIZE && std::exchange(reduite_, wp == SIZE_MINIMIZED)) replacements_ = 0;
                if (message == WM_MOVE || wp == SIZE_RESTORED) PostMessageW(fenetre, message_place, 0, 0);
                return std::nullopt;
            case message_place:  // a few times at most: another program may insist on a place for it
                if (replacements_++ < replacements_max) couvre_le_moniteur();
                return 0;
            case 0x02E0 /* WM_DPICHANGED */:
                suit_la_densite(lp);
                return std::nullopt;
            default:
                return std::nullopt;
        }
    }

    LRESULT traite(HWND fenetre, UINT message, WPARAM wp, LPARAM lp) {
        switch (message) {
            case WM_PAINT:
                return repeint(fenetre);
            case WM_ERASEBKGND:
                return 1;
            case message_reveil:
                return entrees_.ajoute(Evenement::Sorte::rien), 0;
            case message_devant:
                return repond_a_l_appel(), 0;
            case message_rang:
                return prend_son_rang(), tient_l_ecran_allume(), 0;
            case WM_ACTIVATE:  // who is in front is known only when the change is done
                PostMessageW(fenetre, message_rang, 0, 0);
                break;
            case WM_SYSCOMMAND:
                if ((wp & 0xFFF0) == SC_SCREENSAVE && est_active()) return 0;
                break;
            case WM_DESTROY:
                RemovePropW(fenetre, L"MicrosoftTabletPenServiceProperty");
                break;
            case 0x02CC /* WM_TABLET_QUERYSYSTEMGESTURESTATUS */:
                return gestes_refuses;
            default:
                break;
        }
        if (const auto reponse = tient_sa_place(fenetre, message, wp, lp)) return *reponse;
        if (const auto reponse = entrees_.decode(fenetre, message, wp, lp)) return *reponse;
        return DefWindowProcW(fenetre, message, wp, lp);
    }
};

/// A service has windows that nobody ever sees.
bool bureau_visible() {
    USEROBJECTFLAGS drapeaux{};
    const HWINSTA station = GetProcessWindowStation();
    return !GetUserObjectInformationW(station, UOI_FLAGS, &drapeaux, sizeof drapeaux, nullptr) ||
           (drapeaux.dwFlags & WSF_VISIBLE) != 0;
}

bool enregistre_classe() {
    const HINSTANCE programme = GetModuleHandleW(nullptr);
    WNDCLASSEXW c{};
    c.cbSize = sizeof c;
    c.lpfnWndProc = FenetreWin32::recoit;
    c.hInstance = programme;
    c.hIcon = LoadIconW(programme, MAKEINTRESOURCEW(icone_du_programme));
    c.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    c.lpszClassName = classe;
    return RegisterClassExW(&c) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

std::unique_ptr<Fenetre> cree_fenetre(Mode mode, const std::string& titre, int largeur, int hauteur, std::string&) {
    declare_densite();
    if (!bureau_visible() || !enregistre_classe()) return nullptr;
    auto fenetre = std::make_unique<FenetreWin32>(mode);
    if (!fenetre->ouvre(texte::large(titre), largeur, hauteur)) return nullptr;
    return fenetre;
}

}  // namespace ecran
