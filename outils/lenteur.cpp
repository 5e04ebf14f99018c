// Preloaded into a program, makes a directory slow: each operation there takes LENTEUR_MS longer. LENTEUR names the
// directory, absolute.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

bool est_la_bas(const char* chemin) {
    const char* lent = std::getenv("LENTEUR");
    return lent != nullptr && std::strncmp(chemin, lent, std::strlen(lent)) == 0;
}

/// Descriptors are known by what they are open on.
bool est_la_bas(int fd) {
    char cible[4096] = {};
    const std::string lien = "/proc/self/fd/" + std::to_string(fd);
    return ::readlink(lien.c_str(), cible, sizeof cible - 1) > 0 && est_la_bas(cible);
}

template <typename Lieu>
void traine(Lieu lieu) {
    const char* ms = std::getenv("LENTEUR_MS");
    if (ms != nullptr && est_la_bas(lieu)) ::usleep(static_cast<useconds_t>(std::atoi(ms)) * 1000);
}

template <typename Fonction>
Fonction* suivante(Fonction*, const char* nom) {
    return reinterpret_cast<Fonction*>(::dlsym(RTLD_NEXT, nom));
}

}  // namespace

extern "C" {

int open(const char* chemin, int drapeaux, ...) {
    va_list suite;
    va_start(suite, drapeaux);
    const auto mode = (drapeaux & O_CREAT) != 0 ? va_arg(suite, mode_t) : 0;
    va_end(suite);
    traine(chemin);
    return suivante(&open, "open")(chemin, drapeaux, mode);
}

DIR* opendir(const char* chemin) {
    traine(chemin);
    return suivante(&opendir, "opendir")(chemin);
}

int stat(const char* chemin, struct stat* s) noexcept {
    traine(chemin);
    return suivante(&stat, "stat")(chemin, s);
}

int fsync(int fd) {
    traine(fd);
    return suivante(&fsync, "fsync")(fd);
}

int renameat2(int a, const char* de, int b, const char* vers, unsigned drapeaux) noexcept {
    traine(vers);
    return suivante(&renameat2, "renameat2")(a, de, b, vers, drapeaux);
}

int unlink(const char* chemin) noexcept {
    traine(chemin);
    return suivante(&unlink, "unlink")(chemin);
}

}  // extern "C"
