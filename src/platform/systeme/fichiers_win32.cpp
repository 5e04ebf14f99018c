// Files on Windows, through the wide calls.
#include <windows.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/systeme/epreuve.h"
#include "platform/systeme/fichiers_systeme.h"
#include "platform/systeme/texte_win32.h"

namespace fichiers::systeme {
namespace {

using epreuve::Operation;

constexpr DWORD disque_au_quota = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which not every header knows
/// Characters that every call takes in a path, the name of a temporary file behind a directory's included.
constexpr DWORD longueur_ordinaire = 240;

Issue issue_de(DWORD erreur) {
    struct Ligne {
        DWORD erreur;
        Issue issue;
    };
    static constexpr Ligne table[] = {
        {ERROR_FILE_NOT_FOUND, Issue::absent},
        {ERROR_PATH_NOT_FOUND, Issue::absent},
        {ERROR_INVALID_DRIVE, Issue::absent},
        {ERROR_DIRECTORY, Issue::absent},
        {ERROR_FILE_EXISTS, Issue::existe},
        {ERROR_ALREADY_EXISTS, Issue::existe},
        {ERROR_ACCESS_DENIED, Issue::refuse},
        {ERROR_WRITE_PROTECT, Issue::refuse},
        {ERROR_PRIVILEGE_NOT_HELD, Issue::refuse},
        {ERROR_NETWORK_ACCESS_DENIED, Issue::refuse},
        {ERROR_SHARING_VIOLATION, Issue::occupe},
        {ERROR_LOCK_VIOLATION, Issue::occupe},
        {ERROR_BUSY, Issue::occupe},
        {ERROR_USER_MAPPED_FILE, Issue::occupe},
        {ERROR_DELETE_PENDING, Issue::occupe},
        {ERROR_DISK_FULL, Issue::plein},
        {ERROR_HANDLE_DISK_FULL, Issue::plein},
        {disque_au_quota, Issue::plein},
        {ERROR_FILE_TOO_LARGE, Issue::plein},
    };
    for (const auto& l : table) {
        if (l.erreur == erreur) return l.issue;
    }
    return Issue::panne;
}

Issue issue(BOOL reussi) {
    return reussi ? Issue::fait : issue_de(GetLastError());
}

/// A zero byte, which would cut the path, becomes a character that no name may hold.
std::wstring ordinaire(std::string_view chemin) {
    std::wstring r = texte::large(chemin);
    std::replace(r.begin(), r.end(), L'/', L'\\');
    std::replace(r.begin(), r.end(), L'\0', L'?');
    return r;
}

/// The path as the system takes it: whole, and in the form that has no bound, when it is long.
std::wstring natif(std::string_view chemin) {
    const std::wstring court = ordinaire(chemin);
    const DWORD n = GetFullPathNameW(court.c_str(), 0, nullptr, nullptr);
    if (n <= longueur_ordinaire) return court;
    std::wstring r(n, L'\0');
    const DWORD ecrits = GetFullPathNameW(court.c_str(), n, r.data(), nullptr);
    if (ecrits == 0 || ecrits >= n) return court;
    r.resize(ecrits);
    if (r.starts_with(L"\\\\?\\") || r.starts_with(L"\\\\.\\")) return r;
    return r.starts_with(L"\\\\") ? L"\\\\?\\UNC" + r.substr(1) : L"\\\\?\\" + r;
}

/// A program that looks at every new file (a virus scanner) may hold it for a moment: the operation is tried again.
template <typename Appel>
Issue insiste(Appel appel) {
    Issue r = issue(appel());
    for (int essai = 0; essai < 10 && r == Issue::occupe; ++essai) {
        Sleep(20);
        r = issue(appel());
    }
    return r;
}

/// Where a read or write takes place, for a handle that has one position for all.
OVERLAPPED place(std::uint64_t position) {
    OVERLAPPED r{};
    r.Offset = static_cast<DWORD>(position);
    r.OffsetHigh = static_cast<DWORD>(position >> 32);
    return r;
}

/// At most what one call takes.
DWORD morceau(std::size_t n) {
    return static_cast<DWORD>(std::min<std::size_t>(n, 1u << 26));
}

class FichierWindows final : public Fichier {
  public:
    explicit FichierWindows(HANDLE h) : h_(h) {}
    ~FichierWindows() override { static_cast<void>(ferme()); }

