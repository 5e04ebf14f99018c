#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/liaison/verrou.h"
#include "platform/systeme/texte.h"

namespace verrou {
namespace {

using fichiers::Issue;

class VerrouLinux final : public Verrou {
  public:
    explicit VerrouLinux(int fd) : fd_(fd) {}
    ~VerrouLinux() override {
        if (fd_ >= 0) ::close(fd_);
    }

  private:
    int fd_;
};

}  // namespace

std::unique_ptr<Verrou> prend(std::string_view fichier, Issue& issue) {
    const std::string chemin = texte::chemin_en_utf8(fichier);
    int fd = ::open(chemin.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    const int erreur = fd < 0 ? errno : 0;
    if (fd >= 0) static_cast<void>(::fchmod(fd, 0666));  // for other users, whatever the mask; only its maker can
    if (fd < 0) fd = ::open(chemin.c_str(), O_RDONLY | O_CLOEXEC);  // one that may only be read can be held, too
    if (fd < 0 && erreur != EACCES && erreur != EPERM && erreur != EROFS) {
        const bool plein = erreur == ENOSPC || erreur == EDQUOT, absent = erreur == ENOENT || erreur == ENOTDIR;
        issue = plein ? Issue::plein : absent ? Issue::absent : Issue::panne;
        return nullptr;
    }
    if (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EACCES)) {
        ::close(fd);
        issue = Issue::occupe;
        return nullptr;
    }
    issue = Issue::fait;
    return std::make_unique<VerrouLinux>(fd);
}

}  // namespace verrou
