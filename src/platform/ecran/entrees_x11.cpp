#include "platform/ecran/entrees_x11.h"

#include <cmath>

namespace ecran {
namespace {

constexpr std::uint32_t souris = ~std::uint32_t{0};  ///< its contact number: none that the server gives
constexpr std::uint32_t un_doigt = 0, une_souris = 1;
constexpr std::uint32_t bouton_gauche = 1;

/// A place in 65536ths of a pixel. To the left of the window it is negative.
int pixel(xcb_input_fp1616_t place) {
    return static_cast<int>(std::floor(place / 65536.0));
}

bool est_tenu(const xcb_input_button_press_event_t& e, std::uint32_t bouton) {
    const std::uint32_t* boutons = xcb_input_button_press_button_mask(&e);
    return e.buttons_len > 0 && (boutons[0] & (1U << bouton)) != 0;
}

}  // namespace

const std::uint32_t evenements_d_entree = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS |
                                          XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE | XCB_INPUT_XI_EVENT_MASK_MOTION |
                                          XCB_INPUT_XI_EVENT_MASK_TOUCH_BEGIN | XCB_INPUT_XI_EVENT_MASK_TOUCH_UPDATE |
                                          XCB_INPUT_XI_EVENT_MASK_TOUCH_END;

void EntreesX11::decode(const xcb_ge_generic_event_t& e) {
    switch (e.event_type) {
        case XCB_INPUT_TOUCH_BEGIN:
        case XCB_INPUT_TOUCH_UPDATE:
        case XCB_INPUT_TOUCH_END:
            return decode_doigt(reinterpret_cast<const xcb_input_touch_begin_event_t&>(e));
        case XCB_INPUT_BUTTON_PRESS:
        case XCB_INPUT_BUTTON_RELEASE:
        case XCB_INPUT_MOTION:
            return decode_souris(reinterpret_cast<const xcb_input_button_press_event_t&>(e));
        case XCB_INPUT_KEY_PRESS:
            return decode_touche(reinterpret_cast<const xcb_input_key_press_event_t&>(e));
        default:
            return;
    }
}

/// The finger of which the server would make a mouse is the one that came down alone.
void EntreesX11::decode_doigt(const xcb_input_touch_begin_event_t& e) {
    const int x = pixel(e.event_x), y = pixel(e.event_y);
    const bool seul = (e.flags & XCB_INPUT_TOUCH_EVENT_FLAGS_TOUCH_EMULATING_POINTER) != 0;
    if (e.event_type == XCB_INPUT_TOUCH_BEGIN) pose(e.detail, un_doigt, seul, x, y);
    if (e.event_type == XCB_INPUT_TOUCH_UPDATE) glisse(e.detail, x, y);
    if (e.event_type == XCB_INPUT_TOUCH_END) leve(e.detail, x, y);
}

/// A pen is a mouse here. A mouse that moves without its button was released elsewhere, unheard.
void EntreesX11::decode_souris(const xcb_input_button_press_event_t& e) {
    if ((e.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED) != 0) return;
    const int x = pixel(e.event_x), y = pixel(e.event_y);
    if (e.event_type == XCB_INPUT_MOTION) return est_tenu(e, bouton_gauche) ? glisse(souris, x, y) : perd(souris);
    if (e.detail != bouton_gauche) return;
    e.event_type == XCB_INPUT_BUTTON_PRESS ? pose(souris, une_souris, true, x, y) : leve(souris, x, y);
}

void EntreesX11::decode_touche(const xcb_input_key_press_event_t& e) {
    const Frappe f = clavier_(e);
    if (f.cle) return presse(*f.cle, (e.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0);
    for (const char32_t signe : f.signes) frappe(signe);
}

}  // namespace ecran
