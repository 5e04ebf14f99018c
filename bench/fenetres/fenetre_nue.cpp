// The least that a program can do on this display: a window of one colour, of another one while a finger is down.
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::uint32_t repos = 0x3F72A8, appui = 0xC81E1E;

/// As much as a key of the peers takes, of 48 on the screen.
void peint(xcb_connection_t* c, xcb_window_t fenetre, const xcb_screen_t& ecran, std::uint32_t couleur) {
    xcb_change_window_attributes(c, fenetre, XCB_CW_BACK_PIXEL, &couleur);
    xcb_clear_area(c, 0, fenetre, 0, 0, static_cast<std::uint16_t>(ecran.width_in_pixels / 8 - 8),
                   static_cast<std::uint16_t>(ecran.height_in_pixels / 6 - 8));
    xcb_flush(c);
}

}  // namespace

int main() {
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c) != 0) return EXIT_FAILURE;
    const xcb_screen_t* ecran = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const xcb_window_t fenetre = xcb_generate_id(c);
    const std::uint32_t valeurs[] = {repos, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(c, XCB_COPY_FROM_PARENT, fenetre, ecran->root, 0, 0, ecran->width_in_pixels,
                      ecran->height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, valeurs);
    xcb_map_window(c, fenetre);
    xcb_flush(c);
    while (xcb_generic_event_t* e = xcb_wait_for_event(c)) {
        const int sorte = e->response_type & 0x7F;
        if (sorte == XCB_BUTTON_PRESS) peint(c, fenetre, *ecran, appui);
        if (sorte == XCB_BUTTON_RELEASE) peint(c, fenetre, *ecran, repos);
        std::free(e);
    }
}
