#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "platform/console/arret.h"
#include "platform/liaison/guet.h"
#include "platform/systeme/texte.h"

namespace guet {
namespace {

class GuetLinux final : public Guet {
  public:
    explicit GuetLinux(std::string_view repertoire) : fd_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        const std::string chemin = texte::chemin_en_utf8(repertoire);
        if (fd_ >= 0) ::inotify_add_watch(fd_, chemin.c_str(), IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR);
    }
    ~GuetLinux() override {
        if (fd_ >= 0) ::close(fd_);
    }

    void attend(int ms) override {
        pollfd veille[] = {{arret::descripteur(), POLLIN, 0}, {fd_, POLLIN, 0}};
        static_cast<void>(::poll(veille, 2, ms));
        alignas(inotify_event) char lus[4096];
        while (fd_ >= 0 && ::read(fd_, lus, sizeof lus) > 0) continue;
    }

  private:
    int fd_;
};

}  // namespace

std::unique_ptr<Guet> ouvre(std::string_view repertoire) {
    return std::make_unique<GuetLinux>(repertoire);
}

}  // namespace guet
