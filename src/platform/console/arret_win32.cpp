#include <windows.h>

#include <algorithm>
#include <atomic>

#include "platform/console/arret.h"

namespace arret {
namespace {

std::atomic<bool> demandee = false;
HANDLE signale = nullptr;

/// Runs on a thread of the system's. A closed console or an ending session takes the process with it when this returns.
BOOL WINAPI note(DWORD sorte) {
    if (demandee.exchange(true)) return FALSE;
    SetEvent(signale);
    constexpr DWORD delai_ms = 4000;
    if (sorte != CTRL_C_EVENT && sorte != CTRL_BREAK_EVENT) Sleep(delai_ms);
    return TRUE;
}

}  // namespace

void ecoute() {
    signale = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(note, TRUE);
}

bool demande() {
    return demandee;
}

int limite(int ms) {
    constexpr int presse_ms = 2000;
    return demande() ? std::min(ms, presse_ms) : ms;
}

void* evenement() {
    return signale;
}

}  // namespace arret
