// A one-way line to a printer, over the network or through a file of the system, on which little is said back. Every
// call has a limit of time, and becomes shorter once the program is asked to end (arret.h).
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace liaison {

enum class Issue {
    faite,
    introuvable,  ///< no such host or file
    refusee,      ///< nobody listens there, or the file may not be written
    muette,       ///< nothing came within the limit
    rompue,       ///< it was there, and is gone
    pleine,       ///< no space left
};
/// In French, for people (page 1252).
std::string_view raison(Issue issue);

class Liaison {
  public:
    virtual ~Liaison() = default;
    /// Hands over all bytes; `muette` when none was taken for `ms` milliseconds. `partis` counts those taken.
    virtual Issue envoie(std::string_view octets, int ms, std::size_t& partis) = 0;
    /// One byte that came back; `muette` when none did.
    virtual Issue recoit(unsigned char& octet, int ms) = 0;
    /// Says that nothing follows, and waits until all has arrived: `faite` when the other side ended then, too, or the
    /// medium has it; `muette` when it keeps silent. Such a line may be asked again.
    virtual Issue termine(int ms) = 0;
};

/// Null on failure, with the reason in `issue`. The name of the host is looked up within the limit as well.
std::unique_ptr<Liaison> appelle(const std::string& hote, int port, int ms, Issue& issue);
/// Opens a file or a device for appending; a file is made when it is missing. Never waits for a device.
std::unique_ptr<Liaison> ouvre(std::string_view chemin, Issue& issue);

}  // namespace liaison
