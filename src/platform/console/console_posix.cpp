#include <fcntl.h>
#include <unistd.h>

#include "platform/console/console.h"
#include "platform/systeme/texte.h"

namespace console {

std::vector<std::string> mots(int argc, const Lettre* const* argv) {
    std::vector<std::string> r;
    for (int i = 1; i < argc; ++i) r.push_back(texte::depuis_utf8_tolerant(argv[i]));
    return r;
}

/// The first files that are opened would get the numbers of closed ones. Writing to such an output fails.
void occupe_les_flux() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDONLY));
    }
}

void rattache() {
    occupe_les_flux();
}
void detache() {}
void ecrit_en_utf8() {}
void attend_si_seul() {}
void montre(const std::string&) {}

}  // namespace console
