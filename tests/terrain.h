// A working directory of its own for a test, with a small restaurant in it, and the real program played on it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace tests {

/// From operation to operation, where a process is forked for each: under the sanitizer a fork takes many times as
/// long.
#ifdef __SANITIZE_ADDRESS__
inline constexpr int pas = 5;
#else
inline constexpr int pas = 1;
#endif

/// What a replay gave.
struct Issue {
    int statut = -1;
    std::string sortie, erreurs;
};

class Terrain {
  public:
    /// An empty directory.
    Terrain();
    ~Terrain();
    Terrain(const Terrain&) = delete;
    Terrain& operator=(const Terrain&) = delete;

    /// Adds a whole small restaurant: settings for a screen of 1280 x 770, network directory "reseau", catalogue,
    /// key program.
    Terrain& restaurant();

    const std::filesystem::path& chemin() const { return chemin_; }
    std::filesystem::path reseau() const { return chemin_ / "reseau"; }
    /// Writes a file (bytes as they are) below the directory.
    void pose(const std::string& nom, std::string_view contenu) const;
    /// Copies all that another ground holds.
    void copie(const Terrain& autre) const;
    /// The whole file, empty when there is none.
    std::string lis(const std::string& nom) const;
    bool existe(const std::string& nom) const;
    /// Names of the files of a directory below that end so, in order.
    std::vector<std::string> fichiers(const std::string& repertoire, std::string_view fin) const;
    /// Sets one 20-byte record of the settings store.
    void regle(int record, std::string_view valeur) const;
    /// Sets one line of the key program: page, line, action; the rest as the caller gives it.
    void touche(int page, int ligne, std::string_view libelle, std::string_view action, std::string_view forme = "22",
                std::string_view image = "", std::string_view couleur = "", std::string_view taille = "") const;

    /// Runs a command line, its words in quotes where they need them; `avant` goes in front of it.
    Issue lance(const std::string& commande, const std::string& avant = "") const;
    /// Plays a scenario text, or a file of tests/scenarios; `options` go on the command line as they are, and what the
    /// shell is to do before goes in front of it.
    Issue joue(const std::string& scenario, const std::string& options = "", const std::string& avant = "") const;
    Issue joue_fichier(const std::string& nom, const std::string& options = "") const;
    /// Runs the kitchen on the network directory until nothing is left to do.
    Issue cuisine(const std::string& options) const;

  private:
    std::filesystem::path chemin_;
};

/// The text of a file of tests/scenarios.
std::string scenario(const std::string& nom);

/// A whole file, empty when there is none.
std::string lis(const std::filesystem::path& chemin);

/// A UTF-8 text as bytes of the page 1252.
std::string page1252(std::string_view utf8);

#ifndef _WIN32
/// Waits for a forked process; its exit status, -1 when it has none.
int attend_la_fin(pid_t fils);

/// No file may grow past this many bytes while it lives: what a full disk does to a write, part way through.
class LimiteDeTaille {
  public:
    explicit LimiteDeTaille(rlim_t octets) {
        getrlimit(RLIMIT_FSIZE, &avant_);
        const rlimit limite{octets, avant_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limite);
    }
    ~LimiteDeTaille() { setrlimit(RLIMIT_FSIZE, &avant_); }

  private:
    rlimit avant_{};
};
#endif

}  // namespace tests
