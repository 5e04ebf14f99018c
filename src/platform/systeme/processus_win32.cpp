#include <windows.h>

#include <iterator>

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

/// A word of a command line; backslashes before the last quotation mark count twice.
std::wstring mot_cite(std::string_view mot) {
    std::wstring r = L"\"" + texte::large(mot);
    const auto fin = r.find_last_not_of(L'\\');
    r += r.substr(fin + 1);
    return r + L"\"";
}

std::optional<int> execute(const std::vector<std::string>& mots, std::string_view sortie) {
    SECURITY_ATTRIBUTES heritee{sizeof heritee, nullptr, TRUE};
    HANDLE fichier = CreateFileW(texte::large(sortie).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &heritee, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
    if (fichier == INVALID_HANDLE_VALUE) return std::nullopt;
    std::wstring ligne;
    for (const std::string& m : mots) ligne += (ligne.empty() ? L"" : L" ") + mot_cite(m);
    STARTUPINFOW depart{};
    depart.cb = sizeof depart;
    depart.dwFlags = STARTF_USESTDHANDLES;
    depart.hStdOutput = depart.hStdError = fichier;
    PROCESS_INFORMATION programme{};
    const BOOL lance = CreateProcessW(nullptr, ligne.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                                      &depart, &programme);
    CloseHandle(fichier);
    if (!lance) return std::nullopt;
    DWORD statut = 0;
    WaitForSingleObject(programme.hProcess, INFINITE);
    const BOOL lu = GetExitCodeProcess(programme.hProcess, &statut);
    CloseHandle(programme.hThread);
    CloseHandle(programme.hProcess);
    if (!lu) return std::nullopt;
    return static_cast<int>(statut);
}

std::string repertoire_du_programme() {
    wchar_t chemin[32768] = {};
    GetModuleFileNameW(nullptr, chemin, static_cast<DWORD>(std::size(chemin) - 1));
    const std::string r = texte::etroit_tolerant(chemin);
    return r.substr(0, r.find_last_of("/\\") + 1);
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
