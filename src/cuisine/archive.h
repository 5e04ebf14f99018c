// The archive of a kitchen: its folders, and the code that tells it from another one that comes to lie at its place, on
// a share that returns or after somebody has moved it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/systeme/fichiers.h"

namespace archive {

class Archive {
  public:
    /// Makes the folders and the code that are missing. Nothing when they cannot be made or read, with the reason.
    static std::optional<Archive> ouvre(const std::string& dossier, fichiers::Issue& issue);

    const std::string& dossier() const { return dossier_; }
    /// Ten signs that no other archive has, wherever it lies and whoever works in it.
    const std::string& code() const { return code_; }
    /// Where orders lie that are being printed, and files that are none.
    std::string en_cours() const { return fichiers::joint(dossier_, "en_cours"); }
    std::string rejets() const { return fichiers::joint(dossier_, "rejets"); }
    std::string verrou() const { return fichiers::joint(dossier_, "cuisine.verrou"); }

    /// Whether its folders are there: a share that is mounted, or gone, takes them along.
    bool est_la() const { return fichiers::est_repertoire(en_cours()); }
    /// Whether another one has come to lie at its place. One whose code cannot be read at the moment is the same.
    bool est_remplacee() const;
    /// Removes what a power cut left half made; to be called by the one that works in it.
    void nettoie() const;

  private:
    std::string dossier_, code_;

    fichiers::Issue prepare() const;
};

}  // namespace archive
