#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <vector>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus_interne.h"
#include "platform/systeme/texte.h"

namespace processus::systeme {
namespace {

constexpr int pas_de_programme = 127;  ///< as a shell says it

/// The words of a command line; a part between double quotes is one word.
std::vector<std::string> mots_de(std::string_view commande) {
    std::vector<std::string> mots;
    bool dans_mot = false, cite = false;
    for (const char c : commande) {
        if (c == ' ' && !cite) {
            dans_mot = false;
            continue;
        }
        if (!dans_mot) mots.emplace_back();
        dans_mot = true;
        if (c == '"') {
            cite = !cite;
        } else {
            mots.back() += c;
        }
    }
    return mots;
}

bool est_programme(const std::string& chemin) {
    struct stat s {};
    return ::stat(chemin.c_str(), &s) == 0 && S_ISREG(s.st_mode) && ::access(chemin.c_str(), X_OK) == 0;
}

/// The path of a program; one of the working directory goes before one of the search path. Empty when there is none.
std::string programme(std::string nom) {
    std::replace(nom.begin(), nom.end(), '\\', '/');
    if (nom.empty() || nom.find('/') != std::string::npos) return est_programme(nom) ? nom : std::string();
    const char* variable = std::getenv("PATH");
    std::istringstream repertoires(std::string(".:") + (variable == nullptr ? "" : variable));
    for (std::string repertoire; std::getline(repertoires, repertoire, ':');) {
        const std::string chemin = repertoire + "/" + nom;
        if (!repertoire.empty() && est_programme(chemin)) return chemin;
    }
    return {};
}

/// Program and arguments. Without quotes the program's path may hold blanks: each blank is tried as its end.
std::vector<std::string> arguments_de(std::string_view commande) {
    if (!commande.starts_with('"')) {
        for (std::size_t fin = commande.find(' ');; fin = commande.find(' ', fin + 1)) {
            const std::string chemin = programme(std::string(commande.substr(0, fin)));
            if (!chemin.empty()) {
                auto mots = mots_de(fin == std::string_view::npos ? "" : commande.substr(fin));
                mots.insert(mots.begin(), chemin);
                return mots;
            }
            if (fin == std::string_view::npos) return {};
        }
    }
    auto mots = mots_de(commande);
    mots[0] = programme(mots[0]);
    return mots[0].empty() ? std::vector<std::string>() : mots;
}

/// In the grandchild, which belongs to nobody: becomes the program, or tells through the pipe that it could not.
[[noreturn]] void devient(const std::vector<char*>& arguments, int tube) {
    ::setsid();
    for (const int signal : {SIGXFSZ, SIGPIPE}) std::signal(signal, SIG_DFL);  // ignored here: it would inherit that
    ::execv(arguments[0], arguments.data());
    static_cast<void>(!::write(tube, "", 1));
    ::_exit(pas_de_programme);
}

/// Starts the program by way of a child that ends at once, so that nobody has to wait for the program's end.
bool fait_demarrer(const std::vector<char*>& arguments) {
    int tube[2];
    if (::pipe2(tube, O_CLOEXEC) != 0) return false;
    const pid_t enfant = ::fork();
    if (enfant == 0) {
        const pid_t petit_enfant = ::fork();
        if (petit_enfant == 0) devient(arguments, tube[1]);
        ::_exit(petit_enfant < 0 ? 1 : 0);
    }
    ::close(tube[1]);
    int statut = -1;
    while (enfant > 0 && ::waitpid(enfant, &statut, 0) == -1 && errno == EINTR) continue;
    char faute = 0;
    ssize_t lus = 0;
    while ((lus = ::read(tube[0], &faute, 1)) == -1 && errno == EINTR) continue;
    ::close(tube[0]);
    return statut == 0 && lus == 0;
}

}  // namespace

bool lance(std::string_view commande, Fenetre) {
    std::vector<std::string> mots = arguments_de(texte::vers_utf8(texte::rogne(commande)));
    if (mots.empty()) return false;
    std::vector<char*> arguments;
    for (std::string& m : mots) arguments.push_back(m.data());
    arguments.push_back(nullptr);
    return fait_demarrer(arguments);
}

std::optional<int> execute(const std::vector<std::string>& mots, std::string_view sortie) {
    std::vector<std::string> natifs;
    for (const std::string& m : mots) natifs.push_back(texte::vers_utf8(m));
    std::vector<char*> arguments;
    for (std::string& m : natifs) arguments.push_back(m.data());
    arguments.push_back(nullptr);
    const int fd = ::open(texte::vers_utf8(sortie).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return std::nullopt;
    const pid_t enfant = ::fork();
    if (enfant == 0) {
        ::dup2(fd, STDOUT_FILENO);
        ::dup2(fd, STDERR_FILENO);
        ::execv(arguments[0], arguments.data());
        ::_exit(pas_de_programme);
    }
    ::close(fd);
    int statut = -1;
    while (enfant > 0 && ::waitpid(enfant, &statut, 0) == -1 && errno == EINTR) continue;
    if (enfant < 0 || !WIFEXITED(statut) || WEXITSTATUS(statut) == pas_de_programme) return std::nullopt;
    return WEXITSTATUS(statut);
}

std::string repertoire_du_programme() {
    char chemin[4096];
    const ssize_t n = ::readlink("/proc/self/exe", chemin, sizeof chemin);
    const std::string r = n > 0 ? texte::depuis_utf8_tolerant({chemin, static_cast<std::size_t>(n)}) : std::string();
    return r.substr(0, r.find_last_of('/') + 1);
}

std::string identifiant_machine() {
    for (const char* chemin : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        std::string t;
        if (fichiers::lis_tout(chemin, t, 4096) != fichiers::Issue::fait) continue;
        const auto lignes = texte::lignes(t);
        if (!lignes.empty() && !texte::rogne(lignes[0]).empty()) return std::string(texte::rogne(lignes[0]));
    }
    return {};
}

}  // namespace processus::systeme
