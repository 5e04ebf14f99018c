// Where tickets go: a printer of the network, a file or device, the screen. Each tells what became of a ticket, so that
// the caller can send it again, and mark it, where nobody knows.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cuisine/ticket.h"

namespace imprimante {

enum class Sort {
    imprime,
    attend,      ///< nothing of it has left
    interrompu,  ///< some of it may have been printed
    suspendu,    ///< taken whole without a word: the line tells later
};
class Suite;
struct Constat {
    Sort sort = Sort::imprime;
    std::string raison;                      ///< French; of one that was printed too, when nobody has confirmed it
    std::unique_ptr<Suite> suite = nullptr;  ///< of a ticket in suspense
};

/// The line of a ticket in suspense. It must not outlive its printer.
class Suite {
  public:
    virtual ~Suite() = default;
    /// Nothing as long as it is not known. Does not wait.
    virtual std::optional<Constat> regarde() = 0;
};

class Imprimante {
  public:
    virtual ~Imprimante() = default;
    /// `commence` is called right before the first byte leaves; false: nothing is sent then.
    virtual Constat imprime(const ticket::Ticket& ticket, const std::function<bool()>& commence) = 0;
};

/// What the command line says of a printer.
struct Adresse {
    enum class Sorte { ecran, tcp, fichier };
    Sorte sorte = Sorte::ecran;
    std::string lieu;  ///< host or path
    int port = 0;

    /// The one way to write it: what tells printers from one another.
    std::string ecrite() const;
    /// How the tickets call it: the host, or the file's name without its directory.
    std::string nom() const;
};
/// "ecran", "tcp://HOST[:PORT]" or "fichier:PATH"; false when it is none of these.
bool lis_adresse(std::string_view t, Adresse& adresse);

/// Milliseconds for which a printer that says nothing may keep a line open: the first one, the next one, and each
/// until its ticket counts as printed.
struct Patience {
    int d_abord = 15000, encore = 30000, en_suspens = 300000;
};
struct Reglages {
    ticket::Page page = ticket::Page::p1252;
    bool avec_etat = true;  ///< asks the printer for its state
    Patience patience;
};
std::unique_ptr<Imprimante> cree(const Adresse& adresse, const Reglages& reglages);

}  // namespace imprimante
