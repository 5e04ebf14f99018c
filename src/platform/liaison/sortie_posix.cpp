#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/console/arret.h"
#include "platform/liaison/liaison.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/texte.h"

namespace liaison {
namespace {

using fichiers::epreuve::Operation;

constexpr std::size_t morceau = 256;  ///< bytes: what small printers take at once

class Sortie final : public Liaison {
  public:
    Sortie(int fd, bool fichier) : fd_(fd), fichier_(fichier) {}
    ~Sortie() override { ::close(fd_); }

    Issue envoie(std::string_view octets, int ms, std::size_t& partis) override {
        partis = 0;
        while (!octets.empty()) {
            if (fichiers::epreuve::essaie(Operation::ecrit) != fichiers::Issue::fait) return Issue::rompue;
            const auto n = ::write(fd_, octets.data(), std::min(octets.size(), morceau));
            if (n < 0 && errno == EINTR) continue;
            if (n < 0 && errno == ENOSPC) return Issue::pleine;
            if (n < 0 && errno != EAGAIN) return Issue::rompue;
            pollfd veille{fd_, POLLOUT, 0};
            if (n < 0 && ::poll(&veille, 1, arret::limite(ms)) <= 0) return Issue::muette;
            if (n <= 0) continue;
            partis += static_cast<std::size_t>(n);
            octets.remove_prefix(static_cast<std::size_t>(n));
        }
        return Issue::faite;
    }

    Issue recoit(unsigned char&, int) override { return Issue::muette; }

    Issue termine(int) override {
        if (!fichier_) return Issue::faite;
        const auto essai = fichiers::epreuve::essaie(Operation::vide_tampon);
        return essai == fichiers::Issue::fait && ::fsync(fd_) == 0 ? Issue::faite : Issue::rompue;
    }

  private:
    int fd_;
    bool fichier_;
};

}  // namespace

std::unique_ptr<Liaison> ouvre(std::string_view chemin, Issue& issue) {
    const std::string nom = texte::chemin_en_utf8(chemin);
    // A printer that is unplugged must not become a file of its name.
    const int cree = nom.starts_with("/dev/") && !nom.starts_with("/dev/shm/") ? 0 : O_CREAT;
    const int fd = ::open(nom.c_str(), O_WRONLY | O_APPEND | cree | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    struct stat s {};
    if (fd < 0 || ::fstat(fd, &s) != 0) {
        // No device behind the name, or nobody who reads the pipe.
        const bool absente = errno == ENOENT || errno == ENODEV || errno == ENXIO || errno == EIO;
        issue = absente ? Issue::introuvable : Issue::refusee;
        if (fd >= 0) ::close(fd);
        return nullptr;
    }
    issue = Issue::faite;
    return std::make_unique<Sortie>(fd, S_ISREG(s.st_mode));
}

}  // namespace liaison
