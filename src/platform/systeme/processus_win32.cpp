#include <windows.h>

#include "platform/systeme/processus_interne.h"
#include "platform/systeme/texte_win32.h"

namespace processus::systeme {

/// The command with its program in quotes, so that a blank in the path is not taken for the end of another one's.
std::string avec_guillemets(std::string_view commande) {
    constexpr std::string_view extension = ".EXE";
    const auto p = texte::majuscules(commande).find(extension);
    if (commande.starts_with('"') || p == std::string::npos) return std::string(commande);
    const std::size_t fin = p + extension.size();
    return "\"" + std::string(commande.substr(0, fin)) + "\"" + std::string(commande.substr(fin));
}

bool lance(std::string_view commande, Fenetre fenetre) {
    std::wstring ligne = texte::large(avec_guillemets(commande));
    if (ligne.find_first_not_of(L' ') == std::wstring::npos) return false;
    STARTUPINFOW depart{};
    depart.cb = sizeof depart;
    depart.dwFlags = STARTF_USESHOWWINDOW;
    depart.wShowWindow = fenetre == Fenetre::agrandie ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    PROCESS_INFORMATION programme{};
    if (!CreateProcessW(nullptr, ligne.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr,
                        &depart, &programme)) {
        return false;
    }
    CloseHandle(programme.hThread);
    CloseHandle(programme.hProcess);
    return true;
}

std::string identifiant_machine() {
    // The 64-bit view, so that programs of both widths read the same identifier.
    HKEY cle = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY,
                      &cle) != ERROR_SUCCESS)
        return {};
    wchar_t t[64] = {};
    DWORD octets = sizeof t - sizeof t[0], sorte = 0;
    const LSTATUS lu = RegQueryValueExW(cle, L"MachineGuid", nullptr, &sorte, reinterpret_cast<BYTE*>(t), &octets);
    RegCloseKey(cle);
    return lu == ERROR_SUCCESS && sorte == REG_SZ ? texte::etroit_tolerant(t) : std::string();
}

}  // namespace processus::systeme
