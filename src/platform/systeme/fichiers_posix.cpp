#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/systeme/epreuve.h"
#include "platform/systeme/fichiers_systeme.h"
#include "platform/systeme/texte.h"

namespace fichiers::systeme {
namespace {

using epreuve::Operation;

std::string natif(std::string_view chemin) {
    return texte::chemin_en_utf8(chemin);
}

Issue issue_de(int erreur) {
    switch (erreur) {
        case ENOENT:
        case ENOTDIR:
            return Issue::absent;
        case EEXIST:
        case ENOTEMPTY:
            return Issue::existe;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ENXIO:
            return Issue::refuse;
        case ETXTBSY:
        case EBUSY:
        case EAGAIN:
            return Issue::occupe;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Issue::plein;
        default:
            return Issue::panne;
    }
}

Issue issue_de_rc(int rc) {
    return rc == 0 ? Issue::fait : issue_de(errno);
}

/// A file size limit is an error like others, not the end of the program.
void ignore_limite_de_taille() {
    static const auto ancien = std::signal(SIGXFSZ, SIG_IGN);
    static_cast<void>(ancien);
}

class FichierPosix final : public Fichier {
  public:
    explicit FichierPosix(int fd) : fd_(fd) {}
    ~FichierPosix() override {
        if (fd_ >= 0) ::close(fd_);
    }

    std::uint64_t longueur() override {
        struct stat s {};
        return ::fstat(fd_, &s) == 0 ? static_cast<std::uint64_t>(s.st_size) : longueur_inconnue;
    }

    std::int64_t lis(std::uint64_t place, char* vers, std::size_t nombre) override {
        if (epreuve::essaie(Operation::lis) != Issue::fait) return -1;
        for (;;) {
            const auto n = ::pread(fd_, vers, nombre, static_cast<off_t>(place));
            if (n >= 0 || errno != EINTR) return n;
        }
    }

    Issue ecrit(std::uint64_t place, std::string_view contenu) override {
        if (const Issue i = epreuve::essaie(Operation::ecrit); i != Issue::fait) return i;
        while (!contenu.empty()) {
            const auto n = ::pwrite(fd_, contenu.data(), contenu.size(), static_cast<off_t>(place));
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) return n == 0 ? Issue::plein : issue_de(errno);
            place += static_cast<std::uint64_t>(n);
            contenu.remove_prefix(static_cast<std::size_t>(n));
        }
        return Issue::fait;
    }

    Issue tronque(std::uint64_t longueur) override {
        return issue_de_rc(::ftruncate(fd_, static_cast<off_t>(longueur)));
    }

    Issue vide_tampon() override {
        if (const Issue i = epreuve::essaie(Operation::vide_tampon); i != Issue::fait) return i;
        return issue_de_rc(::fsync(fd_));
    }

    Issue ferme() override {
        const int rc = ::close(std::exchange(fd_, -1));
        if (const Issue i = epreuve::essaie(Operation::ferme); i != Issue::fait) return i;
        return rc != 0 && errno == EINTR ? Issue::fait : issue_de_rc(rc);  // interrupted, it is closed all the same
    }

  private:
    int fd_;
};

int drapeaux(Fichier::Ouverture mode) {
    switch (mode) {
        case Fichier::Ouverture::lecture:
            return O_RDONLY | O_NONBLOCK | O_NOCTTY;
        case Fichier::Ouverture::creation:
            return O_WRONLY | O_CREAT | O_EXCL;
        case Fichier::Ouverture::lecture_ecriture:
            return O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY;
    }
    return O_RDONLY;
}

}  // namespace

std::unique_ptr<Fichier> Fichier::ouvre(std::string_view chemin, Ouverture mode, Issue& issue) {
    ignore_limite_de_taille();
    issue = epreuve::essaie(Operation::ouvre, chemin);
    if (issue != Issue::fait) return nullptr;
    const int fd = ::open(natif(chemin).c_str(), drapeaux(mode) | O_CLOEXEC, 0666);
    if (fd < 0) {
        issue = issue_de(errno);
        return nullptr;
    }
    auto f = std::make_unique<FichierPosix>(fd);
    struct stat s {};
    if (::fstat(fd, &s) != 0 || !S_ISREG(s.st_mode)) {
        issue = Issue::refuse;
        return nullptr;
    }
    issue = Issue::fait;
    return f;
}

