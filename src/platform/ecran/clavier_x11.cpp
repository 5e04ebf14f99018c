#include "platform/ecran/clavier_x11.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>
// It has a field of this name.
#define explicit explicite
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace ecran {
namespace {

/// Its sequences are those of every language that writes its files as UTF-8.
constexpr const char* langue_par_defaut = "fr_FR.UTF-8";

const struct {
    xkb_keysym_t symbole;
    Cle cle;
} cles[] = {{XKB_KEY_Return, Cle::entree},
            {XKB_KEY_KP_Enter, Cle::entree},
            {XKB_KEY_Escape, Cle::echappement},
            {XKB_KEY_BackSpace, Cle::retour_arriere}};

/// Keys held with one of these speak to the manager of windows, except where they choose among a key's signs.
constexpr const char* commandes[] = {XKB_MOD_NAME_ALT, XKB_MOD_NAME_LOGO};

bool est_commande(xkb_state* etat, xkb_keycode_t touche) {
    xkb_keymap* touches = xkb_state_get_keymap(etat);
    return std::any_of(std::begin(commandes), std::end(commandes), [&](const char* nom) {
        const xkb_mod_index_t m = xkb_keymap_mod_get_index(touches, nom);
        return xkb_state_mod_index_is_active(etat, m, XKB_STATE_MODS_EFFECTIVE) > 0 &&
               xkb_state_mod_index_is_consumed(etat, touche, m) <= 0;
    });
}

std::optional<Cle> cle_de(xkb_keysym_t symbole) {
    for (const auto& c : cles) {
        if (c.symbole == symbole) return c.cle;
    }
    return std::nullopt;
}

/// The language of the user's characters, as the environment names it; of none it is ours.
std::string langue() {
    for (const char* nom : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* valeur = std::getenv(nom);
        if (valeur == nullptr || *valeur == '\0') continue;
        const std::string_view v = valeur;
        return v == "C" || v == "POSIX" ? langue_par_defaut : valeur;
    }
    return langue_par_defaut;
}

}  // namespace

ClavierX11::~ClavierX11() {
    oublie_touches();
    xkb_compose_state_unref(composition_);
    xkb_context_unref(contexte_);
}

Frappe ClavierX11::lis(const xcb_input_key_press_event_t& e) {
    if (contexte_ == nullptr) ouvre();
    if (etat_ == nullptr) prend_touches();
    Frappe f;
    if (etat_ == nullptr) return f;
    xkb_state_update_mask(etat_, e.mods.base, e.mods.latched, e.mods.locked, 0, 0, e.group.effective);
    if (est_commande(etat_, e.detail)) return f;
    const xkb_keysym_t symbole = xkb_state_key_get_one_sym(etat_, e.detail);
    f.cle = cle_de(symbole);
    if (!f.cle) f.signes = signes(etat_, e.detail, symbole);
    if (f.cle) oublie_composition();
    return f;
}

std::u32string ClavierX11::signes(xkb_state* etat, std::uint32_t touche, std::uint32_t symbole) {
    const auto un = [](std::uint32_t point) { return point == 0 ? std::u32string() : std::u32string(1, point); };
    if (composition_ == nullptr || xkb_compose_state_feed(composition_, symbole) == XKB_COMPOSE_FEED_IGNORED) {
        return un(xkb_state_key_get_utf32(etat, touche));
    }
    switch (xkb_compose_state_get_status(composition_)) {
        case XKB_COMPOSE_COMPOSED:
            return un(xkb_keysym_to_utf32(xkb_compose_state_get_one_sym(composition_)));
        case XKB_COMPOSE_COMPOSING:
            return {};
        default:  // it has nothing to do with what was begun, which is dropped
            return un(xkb_state_key_get_utf32(etat, touche));
    }
}

void ClavierX11::regarde(const xcb_generic_event_t& e) {
    const std::uint8_t sorte = e.response_type & 0x7F;
    if (evenements_ == 0 || sorte != evenements_) return;
    oublie_touches();
}

void ClavierX11::oublie_composition() {
    if (composition_ != nullptr) xkb_compose_state_reset(composition_);
}

void ClavierX11::ouvre() {
    contexte_ = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    if (contexte_ == nullptr) return;
    if (xkb_x11_setup_xkb_extension(serveur_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &evenements_,
                                    nullptr) == 0) {
        return;
    }
    constexpr std::uint16_t changements = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parties = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                      XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    xcb_xkb_select_events(serveur_, XCB_XKB_ID_USE_CORE_KBD, changements, 0, changements, parties, parties, nullptr);
    prepare_composition();
}

void ClavierX11::prepare_composition() {
    xkb_compose_table* table = nullptr;
    const std::string choisie = langue();
    for (const char* l : {choisie.c_str(), langue_par_defaut}) {
        table = xkb_compose_table_new_from_locale(contexte_, l, XKB_COMPOSE_COMPILE_NO_FLAGS);
        if (table != nullptr) break;
    }
    if (table == nullptr) return;
    composition_ = xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS);
    xkb_compose_table_unref(table);
}

void ClavierX11::prend_touches() {
    const std::int32_t clavier = contexte_ == nullptr ? -1 : xkb_x11_get_core_keyboard_device_id(serveur_);
    if (clavier < 0) return;
    touches_ = xkb_x11_keymap_new_from_device(contexte_, serveur_, clavier, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (touches_ != nullptr) etat_ = xkb_x11_state_new_from_device(touches_, serveur_, clavier);
}

void ClavierX11::oublie_touches() {
    xkb_state_unref(etat_);
    xkb_keymap_unref(touches_);
    etat_ = nullptr;
    touches_ = nullptr;
}

}  // namespace ecran
