// The declarations of newer systems; their functions are fetched, not linked.
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#include "platform/ecran/tactile_win32.h"

#include <propsys.h>
#include <tpcshrd.h>

#include <algorithm>

namespace ecran {

const LRESULT gestes_refuses = TABLET_DISABLE_PRESSANDHOLD | TABLET_DISABLE_PENTAPFEEDBACK |
                               TABLET_DISABLE_PENBARRELFEEDBACK | TABLET_DISABLE_TOUCHUIFORCEON |
                               TABLET_DISABLE_TOUCHUIFORCEOFF | TABLET_DISABLE_TOUCHSWITCH | TABLET_DISABLE_FLICKS |
                               TABLET_DISABLE_SMOOTHSCROLLING | TABLET_DISABLE_FLICKFALLBACKKEYS;

namespace {

/// A function of a system library as `Type`, null when this system lacks it.
template <typename Type>
Type fonction(HMODULE bibliotheque, const char* nom) {
    if (bibliotheque == nullptr) return nullptr;
    return reinterpret_cast<Type>(reinterpret_cast<void*>(GetProcAddress(bibliotheque, nom)));
}

HMODULE user32() {
    return GetModuleHandleW(L"user32.dll");
}

void refuse_le_retour_visuel(HWND fenetre) {
    const auto regle = fonction<decltype(&SetWindowFeedbackSetting)>(user32(), "SetWindowFeedbackSetting");
    if (regle == nullptr) return;
    const BOOL non = FALSE;
    for (unsigned sorte = FEEDBACK_TOUCH_CONTACTVISUALIZATION; sorte <= FEEDBACK_GESTURE_PRESSANDTAP; ++sorte) {
        regle(fenetre, static_cast<FEEDBACK_TYPE>(sorte), 0, sizeof non, &non);
    }
}

/// A finger that comes in over the edge belongs to the window while it covers the screen.
void refuse_les_bords(HWND fenetre) {
    using Proprietes = HRESULT(WINAPI*)(HWND, REFIID, void**);
    const HMODULE shell = LoadLibraryExW(L"shell32.dll", nullptr, 0);
    const auto proprietes = fonction<Proprietes>(shell, "SHGetPropertyStoreForWindow");
    IPropertyStore* lues = nullptr;
    if (proprietes == nullptr ||
        FAILED(proprietes(fenetre, __uuidof(IPropertyStore), reinterpret_cast<void**>(&lues)))) {
        return;
    }
    // System.EdgeGesture.DisableTouchWhenFullscreen
    const PROPERTYKEY cle = {{0x32CE38B2, 0x2C9A, 0x41B1, {0x9B, 0xC5, 0xB3, 0x78, 0x43, 0x94, 0xAA, 0x44}}, 2};
    PROPVARIANT oui{};
    oui.vt = VT_BOOL;
    oui.boolVal = VARIANT_TRUE;
    lues->SetValue(cle, oui);
    lues->Release();
}

}  // namespace

void reserve_les_doigts(HWND fenetre) {
    SetPropW(fenetre, L"MicrosoftTabletPenServiceProperty", reinterpret_cast<HANDLE>(gestes_refuses));
    const bool pointeurs = fonction<decltype(&GetPointerInfo)>(user32(), "GetPointerInfo") != nullptr;
    if (!pointeurs) RegisterTouchWindow(fenetre, TWF_WANTPALM);  // without the delay of a search for palms
    refuse_le_retour_visuel(fenetre);
    refuse_les_bords(fenetre);
}

void declare_densite() {
    using Declare = decltype(&SetProcessDpiAwarenessContext);
    const auto declare = fonction<Declare>(user32(), "SetProcessDpiAwarenessContext");
    const bool faite = declare != nullptr && (declare(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2) ||
                                              declare(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
    if (!faite) SetProcessDPIAware();  // no effect where the manifest has said it already
}

namespace {

/// Windows 8.1 and the first Windows 10 tell the density of a monitor, not yet that of a window. 0: unknown.
int densite_du_moniteur(HWND fenetre) {
    using Lis = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
    static const HMODULE shcore = LoadLibraryExW(L"shcore.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    static const auto lis = fonction<Lis>(shcore, "GetDpiForMonitor");
    UINT x = 0, y = 0;
    constexpr int effective = 0;  // MDT_EFFECTIVE_DPI
    const HMONITOR moniteur = MonitorFromWindow(fenetre, MONITOR_DEFAULTTONEAREST);
    return lis != nullptr && SUCCEEDED(lis(moniteur, effective, &x, &y)) ? static_cast<int>(x) : 0;
}

}  // namespace

double densite(HWND fenetre) {
    const auto lis = fonction<decltype(&GetDpiForWindow)>(user32(), "GetDpiForWindow");
    int points = lis != nullptr ? static_cast<int>(lis(fenetre)) : 0;
    if (points == 0) points = densite_du_moniteur(fenetre);
    if (points == 0) {
        const HDC dc = GetDC(fenetre);
        points = GetDeviceCaps(dc, LOGPIXELSX);
        ReleaseDC(fenetre, dc);
    }
    return std::max(1.0, points / 96.0);
}

}  // namespace ecran