    std::uint64_t longueur() override {
        LARGE_INTEGER l;
        return GetFileSizeEx(h_, &l) ? static_cast<std::uint64_t>(l.QuadPart) : longueur_inconnue;
    }

    std::int64_t lis(std::uint64_t debut, char* vers, std::size_t nombre) override {
        if (epreuve::essaie(Operation::lis) != Issue::fait) return -1;
        OVERLAPPED ou = place(debut);
        DWORD lus = 0;
        if (ReadFile(h_, vers, morceau(nombre), &lus, &ou)) return lus;
        return GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
    }

    Issue ecrit(std::uint64_t debut, std::string_view contenu) override {
        if (const Issue i = epreuve::essaie(Operation::ecrit); i != Issue::fait) return i;
        while (!contenu.empty()) {
            OVERLAPPED ou = place(debut);
            DWORD ecrits = 0;
            if (!WriteFile(h_, contenu.data(), morceau(contenu.size()), &ecrits, &ou)) return issue_de(GetLastError());
            if (ecrits == 0) return Issue::plein;
            debut += ecrits;
            contenu.remove_prefix(ecrits);
        }
        return Issue::fait;
    }

    Issue tronque(std::uint64_t longueur) override {
        LARGE_INTEGER l;
        l.QuadPart = static_cast<LONGLONG>(longueur);
        return issue(SetFilePointerEx(h_, l, nullptr, FILE_BEGIN) && SetEndOfFile(h_));
    }

    Issue vide_tampon() override {
        if (const Issue i = epreuve::essaie(Operation::vide_tampon); i != Issue::fait) return i;
        return issue(FlushFileBuffers(h_));
    }

    Issue ferme() override {
        if (h_ == INVALID_HANDLE_VALUE) return Issue::fait;
        return issue(CloseHandle(std::exchange(h_, INVALID_HANDLE_VALUE)));
    }

