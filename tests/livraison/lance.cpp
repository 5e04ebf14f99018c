// Starts a Windows program the way a technician's tools do, which a command line that went through a Unix shell is not:
//   lance FILE [sans-droits]   runs the command line that FILE holds (UTF-8), byte for byte, and ends with its status;
//                              with the second word the administrators' group of the user no longer counts
// Under the name "icacls.exe" it notes its own command line in "C:\icacls.txt" and ends with the status that this file
// held, 0 when there was none: Wine's own does nothing, and never fails.
#include <windows.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string contenu(const char* nom) {
    std::ifstream fichier(nom, std::ios::binary);
    return {std::istreambuf_iterator<char>(fichier), {}};
}

std::wstring large(const std::string& texte) {
    std::wstring resultat(texte.size(), L'\0');
    const int taille = static_cast<int>(texte.size());
    resultat.resize(MultiByteToWideChar(CP_UTF8, 0, texte.data(), taille, resultat.data(), taille));
    return resultat;
}

// This process's token, its administrators' group kept for refusals only; null when Windows does not give it.
HANDLE jeton_sans_droits() {
    SID_IDENTIFIER_AUTHORITY autorite = SECURITY_NT_AUTHORITY;
    SID_AND_ATTRIBUTES groupe{};
    HANDLE jeton = nullptr;
    HANDLE resultat = nullptr;
    AllocateAndInitializeSid(&autorite, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0,
                             &groupe.Sid);
    OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &jeton);
    CreateRestrictedToken(jeton, 0, 1, &groupe, 0, nullptr, 0, nullptr, &resultat);
    return resultat;
}

int lance(std::wstring ligne, bool sans_droits) {
    STARTUPINFOW depart{};
    depart.cb = sizeof depart;
    PROCESS_INFORMATION processus{};
    HANDLE jeton = nullptr;
    if (sans_droits) {
        jeton = jeton_sans_droits();
        if (jeton == nullptr) return 98;
    }
    BOOL parti = FALSE;
    // Under load the emulator now and then refuses a program that it starts the next time.
    for (int essai = 0; essai < 3 && parti == 0; ++essai) {
        parti = CreateProcessAsUserW(jeton, nullptr, ligne.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &depart,
                                     &processus);
    }
    if (parti == 0) return 99;
    DWORD statut = 99;
    WaitForSingleObject(processus.hProcess, INFINITE);
    GetExitCodeProcess(processus.hProcess, &statut);
    return static_cast<int>(statut);
}

int note_droits() {
    const char* trace = "C:\\icacls.txt";
    const std::string demande = contenu(trace);
    std::ofstream(trace, std::ios::binary) << GetCommandLineA() << '\n';
    return demande.empty() || demande[0] < '0' || demande[0] > '9' ? 0 : demande[0] - '0';
}

}  // namespace

int main(int nombre, char** mots) {
    if (std::string(mots[0]).find("icacls") != std::string::npos) return note_droits();
    return nombre < 2 ? 97 : lance(large(contenu(mots[1])), nombre > 2);
}
