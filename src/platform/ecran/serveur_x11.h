// The display server as the window finds it: its screen, its colours, how dense it is, and who manages its windows.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/peinture/toile.h"

namespace ecran {

/// Names that the window and its manager speak of, by the server's numbers.
enum class Atome : std::size_t {
    wm_protocols,
    wm_delete_window,
    wm_client_machine,
    net_wm_ping,
    net_wm_pid,
    net_wm_name,
    utf8_string,
    net_wm_state,
    net_wm_state_fullscreen,
    net_active_window,
    net_supporting_wm_check,
    net_supported,
    net_wm_bypass_compositor,
    nombre
};

/// How the window's pixels are stored: always as those of an Image.
struct Couleurs {
    xcb_visualid_t visuel = 0;
    std::uint8_t profondeur = 0;  ///< 24 or 32 bits; 0: the screen has no such colours
};

class ServeurX11 {
  public:
    /// Null when there is none that can serve; `refus` then says why, in French (UTF-8), where it is known.
    static std::unique_ptr<ServeurX11> joint(std::string& refus);
    ~ServeurX11() { xcb_disconnect(connexion_); }
    ServeurX11(const ServeurX11&) = delete;
    ServeurX11& operator=(const ServeurX11&) = delete;

    xcb_connection_t* connexion() const { return connexion_; }
    xcb_screen_t& ecran() const { return *ecran_; }
    const Couleurs& couleurs() const { return couleurs_; }
    xcb_atom_t atome(Atome a) const { return atomes_[static_cast<std::size_t>(a)]; }
    /// Whether a manager of windows is there that can put one over the whole screen.
    bool plein_ecran_gere() const { return plein_ecran_gere_; }
    /// One has come or gone, or may have: the server tells by changes of properties and by the end of a window of the
    /// manager's.
    void cherche_le_gerant();
    /// No window has the keyboard.
    bool clavier_a_prendre() const;
    /// The whole screen as it lies now.
    Zone etendue() const;
    /// It has gone, and answers no more.
    bool a_disparu() const { return xcb_connection_has_error(connexion_) != 0; }
    /// Whether it has this extension, such as xcb_shm_id.
    bool connait(xcb_extension_t& extension) const;
    /// Pixels per 1/96 inch, as the user's settings tell the programs of this screen; at least 1.
    double densite() const { return densite_; }
    /// They have changed.
    void relis_la_densite();

  private:
    ServeurX11(xcb_connection_t* connexion, xcb_screen_t* ecran) : connexion_(connexion), ecran_(ecran) {}

    xcb_connection_t* connexion_;
    xcb_screen_t* ecran_;
    Couleurs couleurs_;
    std::array<xcb_atom_t, static_cast<std::size_t>(Atome::nombre)> atomes_{};
    bool plein_ecran_gere_ = false;
    double densite_ = 1;

    void demande_atomes();
    bool connait_les_doigts();
    bool est_notre(xcb_window_t fenetre) const;
};

}  // namespace ecran
