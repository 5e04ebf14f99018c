// The running number of the tickets, kept twice: a damaged file does not begin the count anew.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/systeme/fichiers.h"

namespace compteur {

/// The last number that a ticket can have; a file that says more is damaged.
inline constexpr int numero_max = 999'999'999;

class Compteur {
  public:
    explicit Compteur(const std::string& archive);
    /// Reads the files, once for all. False while they cannot be read; after some seconds they count as damaged.
    bool relit();
    bool est_lu() const { return lu_; }
    /// The last number that was given.
    int dernier() const { return dernier_; }
    /// Whether there were files, and both are damaged.
    bool perdu() const { return perdu_; }
    /// A number that an order bears already.
    void connait(int numero);
    /// Keeps a number on the medium as the last one.
    fichiers::Issue retient(int numero);

  private:
    std::string fichier_, copie_;
    int dernier_ = 0;
    std::optional<std::int64_t> illisible_depuis_;  ///< horloge::millisecondes()
    bool lu_ = false, perdu_ = false;
};

}  // namespace compteur
