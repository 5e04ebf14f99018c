// What the events of an X11 window say of fingers, pens, mouse and keys, as events of the terminal. It holds no window
// and asks no server, and so can be tried without one.
#pragma once

#include <xcb/xcb.h>
// After it: it stands on the one before.
#include <xcb/xinput.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/ecran/entrees.h"

namespace ecran {

/// What one press of a key means.
struct Frappe {
    std::optional<Cle> cle;
    std::u32string signes;  ///< what it types, when it is no special key
};

/// Tells that of a key's number and what is held with it.
using LectureClavier = std::function<Frappe(const xcb_input_key_press_event_t&)>;

/// The events of XInput 2 that the window must ask for.
extern const std::uint32_t evenements_d_entree;

class EntreesX11 : public Entrees {
  public:
    explicit EntreesX11(LectureClavier clavier) : clavier_(std::move(clavier)) {}

    /// Queues what an event of XInput 2 says; others say nothing. Its masks lie behind it, as the server sent them.
    void decode(const xcb_ge_generic_event_t& e);
    /// The window has no longer the keyboard, or is no longer seen: what is down will not be let go of here.
    void lache() { perd_tout(); }

  private:
    LectureClavier clavier_;

    void decode_doigt(const xcb_input_touch_begin_event_t& e);
    void decode_souris(const xcb_input_button_press_event_t& e);
    void decode_touche(const xcb_input_key_press_event_t& e);
};

}  // namespace ecran