Nature nature(std::string_view chemin, std::uint64_t& longueur, std::uint64_t* volume) {
    struct stat s {};
    if (::stat(natif(chemin).c_str(), &s) != 0) return Nature::absente;
    if (volume != nullptr) *volume = s.st_dev;
    longueur = static_cast<std::uint64_t>(s.st_size);
    return S_ISREG(s.st_mode) ? Nature::fichier : S_ISDIR(s.st_mode) ? Nature::repertoire : Nature::autre;
}

std::optional<std::int64_t> modifie_le(std::string_view chemin) {
    struct stat s {};
    if (::stat(natif(chemin).c_str(), &s) != 0) return std::nullopt;
    return s.st_mtime;
}

/// A directory is told by the listing itself: to look at one on which a share is mounted would wait for that share.
/// What is listed without its sort and cannot be looked at is there all the same, and no file of an order is missing.
static bool est_fichier(std::string_view repertoire, const std::string& nom, unsigned char sorte) {
    if (sorte == DT_REG || sorte == DT_DIR) return sorte == DT_REG;
    std::uint64_t n = 0;
    const Nature vue = nature(joint(repertoire, nom), n);
    return vue == Nature::fichier || (vue == Nature::absente && sorte == DT_UNKNOWN);
}

Issue entrees(std::string_view repertoire, std::vector<std::string>& noms) {
    if (const Issue i = epreuve::essaie(Operation::liste, repertoire); i != Issue::fait) return i;
    DIR* d = ::opendir(natif(repertoire).c_str());
    if (d == nullptr) return issue_de(errno);
    errno = 0;
    while (const dirent* e = ::readdir(d)) {
        const auto nom = texte::depuis_utf8(e->d_name);
        if (nom && nom->find('\\') == std::string::npos && est_fichier(repertoire, *nom, e->d_type))
            noms.push_back(*nom);
        errno = 0;
    }
    const int erreur = errno;
    ::closedir(d);
    return erreur == 0 ? Issue::fait : issue_de(erreur);
}

/// Some file systems of shares do not know the exclusive rename: then the name is looked for first, which leaves a gap
/// only against another program that makes the same name in between. A second name by a link would be exclusive, but a
/// cut could leave both.
Issue renomme_sans_remplacer(std::string_view de, std::string_view vers) {
    if (const Issue i = epreuve::essaie(Operation::renomme, de); i != Issue::fait) return i;
    const std::string a = natif(de), b = natif(vers);
    if (::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_NOREPLACE) == 0) return Issue::fait;
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return issue_de(errno);
    struct stat s {};
    if (::lstat(b.c_str(), &s) == 0) return Issue::existe;
    return issue_de_rc(::rename(a.c_str(), b.c_str()));
}

Issue renomme_en_remplacant(std::string_view de, std::string_view vers) {
    if (const Issue i = epreuve::essaie(Operation::renomme, de); i != Issue::fait) return i;
    return issue_de_rc(::rename(natif(de).c_str(), natif(vers).c_str()));
}

void vide_tampon_repertoire(std::string_view repertoire) {
    if (epreuve::essaie(Operation::vide_repertoire, repertoire) != Issue::fait) return;
    const int fd = ::open(natif(repertoire).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    static_cast<void>(::fsync(fd));
    ::close(fd);
}

Issue supprime(std::string_view chemin) {
    if (const Issue i = epreuve::essaie(Operation::supprime, chemin); i != Issue::fait) return i;
    return issue_de_rc(::unlink(natif(chemin).c_str()));
}

Issue cree_repertoire(std::string_view chemin) {
    return issue_de_rc(::mkdir(natif(chemin).c_str(), 0777));
}

Issue supprime_repertoire(std::string_view chemin) {
    return issue_de_rc(::rmdir(natif(chemin).c_str()));
}

std::string repertoire_temporaire() {
    const char* t = std::getenv("TMPDIR");
    return t == nullptr || *t == '\0' ? "/tmp" : absolu(texte::depuis_utf8_tolerant(t));
}

bool entre_dans(std::string_view chemin) {
    return ::chdir(natif(chemin).c_str()) == 0;
}

std::string repertoire_courant() {
    char* c = ::getcwd(nullptr, 0);
    if (c == nullptr) return ".";
    const std::string r = texte::depuis_utf8_tolerant(c);
    std::free(c);
    return r;
}

std::string absolu(std::string_view chemin) {
    const bool deja = !chemin.empty() && (chemin[0] == '/' || chemin[0] == '\\');
    return deja ? std::string(chemin) : joint(repertoire_courant(), chemin);
}

unsigned long identite() {
    return static_cast<unsigned long>(::getpid());
}

}  // namespace fichiers::systeme
