#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/fichiers.h"
#include "platform/processus_interne.h"
#include "platform/texte.h"

namespace processus::systeme {
namespace {

/// The words of a command line; a part between double quotes is one word.
std::vector<std::string> mots_de(std::string_view commande) {
    std::vector<std::string> mots;
    bool dans_mot = false, cite = false;
    for (const char c : texte::vers_utf8(commande)) {
        if (c == '"') {
            cite = !cite;
            if (!dans_mot) mots.emplace_back();
            dans_mot = true;
        } else if (c == ' ' && !cite) {
            dans_mot = false;
        } else {
            if (!dans_mot) mots.emplace_back();
            dans_mot = true;
            mots.back() += c;
        }
    }
    return mots;
}

/// In the grandchild, which belongs to nobody: becomes the program, or reports the error through the pipe.
[[noreturn]] void devient(const std::vector<char*>& arguments, int tube) {
    ::setsid();
    ::execvp(arguments[0], arguments.data());
    const int erreur = errno;
    static_cast<void>(!::write(tube, &erreur, sizeof erreur));
    ::_exit(127);
}

}  // namespace

/// A program of the working directory goes before one of the search path.
bool lance(std::string_view commande, Fenetre) {
    std::vector<std::string> mots = mots_de(commande);
    if (mots.empty()) return false;
    if (mots[0].find('/') == std::string::npos && ::access(mots[0].c_str(), X_OK) == 0) mots[0].insert(0, "./");
    std::vector<char*> arguments;
    for (std::string& m : mots) arguments.push_back(m.data());
    arguments.push_back(nullptr);
    int tube[2];
    if (::pipe2(tube, O_CLOEXEC) != 0) return false;
    const pid_t enfant = ::fork();
    if (enfant == 0) {
        if (::fork() == 0) devient(arguments, tube[1]);
        ::_exit(0);
    }
    ::close(tube[1]);
    int erreur = 0;
    const bool echec = enfant < 0 || ::read(tube[0], &erreur, sizeof erreur) > 0;
    ::close(tube[0]);
    if (enfant > 0) ::waitpid(enfant, nullptr, 0);
    return !echec;
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
