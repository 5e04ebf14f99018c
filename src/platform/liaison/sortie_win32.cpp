#include <windows.h>

#include <algorithm>

#include "platform/console/arret.h"
#include "platform/liaison/liaison.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/texte_win32.h"

namespace liaison {
namespace {

using fichiers::epreuve::Operation;

class Sortie final : public Liaison {
  public:
    Sortie(HANDLE h, bool fichier) : h_(h), fichier_(fichier) {}
    ~Sortie() override { CloseHandle(h_); }

    Issue envoie(std::string_view octets, int ms, std::size_t& partis) override {
        partis = 0;
        borne(ms);
        while (!octets.empty()) {
            if (fichiers::epreuve::essaie(Operation::ecrit) != fichiers::Issue::fait) return Issue::rompue;
            constexpr std::size_t morceau = 256;  // what small printers take at once
            DWORD n = 0;
            const auto voulus = static_cast<DWORD>(std::min(octets.size(), morceau));
            const bool ecrit = WriteFile(h_, octets.data(), voulus, &n, nullptr) != 0;
            if (!ecrit) return GetLastError() == ERROR_DISK_FULL ? Issue::pleine : Issue::rompue;
            if (n == 0) return Issue::muette;
            partis += n;
            octets.remove_prefix(n);
        }
        return Issue::faite;
    }

    Issue recoit(unsigned char&, int) override { return Issue::muette; }

    Issue termine(int) override {
        if (!fichier_) return Issue::faite;
        const auto essai = fichiers::epreuve::essaie(Operation::vide_tampon);
        return essai == fichiers::Issue::fait && FlushFileBuffers(h_) ? Issue::faite : Issue::rompue;
    }

  private:
    HANDLE h_;
    bool fichier_;

    /// A port gives up after that time; a file knows no such bound.
    void borne(int ms) {
        COMMTIMEOUTS t{};
        t.WriteTotalTimeoutConstant = static_cast<DWORD>(arret::limite(ms));
        SetCommTimeouts(h_, &t);
    }
};

}  // namespace

std::unique_ptr<Liaison> ouvre(std::string_view chemin, Issue& issue) {
    const bool port = chemin.starts_with("\\\\.\\");
    const DWORD droits = port ? GENERIC_READ | GENERIC_WRITE : FILE_APPEND_DATA;
    HANDLE h = CreateFileW(texte::large(chemin).c_str(), droits, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
        const DWORD erreur = GetLastError();
        const bool absente = erreur == ERROR_FILE_NOT_FOUND || erreur == ERROR_PATH_NOT_FOUND;
        issue = absente ? Issue::introuvable : Issue::refusee;
        return nullptr;
    }
    issue = Issue::faite;
    return std::make_unique<Sortie>(h, GetFileType(h) == FILE_TYPE_DISK);
}

}  // namespace liaison