  private:
    HANDLE h_;
};

struct Acces {
    DWORD droits, partage, creation, drapeaux;
};

Acces acces(Fichier::Ouverture mode) {
    constexpr DWORD tous = FILE_SHARE_READ | FILE_SHARE_WRITE;
    switch (mode) {
        case Fichier::Ouverture::lecture:
            return {GENERIC_READ, tous | FILE_SHARE_DELETE, OPEN_EXISTING, 0};
        case Fichier::Ouverture::creation:
            return {GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW, FILE_FLAG_WRITE_THROUGH};
        case Fichier::Ouverture::lecture_ecriture:
            return {GENERIC_READ | GENERIC_WRITE, tous, OPEN_ALWAYS, 0};
    }
    return {};
}

bool est_fichier(DWORD attributs) {
    return (attributs & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

/// Another program holds the file so that it can be neither replaced nor deleted.
bool est_retenu(const std::wstring& nom) {
    HANDLE h = CreateFileW(nom.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(h);
    return false;
}

Issue deplace(std::string_view de, std::string_view vers, DWORD drapeaux) {
    if (const Issue i = epreuve::essaie(Operation::renomme, de); i != Issue::fait) return i;
    const std::wstring source = natif(de), cible = natif(vers);
    return insiste([&]() -> BOOL {
        if (MoveFileExW(source.c_str(), cible.c_str(), MOVEFILE_WRITE_THROUGH | drapeaux)) return TRUE;
        // The system calls a held target a refusal.
        if (GetLastError() != ERROR_ACCESS_DENIED) return FALSE;
        const bool retenu = est_retenu(cible);
        SetLastError(retenu ? ERROR_SHARING_VIOLATION : ERROR_ACCESS_DENIED);
        return FALSE;
    });
}

/// The text that one of the calls gives which first tell the room they need; `sinon` when it fails.
template <typename Appel>
std::string texte_de(Appel appel, std::string_view sinon) {
    std::wstring r(appel(0, nullptr), L'\0');
    const DWORD ecrits = appel(static_cast<DWORD>(r.size()), r.data());
    if (ecrits == 0 || ecrits >= r.size()) return std::string(sinon);
    r.resize(ecrits);
    return texte::etroit_tolerant(r);
}

}  // namespace

std::unique_ptr<Fichier> Fichier::ouvre(std::string_view chemin, Ouverture mode, Issue& issue) {
    issue = epreuve::essaie(Operation::ouvre, chemin);
    if (issue != Issue::fait) return nullptr;
    const Acces a = acces(mode);
    const std::wstring nom = natif(chemin);
    HANDLE h = INVALID_HANDLE_VALUE;
    issue = insiste([&] {
        h = CreateFileW(nom.c_str(), a.droits, a.partage, nullptr, a.creation, FILE_ATTRIBUTE_NORMAL | a.drapeaux,
                        nullptr);
        return h != INVALID_HANDLE_VALUE;
    });
    if (issue != Issue::fait) return nullptr;
    auto f = std::make_unique<FichierWindows>(h);
    issue = GetFileType(h) == FILE_TYPE_DISK ? Issue::fait : Issue::refuse;
    if (issue != Issue::fait) return nullptr;
    return f;
}

/// A share goes with its letter or its name: no other directory comes into its place.
Nature nature(std::string_view chemin, std::uint64_t& longueur, std::uint64_t* volume) {
    WIN32_FILE_ATTRIBUTE_DATA d;
    if (volume != nullptr) *volume = 0;
    if (!GetFileAttributesExW(natif(chemin).c_str(), GetFileExInfoStandard, &d)) return Nature::absente;
    longueur = (std::uint64_t{d.nFileSizeHigh} << 32) | d.nFileSizeLow;
    if ((d.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return Nature::repertoire;
    return est_fichier(d.dwFileAttributes) ? Nature::fichier : Nature::autre;
}

std::optional<std::int64_t> modifie_le(std::string_view chemin) {
    WIN32_FILE_ATTRIBUTE_DATA d;
    if (!GetFileAttributesExW(natif(chemin).c_str(), GetFileExInfoStandard, &d)) return std::nullopt;
    constexpr std::int64_t de_1601_a_1970 = 11644473600, par_seconde = 10'000'000;  // tenths of a microsecond
    const auto haut = std::int64_t{d.ftLastWriteTime.dwHighDateTime} << 32;
    return (haut | d.ftLastWriteTime.dwLowDateTime) / par_seconde - de_1601_a_1970;
}

Issue entrees(std::string_view repertoire, std::vector<std::string>& noms) {
    if (const Issue i = epreuve::essaie(Operation::liste, repertoire); i != Issue::fait) return i;
    if (repertoire.empty()) return Issue::absent;
    WIN32_FIND_DATAW d;
    HANDLE h = FindFirstFileW(natif(joint(repertoire, "*")).c_str(), &d);
    // An empty drive has not even "."; everything else that finds no file is no directory.
    if (h == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND ? Issue::fait : issue_de(GetLastError());
    do {
        const auto nom = texte::etroit(d.cFileName);
        if (nom && est_fichier(d.dwFileAttributes)) noms.push_back(*nom);
    } while (FindNextFileW(h, &d));
    const DWORD erreur = GetLastError();
    FindClose(h);
    return erreur == ERROR_NO_MORE_FILES ? Issue::fait : issue_de(erreur);
}

Issue renomme_sans_remplacer(std::string_view de, std::string_view vers) {
    return deplace(de, vers, 0);
}

Issue renomme_en_remplacant(std::string_view de, std::string_view vers) {
    return deplace(de, vers, MOVEFILE_REPLACE_EXISTING);
}

/// Renaming has written through: the system has no other way to flush a directory.
void vide_tampon_repertoire(std::string_view) {}

Issue supprime(std::string_view chemin) {
    if (const Issue i = epreuve::essaie(Operation::supprime, chemin); i != Issue::fait) return i;
    const std::wstring nom = natif(chemin);
    return insiste([&] { return DeleteFileW(nom.c_str()); });
}

Issue cree_repertoire(std::string_view chemin) {
    return issue(CreateDirectoryW(natif(chemin).c_str(), nullptr));
}

Issue supprime_repertoire(std::string_view chemin) {
    return issue(RemoveDirectoryW(natif(chemin).c_str()));
}

std::string repertoire_temporaire() {
    return texte_de([](DWORD n, wchar_t* t) { return GetTempPathW(n, t); }, ".");
}

bool entre_dans(std::string_view chemin) {
    return SetCurrentDirectoryW(ordinaire(chemin).c_str());
}

std::string repertoire_courant() {
    return texte_de([](DWORD n, wchar_t* t) { return GetCurrentDirectoryW(n, t); }, ".");
}

std::string absolu(std::string_view chemin) {
    const std::wstring nom = ordinaire(chemin);
    return texte_de([&](DWORD n, wchar_t* t) { return GetFullPathNameW(nom.c_str(), n, t, nullptr); }, chemin);
}

unsigned long identite() {
    return GetCurrentProcessId();
}

}  // namespace fichiers::systeme
