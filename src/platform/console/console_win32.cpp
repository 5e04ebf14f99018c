#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/console/console.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte_win32.h"

namespace console {
namespace {

struct Flux {
    DWORD numero;
    FILE* fichier;
    const char* nom;
    const char* mode;
};

bool mene_quelque_part(DWORD numero) {
    HANDLE h = GetStdHandle(numero);
    return h != nullptr && h != INVALID_HANDLE_VALUE && GetFileType(h) != FILE_TYPE_UNKNOWN;
}

bool empruntee = false;  ///< the console is that of the program that started this one
UINT page_precedente = 0;

/// The console belongs to the program that started this one: it gets its code page back.
void rend_page() {
    if (page_precedente != 0) SetConsoleOutputCP(std::exchange(page_precedente, 0));
}

}  // namespace

void occupe_les_flux() {}

void rattache() {
    const Flux flux[] = {{STD_OUTPUT_HANDLE, stdout, "CONOUT$", "w"},
                         {STD_ERROR_HANDLE, stderr, "CONOUT$", "w"},
                         {STD_INPUT_HANDLE, stdin, "CONIN$", "r"}};
    bool perdus[3];
    for (int i = 0; i < 3; ++i) perdus[i] = !mene_quelque_part(flux[i].numero);
    if (!(perdus[0] || perdus[1]) || !AttachConsole(ATTACH_PARENT_PROCESS)) return;
    for (int i = 0; i < 3; ++i) {
        if (perdus[i]) static_cast<void>(std::freopen(flux[i].nom, flux[i].mode, flux[i].fichier));
    }
    empruntee = true;
    ecrit_en_utf8();
}

std::vector<std::string> mots(int argc, const Lettre* const* argv) {
    std::vector<std::string> r;
    std::size_t etranger = 0;
    for (int i = 1; i < argc; ++i) {
        if (!r.empty() && r.back() == "--dossier" && !texte::etroit(argv[i])) etranger = r.size();
        r.push_back(texte::etroit_tolerant(argv[i]));
    }
    if (etranger == 0) return r;
    for (std::size_t i = 1; i < r.size(); ++i) {
        const bool chemin = r[i - 1] == "--captures" || (r[i - 1] == "--rejoue" && r[i] != "-");
        if (chemin) r[i] = fichiers::absolu(r[i]);
    }
    if (SetCurrentDirectoryW(argv[etranger + 1])) r[etranger] = ".";
    return r;
}

void ecrit_en_utf8() {
    page_precedente = GetConsoleOutputCP();
    if (page_precedente != CP_UTF8 && SetConsoleOutputCP(CP_UTF8)) std::atexit(rend_page);
}

void attend_si_seul() {
    DWORD autres[2];
    if (GetConsoleProcessList(autres, 2) != 1) return;
    std::fputs("\nAppuyez sur Entrée pour fermer cette fenêtre.\n", stdout);
    std::fflush(stdout);
    static_cast<void>(std::getchar());
}

void detache() {
    if (!empruntee) return;
    empruntee = false;
    rend_page();
    FreeConsole();
}

void montre(const std::string& message) {
    if (empruntee || mene_quelque_part(STD_ERROR_HANDLE)) return;
    const auto page = texte::depuis_utf8_tolerant(message);
    MessageBoxW(nullptr, texte::large(page).c_str(), L"Orvalune", MB_OK | MB_ICONWARNING | MB_SETFOREGROUND);
}

}  // namespace console
