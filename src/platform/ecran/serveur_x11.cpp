#include "platform/ecran/serveur_x11.h"

#include <xcb/screensaver.h>
#include <xcb/shm.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>

namespace ecran {
namespace {

constexpr const char* noms[] = {"WM_PROTOCOLS",
                                "WM_DELETE_WINDOW",
                                "WM_CLIENT_MACHINE",
                                "_NET_WM_PING",
                                "_NET_WM_PID",
                                "_NET_WM_NAME",
                                "UTF8_STRING",
                                "_NET_WM_STATE",
                                "_NET_WM_STATE_FULLSCREEN",
                                "_NET_ACTIVE_WINDOW",
                                "_NET_SUPPORTING_WM_CHECK",
                                "_NET_SUPPORTED",
                                "_NET_WM_BYPASS_COMPOSITOR"};
static_assert(std::size(noms) == static_cast<std::size_t>(Atome::nombre));

/// What the server answers, freed with this.
template <typename Reponse>
using Recue = std::unique_ptr<Reponse, decltype([](Reponse* r) { std::free(r); })>;

/// Of a property no more is asked for.
constexpr std::uint32_t mots_max = 1 << 16;

/// Asks for a property of a window.
xcb_get_property_cookie_t demande(xcb_connection_t* c, xcb_window_t fenetre, xcb_atom_t nom) {
    return xcb_get_property(c, 0, fenetre, nom, XCB_ATOM_ANY, 0, mots_max);
}

/// What was asked for; empty when the window has no such property.
std::string reponse(xcb_connection_t* c, xcb_get_property_cookie_t demande) {
    const Recue<xcb_get_property_reply_t> r(xcb_get_property_reply(c, demande, nullptr));
    if (!r) return {};
    return {static_cast<const char*>(xcb_get_property_value(r.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(r.get()))};
}

/// The numbers of a property, which the server sends as they lie in memory.
std::span<const std::uint32_t> nombres(const std::string& valeur) {
    return {reinterpret_cast<const std::uint32_t*>(valeur.data()), valeur.size() / 4};
}

bool tient_en_mots(const xcb_setup_t& s, std::uint8_t profondeur) {
    if (s.image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST) return false;
    for (auto f = xcb_setup_pixmap_formats_iterator(&s); f.rem > 0; xcb_format_next(&f)) {
        if (f.data->depth == profondeur) return f.data->bits_per_pixel == 32;
    }
    return false;
}

bool convient(const xcb_visualtype_t& v) {
    return v._class == XCB_VISUAL_CLASS_TRUE_COLOR && v.red_mask == 0xFF0000 && v.green_mask == 0xFF00 &&
           v.blue_mask == 0xFF;
}

/// 24 bits before 32, where a fourth byte may mean that something shines through; of one depth the screen's own way of
/// storing colours before another one.
Couleurs choisit_couleurs(const xcb_setup_t& s, const xcb_screen_t& ecran) {
    Couleurs choisies;
    for (auto d = xcb_screen_allowed_depths_iterator(&ecran); d.rem > 0; xcb_depth_next(&d)) {
        const std::uint8_t profondeur = d.data->depth;
        if ((profondeur != 24 && profondeur != 32) || !tient_en_mots(s, profondeur)) continue;
        for (auto v = xcb_depth_visuals_iterator(d.data); v.rem > 0; xcb_visualtype_next(&v)) {
            if (!convient(*v.data)) continue;
            const bool premier = choisies.profondeur == 0 || profondeur < choisies.profondeur;
            if (premier || (profondeur == choisies.profondeur && v.data->visual_id == ecran.root_visual)) {
                choisies = {v.data->visual_id, profondeur};
            }
        }
    }
    return choisies;
}

/// The screen's own colours would do, did red and blue not lie the other way round.
bool est_d_un_autre_ordre(const xcb_screen_t& ecran) {
    for (auto d = xcb_screen_allowed_depths_iterator(&ecran); d.rem > 0; xcb_depth_next(&d)) {
        for (auto v = xcb_depth_visuals_iterator(d.data); v.rem > 0; xcb_visualtype_next(&v)) {
            if (v.data->visual_id != ecran.root_visual) continue;
            return v.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && v.data->red_mask == 0xFF &&
                   v.data->green_mask == 0xFF00 && v.data->blue_mask == 0xFF0000;
        }
    }
    return false;
}

/// Why none of the screen's colours will do.
std::string refus_des_couleurs(const xcb_screen_t& ecran) {
    const std::string constat = "L'écran a " + std::to_string(ecran.root_depth) + " bits de couleur";
    if (est_d_un_autre_ordre(ecran)) {
        return constat + ", mais range le rouge et le bleu dans un ordre qu'Orvalune ne sait pas employer.";
    }
    return constat + ", Orvalune en demande 24 ou 32 (TrueColor).";
}

/// From the resources, "Xft.dpi:\t120" in a line of its own.
double densite_de(const std::string& ressources) {
    constexpr std::string_view nom = "\nXft.dpi:";
    const std::string lignes = "\n" + ressources;
    const auto trouvee = lignes.find(nom);
    if (trouvee == std::string::npos) return 1;
    const auto debut = lignes.find_first_not_of(" \t", trouvee + nom.size());
    if (debut == std::string::npos) return 1;
    double points = 0;
    std::from_chars(lignes.data() + debut, lignes.data() + lignes.size(), points);
    return std::isfinite(points) ? std::clamp(points / 96, 1.0, 8.0) : 1;
}

std::string variable(const char* nom) {
    const char* valeur = std::getenv(nom);
    return valeur == nullptr ? "" : valeur;
}

/// In a session of Wayland it is Xwayland that is missing, or has not come up under the name it was to have.
std::string refus_sans_serveur() {
    if (variable("WAYLAND_DISPLAY").empty()) return {};
    const std::string affichage = variable("DISPLAY");
    const std::string constat = affichage.empty()
                                    ? "Cette session Wayland n'a pas Xwayland"
                                    : "L'affichage " + affichage + " ne répond pas : c'est celui de Xwayland";
    return constat + ", sans lequel Orvalune ne peut rien montrer : installez le paquet xwayland.";
}

xcb_screen_t* ecran_numero(const xcb_setup_t* s, int numero) {
    auto i = xcb_setup_roots_iterator(s);
    for (; i.rem > 1 && numero > 0; --numero) xcb_screen_next(&i);
    return i.data;
}

}  // namespace

std::unique_ptr<ServeurX11> ServeurX11::joint(std::string& refus) {
    int numero = 0;
    xcb_connection_t* c = xcb_connect(nullptr, &numero);
    if (xcb_connection_has_error(c) != 0) {
        xcb_disconnect(c);
        refus = refus_sans_serveur();
        return nullptr;
    }
    const xcb_setup_t* reglages = xcb_get_setup(c);
    std::unique_ptr<ServeurX11> s(new ServeurX11(c, ecran_numero(reglages, numero)));
    s->couleurs_ = choisit_couleurs(*reglages, s->ecran());
    if (s->couleurs_.profondeur == 0) {
        refus = refus_des_couleurs(s->ecran());
        return nullptr;
    }
    // What the server is asked is on its way before the first answer is awaited.
    for (xcb_extension_t* e : {&xcb_input_id, &xcb_shm_id, &xcb_screensaver_id}) xcb_prefetch_extension_data(c, e);
    const auto ressources = demande(c, s->ecran().root, XCB_ATOM_RESOURCE_MANAGER);
    s->demande_atomes();
    s->densite_ = densite_de(reponse(c, ressources));
    s->cherche_le_gerant();
    if (!s->connait_les_doigts()) {
        refus = "Le serveur d'affichage est trop ancien pour Orvalune : il lui manque XInput 2.2.";
        return nullptr;
    }
    return s;
}

void ServeurX11::demande_atomes() {
    std::array<xcb_intern_atom_cookie_t, static_cast<std::size_t>(Atome::nombre)> demandes{};
    for (std::size_t i = 0; i < demandes.size(); ++i) {
        const std::string_view nom = noms[i];
        demandes[i] = xcb_intern_atom(connexion_, 0, static_cast<std::uint16_t>(nom.size()), nom.data());
    }
    for (std::size_t i = 0; i < demandes.size(); ++i) {
        const Recue<xcb_intern_atom_reply_t> r(xcb_intern_atom_reply(connexion_, demandes[i], nullptr));
        if (r) atomes_[i] = r->atom;
    }
}

bool ServeurX11::connait(xcb_extension_t& extension) const {
    const xcb_query_extension_reply_t* r = xcb_get_extension_data(connexion_, &extension);
    return r != nullptr && r->present != 0;
}

bool ServeurX11::connait_les_doigts() {
    if (!connait(xcb_input_id)) return false;
    const auto version = xcb_input_xi_query_version(connexion_, 2, 2);
    const Recue<xcb_input_xi_query_version_reply_t> v(xcb_input_xi_query_version_reply(connexion_, version, nullptr));
    return v && std::pair(v->major_version, v->minor_version) >= std::pair<std::uint16_t, std::uint16_t>(2, 2);
}

/// Made by this program, or the root, both of which have events of their own to tell.
bool ServeurX11::est_notre(xcb_window_t fenetre) const {
    const xcb_setup_t& s = *xcb_get_setup(connexion_);
    return fenetre == ecran_->root || (fenetre & ~s.resource_id_mask) == s.resource_id_base;
}

/// The manager names a window of its own, which names itself: a number that a dead one left behind tells nothing, and
/// may be anybody's by now. That window is watched: it alone tells when its owner is killed, or names it late.
void ServeurX11::cherche_le_gerant() {
    const xcb_atom_t preuve = atome(Atome::net_supporting_wm_check);
    const auto gerant = demande(connexion_, ecran_->root, preuve);
    const auto connues = demande(connexion_, ecran_->root, atome(Atome::net_supported));
    const std::string la_sienne = reponse(connexion_, gerant), liste = reponse(connexion_, connues);
    const auto atomes = nombres(liste);
    plein_ecran_gere_ = false;
    if (nombres(la_sienne).empty()) return;
    const xcb_window_t fenetre = nombres(la_sienne)[0];
    if (est_notre(fenetre)) return;
    const std::uint32_t ses_changements = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connexion_, fenetre, XCB_CW_EVENT_MASK, &ses_changements);
    plein_ecran_gere_ =
        std::find(atomes.begin(), atomes.end(), atome(Atome::net_wm_state_fullscreen)) != atomes.end() &&
        reponse(connexion_, demande(connexion_, fenetre, preuve)) == la_sienne;
}

bool ServeurX11::clavier_a_prendre() const {
    const Recue<xcb_get_input_focus_reply_t> r(
        xcb_get_input_focus_reply(connexion_, xcb_get_input_focus(connexion_), nullptr));
    return r &&
           (r->focus == XCB_INPUT_FOCUS_NONE || r->focus == XCB_INPUT_FOCUS_POINTER_ROOT || r->focus == ecran_->root);
}

Zone ServeurX11::etendue() const {
    const Recue<xcb_get_geometry_reply_t> r(
        xcb_get_geometry_reply(connexion_, xcb_get_geometry(connexion_, ecran_->root), nullptr));
    if (!r) return {0, 0, ecran_->width_in_pixels, ecran_->height_in_pixels};
    return {0, 0, r->width, r->height};
}

void ServeurX11::relis_la_densite() {
    densite_ = densite_de(reponse(connexion_, demande(connexion_, ecran_->root, XCB_ATOM_RESOURCE_MANAGER)));
}

}  // namespace ecran
