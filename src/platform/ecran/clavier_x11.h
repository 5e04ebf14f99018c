// The physical keyboard as its user has set it up, dead keys and the compose key included. It is read at the first
// press of a key: many a tablet has none, and a start must not wait for it.
#pragma once

#include <xcb/xcb.h>

#include "platform/ecran/entrees_x11.h"

struct xkb_context;
struct xkb_keymap;
struct xkb_state;
struct xkb_compose_state;

namespace ecran {

class ClavierX11 {
  public:
    explicit ClavierX11(xcb_connection_t* serveur) : serveur_(serveur) {}
    ~ClavierX11();
    ClavierX11(const ClavierX11&) = delete;
    ClavierX11& operator=(const ClavierX11&) = delete;

    Frappe lis(const xcb_input_key_press_event_t& e);
    /// When the event tells that the keys have other meanings from now on, they are read anew at the next press.
    void regarde(const xcb_generic_event_t& e);
    /// What was begun with a dead key or the compose key is forgotten: the keys go elsewhere from now on.
    void oublie_composition();

  private:
    xcb_connection_t* serveur_;
    xkb_context* contexte_ = nullptr;
    xkb_compose_state* composition_ = nullptr;  ///< null: without its table no key is dead
    xkb_keymap* touches_ = nullptr;
    xkb_state* etat_ = nullptr;    ///< null: not read yet, or anew
    std::uint8_t evenements_ = 0;  ///< the number of the keyboard extension's events, 0: not asked for

    void ouvre();
    void prepare_composition();
    void prend_touches();
    void oublie_touches();
    std::u32string signes(xkb_state* etat, std::uint32_t touche, std::uint32_t symbole);
};

}  // namespace ecran
