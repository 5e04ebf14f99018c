// What fingers, pens, mouse, keys and the system say, in the order in which the loop takes it: what all windows share.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>

#include "platform/ecran/fenetre.h"

namespace ecran {

/// One contact acts at a time. It is known by the number that the system gives it; a second one does nothing, until all
/// have gone.
class Entrees {
  public:
    /// Queues an event; one of a sort of which only the last matters takes the place of the one before it.
    void ajoute(Evenement e);
    void ajoute(Evenement::Sorte sorte, int x = 0, int y = 0);
    bool vide() const { return file_.empty(); }
    /// The oldest event; Sorte::rien when there is none.
    Evenement prend();

  protected:
    /// A contact comes down. `sorte` is what the system calls its kind, `seul` tells that no other of this kind is
    /// down.
    void pose(std::uint32_t contact, std::uint32_t sorte, bool seul, int x, int y);
    void glisse(std::uint32_t contact, int x, int y);
    void leve(std::uint32_t contact, int x, int y);
    /// The contact is no longer known of.
    void perd(std::uint32_t contact);
    void perd_tout();

    /// A key that types this character; control characters and those that the page 1252 lacks do nothing.
    void frappe(char32_t point);
    /// Escape or Enter held down acts once: its repetitions would close one dialog after the other.
    void presse(Cle cle, bool repetee);

  private:
    std::deque<Evenement> file_;
    /// The contact that acts: of its sort it came down alone, and no other one acted.
    std::optional<std::uint32_t> premier_;
    std::uint32_t sorte_ = 0;  ///< what that one is
};

}  // namespace ecran
