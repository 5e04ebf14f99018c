// Files on Windows, through the wide calls.
#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/fichiers_systeme.h"
#include "platform/texte_win32.h"

namespace fichiers {
namespace {

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
        {ERROR_DISK_FULL, Issue::plein},
        {ERROR_HANDLE_DISK_FULL, Issue::plein},
        {ERROR_DISK_QUOTA_EXCEEDED, Issue::plein},
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

/// The path as the system takes it. A zero byte, which would cut it, becomes one that no name may hold.
std::wstring natif(std::string_view chemin) {
    std::wstring r = texte::large(chemin);
    std::replace(r.begin(), r.end(), L'/', L'\\');
    std::replace(r.begin(), r.end(), L'\0', L'?');
    return r;
}

HANDLE descripteur(std::intptr_t poignee) {
    return reinterpret_cast<HANDLE>(poignee);
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

struct Ouverture {
    DWORD acces, partage, creation;
};

Ouverture ouverture(systeme::Mode mode) {
    constexpr DWORD tous = FILE_SHARE_READ | FILE_SHARE_WRITE;
    switch (mode) {
        case systeme::Mode::lecture:
            return {GENERIC_READ, tous | FILE_SHARE_DELETE, OPEN_EXISTING};
        case systeme::Mode::nouveau:
            return {GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW};
        case systeme::Mode::records:
            return {GENERIC_READ | GENERIC_WRITE, tous, OPEN_ALWAYS};
    }
    return {};
}

bool est_fichier(const WIN32_FIND_DATAW& d) {
    return (d.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

}  // namespace

namespace systeme {

const char separateur = '\\';

Genre genre(std::string_view chemin) {
    const DWORD a = GetFileAttributesW(natif(chemin).c_str());
    if (a == INVALID_FILE_ATTRIBUTES) return Genre::rien;
    if ((a & FILE_ATTRIBUTE_DIRECTORY) != 0) return Genre::repertoire;
    return (a & FILE_ATTRIBUTE_DEVICE) == 0 ? Genre::fichier : Genre::autre;
}

Issue Fichier::ouvre(std::string_view chemin, Mode mode) {
    const Ouverture o = ouverture(mode);
    const std::wstring nom = natif(chemin);
    HANDLE h = CreateFileW(nom.c_str(), o.acces, o.partage, nullptr, o.creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return issue_de(GetLastError());
    poignee_ = reinterpret_cast<std::intptr_t>(h);
    if (GetFileType(h) == FILE_TYPE_DISK) return Issue::fait;
    static_cast<void>(ferme());
    return Issue::refuse;
}

Issue Fichier::lis(std::uint64_t position, char* octets, std::size_t n, std::size_t& lus) const {
    lus = 0;
    while (lus < n) {
        OVERLAPPED ou = place(position + lus);
        DWORD r = 0;
        if (!ReadFile(descripteur(poignee_), octets + lus, morceau(n - lus), &r, &ou)) {
            return GetLastError() == ERROR_HANDLE_EOF ? Issue::fait : issue_de(GetLastError());
        }
        if (r == 0) return Issue::fait;
        lus += r;
    }
    return Issue::fait;
}

Issue Fichier::ecris(std::uint64_t position, std::string_view octets) {
    while (!octets.empty()) {
        OVERLAPPED ou = place(position);
        DWORD r = 0;
        if (!WriteFile(descripteur(poignee_), octets.data(), morceau(octets.size()), &r, &ou)) {
            return issue_de(GetLastError());
        }
        if (r == 0) return Issue::plein;
        position += r;
        octets.remove_prefix(r);
    }
    return Issue::fait;
}

Issue Fichier::vide() {
    return issue(FlushFileBuffers(descripteur(poignee_)));
}

Issue Fichier::tronque(std::uint64_t longueur) {
    LARGE_INTEGER l;
    l.QuadPart = static_cast<LONGLONG>(longueur);
    if (!SetFilePointerEx(descripteur(poignee_), l, nullptr, FILE_BEGIN)) return issue_de(GetLastError());
    return issue(SetEndOfFile(descripteur(poignee_)));
}

std::uint64_t Fichier::longueur() const {
    LARGE_INTEGER l;
    return GetFileSizeEx(descripteur(poignee_), &l) ? static_cast<std::uint64_t>(l.QuadPart) : 0;
}

Issue Fichier::ferme() {
    if (poignee_ == -1) return Issue::fait;
    HANDLE h = descripteur(poignee_);
    poignee_ = -1;
    return issue(CloseHandle(h));
}

Issue deplace(std::string_view de, std::string_view vers, Remplace remplace) {
    const std::wstring source = natif(de), cible = natif(vers);
    const DWORD remplacement = remplace == Remplace::oui ? MOVEFILE_REPLACE_EXISTING : 0;
    return insiste([&] { return MoveFileExW(source.c_str(), cible.c_str(), MOVEFILE_WRITE_THROUGH | remplacement); });
}

Issue vide_repertoire(std::string_view) {
    return Issue::fait;  // the system flushes its names itself: renaming has written through
}

std::vector<std::string> noms(std::string_view repertoire, std::string_view motif) {
    std::vector<std::string> r;
    if (repertoire.empty()) return r;
    WIN32_FIND_DATAW d;
    HANDLE h = FindFirstFileW(natif(joint(repertoire, "*")).c_str(), &d);
    if (h == INVALID_HANDLE_VALUE) return r;
    do {
        const auto nom = texte::etroit(d.cFileName);
        if (nom && correspond(*nom, motif) && est_fichier(d)) r.push_back(*nom);
    } while (FindNextFileW(h, &d));
    FindClose(h);
    return r;
}

unsigned long numero_processus() {
    return GetCurrentProcessId();
}

}  // namespace systeme

Issue supprime(std::string_view chemin) {
    const std::wstring nom = natif(chemin);
    return insiste([&] { return DeleteFileW(nom.c_str()); });
}

Issue cree_repertoire(std::string_view chemin) {
    return issue(CreateDirectoryW(natif(chemin).c_str(), nullptr));
}

bool entre_dans(std::string_view chemin) {
    return SetCurrentDirectoryW(natif(chemin).c_str());
}

std::string repertoire_courant() {
    std::wstring r(GetCurrentDirectoryW(0, nullptr), L'\0');
    r.resize(GetCurrentDirectoryW(static_cast<DWORD>(r.size()), r.data()));
    return texte::etroit_tolerant(r);
}

std::string absolu(std::string_view chemin) {
    const std::wstring nom = natif(chemin);
    std::wstring r(GetFullPathNameW(nom.c_str(), 0, nullptr, nullptr), L'\0');
    r.resize(GetFullPathNameW(nom.c_str(), static_cast<DWORD>(r.size()), r.data(), nullptr));
    return r.empty() ? std::string(chemin) : texte::etroit_tolerant(r);
}

}  // namespace fichiers
