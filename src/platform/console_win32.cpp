#include "platform/console_win32.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

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

UINT page_precedente = 0;

/// The console belongs to the program that started this one: it gets its code page back.
void rend_page() {
    SetConsoleOutputCP(page_precedente);
}

}  // namespace

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
    page_precedente = GetConsoleOutputCP();
    if (page_precedente != CP_UTF8 && SetConsoleOutputCP(CP_UTF8)) std::atexit(rend_page);
}

}  // namespace console
