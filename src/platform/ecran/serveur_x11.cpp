#include "platform/ecran/serveur_x11.h"

#include <xcb/screensaver.h>
#include <xcb/shm.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>

namespace ecran {
namespace {

constexpr const char* noms[] = {"WM_PROTOCOLS",
                                "WM_DELETE_WINDOW",
                                "_NET_WM_PING",
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

/// A property of a window, of at most `mots` times four bytes; empty when it has none.
std::string propriete(xcb_connection_t* c, xcb_window_t fenetre, xcb_atom_t nom, std::uint32_t mots) {
    const Recue<xcb_get_property_reply_t> r(
        xcb_get_property_reply(c, xcb_get_property(c, 0, fenetre, nom, XCB_ATOM_ANY, 0, mots), nullptr));
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

/// The screen's own way of storing colours before another one; 24 bits before 32, where a fourth byte may mean that
/// something shines through.
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

std::string refus_sans_serveur() {
    if (std::getenv("WAYLAND_DISPLAY") == nullptr) return {};
    return "cette session Wayland n'a pas Xwayland, sans lequel Orvalune ne peut rien montrer : installez le paquet "
           "xwayland";
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
        refus = "l'écran a " + std::to_string(s->ecran().root_depth) +
                " bits de couleur, Orvalune en demande 24 ou 32 (TrueColor)";
        return nullptr;
    }
    for (xcb_extension_t* e : {&xcb_input_id, &xcb_shm_id, &xcb_screensaver_id}) xcb_prefetch_extension_data(c, e);
    s->demande_atomes();
    if (!s->sait_les_doigts()) {
        refus = "le serveur d'affichage est trop ancien pour Orvalune : il lui manque XInput 2.2";
        return nullptr;
    }
    s->plein_ecran_gere_ = s->gere_le_plein_ecran();
    return s;
}

/// All of them are on their way before the first answer is awaited.
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

bool ServeurX11::sait_les_doigts() const {
    if (!connait(xcb_input_id)) return false;
    const Recue<xcb_input_xi_query_version_reply_t> r(
        xcb_input_xi_query_version_reply(connexion_, xcb_input_xi_query_version(connexion_, 2, 2), nullptr));
    return r && std::pair(r->major_version, r->minor_version) >= std::pair<std::uint16_t, std::uint16_t>(2, 2);
}

/// The manager names a window of its own, which names itself: a number that a dead one left behind tells nothing.
bool ServeurX11::gere_le_plein_ecran() const {
    const xcb_atom_t preuve = atome(Atome::net_supporting_wm_check);
    const std::string la_sienne = propriete(connexion_, ecran_->root, preuve, 1);
    if (nombres(la_sienne).empty()) return false;
    if (propriete(connexion_, nombres(la_sienne)[0], preuve, 1) != la_sienne) return false;
    const std::string connues = propriete(connexion_, ecran_->root, atome(Atome::net_supported), 1024);
    const auto liste = nombres(connues);
    return std::find(liste.begin(), liste.end(), atome(Atome::net_wm_state_fullscreen)) != liste.end();
}

double ServeurX11::densite() const {
    constexpr std::uint32_t ressources_max = 1 << 16;
    constexpr std::string_view nom = "\nXft.dpi:";
    const std::string ressources =
        "\n" + propriete(connexion_, ecran_->root, XCB_ATOM_RESOURCE_MANAGER, ressources_max);
    const auto trouvee = ressources.find(nom);
    if (trouvee == std::string::npos) return 1;
    const auto debut = ressources.find_first_not_of(" \t", trouvee + nom.size());
    if (debut == std::string::npos) return 1;
    double points = 0;
    std::from_chars(ressources.data() + debut, ressources.data() + ressources.size(), points);
    return std::clamp(points / 96, 1.0, 8.0);
}

}  // namespace ecran
