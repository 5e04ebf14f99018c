// The window of Linux, by the protocol X11 alone: on a desktop, in a kiosk without one, and by way of Xwayland.
#include <unistd.h>
#include <xcb/screensaver.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "platform/ecran/clavier_x11.h"
#include "platform/ecran/entrees_x11.h"
#include "platform/ecran/fenetre.h"
#include "platform/ecran/images_x11.h"
#include "platform/ecran/serveur_x11.h"
#include "platform/ecran/veille_x11.h"
#include "platform/systeme/texte.h"

namespace ecran {
namespace {

using Sorte = Evenement::Sorte;
using Moment = VeilleX11::Moment;

/// What it is called by those who manage windows: the name of its desktop entry.
constexpr char classe[] = "orvalune\0orvalune";
/// How long the manager of windows has to give the window its place before it is asked again, and how often.
constexpr auto attente_du_gerant = std::chrono::milliseconds(200);
constexpr int demandes_au_gerant = 10;

/// The facts of a window as its manager wants to have them (WM_NORMAL_HINTS): 18 numbers.
struct Indications {
    static constexpr std::uint32_t place = 1 << 2, taille_min = 1 << 4, taille_max = 1 << 5;
    std::uint32_t drapeaux = 0, x = 0, y = 0, l = 0, h = 0, l_min = 0, h_min = 0, l_max = 0, h_max = 0, suite[9] = {};
};
static_assert(sizeof(Indications) == 18 * sizeof(std::uint32_t));

class FenetreX11 final : public Fenetre {
  public:
    FenetreX11(std::unique_ptr<ServeurX11> serveur, Mode mode)
        : serveur_(std::move(serveur)),
          c_(serveur_->connexion()),
          mode_(mode),
          images_(*serveur_),
          clavier_(c_),
          entrees_([this](const xcb_input_key_press_event_t& e) { return clavier_.lis(e); }) {}
    FenetreX11(const FenetreX11&) = delete;
    FenetreX11& operator=(const FenetreX11&) = delete;

    void ouvre(const std::string& titre, int largeur, int hauteur) {
        const xcb_screen_t& ecran = serveur_->ecran();
        const bool plein = mode_ == Mode::plein_ecran;
        taille_.largeur = plein ? ecran.width_in_pixels : largeur;
        taille_.hauteur = plein ? ecran.height_in_pixels : hauteur;
        taille_.echelle = serveur_->densite();
        cree();
        se_presente(titre);
        if (serveur_->plein_ecran_gere()) {
            demande_sa_place();
        } else {
            xcb_map_window(c_, fenetre_);
            xcb_flush(c_);
        }
        ouverte_ = true;
    }

    TailleEcran taille() const override { return taille_; }
    bool se_voit() const override { return true; }
    std::pmr::memory_resource* memoire() override { return &images_; }

    Evenement attend(int ms) override {
        std::optional<Moment> jusqua;
        if (ms >= 0) jusqua = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        bool heure = false;
        recoit();
        while (entrees_.vide() && !appelee_ && !heure) heure = patiente(jusqua);
        appelee_ = false;
        return entrees_.prend();
    }

    void laisse_peindre() override {
        while (images_.en_lecture()) patiente({});
    }

    /// Before the window has been seen, there is nothing to be shown on: the first look at it shows all.
    void montre(const Image& image, std::span<const Zone> zones) override {
        image_ = &image;
        if (!vue_) return recoit();
        for (const Zone& z : zones) montre_zone(z);
        xcb_flush(c_);
    }

    void reveille() override { veille_.appelle(); }
    void vient_devant() override {
        devant_ = true;
        veille_.appelle();
    }

  private:
    std::unique_ptr<ServeurX11> serveur_;
    xcb_connection_t* c_;
    Mode mode_;
    ImagesX11 images_;
    ClavierX11 clavier_;
    EntreesX11 entrees_;
    VeilleX11 veille_;
    xcb_window_t fenetre_ = 0;
    xcb_gcontext_t contexte_ = 0;
    TailleEcran taille_;
    const Image* image_ = nullptr;  ///< the one shown last: what was covered comes back from it
    Zone decouverte_;               ///< what came to light since
    bool seule_ = false;            ///< no manager may have it
    bool ouverte_ = false;          ///< its size has been asked for
    bool vue_ = false;              ///< it has come to light once
    bool disparu_ = false;
    bool appelee_ = false;              ///< the next attend() ends at once
    bool a_le_clavier_ = false;         ///< so the screen is kept lit, too
    std::atomic<bool> devant_ = false;  ///< asked to come to the front

    /// The window lies where it should even without anybody who manages windows. Such a one who does not know of full
    /// screens is left out.
    void cree() {
        const xcb_screen_t& ecran = serveur_->ecran();
        const Couleurs& couleurs = serveur_->couleurs();
        fenetre_ = xcb_generate_id(c_);
        xcb_colormap_t palette = ecran.default_colormap;
        if (couleurs.visuel != ecran.root_visual) {
            palette = xcb_generate_id(c_);
            xcb_create_colormap(c_, XCB_COLORMAP_ALLOC_NONE, palette, ecran.root, couleurs.visuel);
        }
        seule_ = mode_ == Mode::plein_ecran && !serveur_->plein_ecran_gere();
        const std::uint32_t valeurs[] = {
            XCB_BACK_PIXMAP_NONE,
            0,
            XCB_GRAVITY_NORTH_WEST,
            seule_,
            XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE,
            palette};
        xcb_create_window(c_, couleurs.profondeur, fenetre_, ecran.root, static_cast<std::int16_t>(gauche()),
                          static_cast<std::int16_t>(haut()), static_cast<std::uint16_t>(taille_.largeur),
                          static_cast<std::uint16_t>(taille_.hauteur), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          couleurs.visuel,
                          XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                              XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                          valeurs);
        const std::uint32_t sans_copies = 0;
        contexte_ = xcb_generate_id(c_);
        xcb_create_gc(c_, contexte_, fenetre_, XCB_GC_GRAPHICS_EXPOSURES, &sans_copies);
        // The screen's size and density change with the root window.
        const std::uint32_t changements = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(c_, ecran.root, XCB_CW_EVENT_MASK, &changements);
        struct {
            xcb_input_event_mask_t tete;
            std::uint32_t masque;
        } const entrees = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, evenements_d_entree};
        xcb_input_xi_select_events(c_, fenetre_, 1, &entrees.tete);
    }

    int gauche() const { return std::max(0, (serveur_->ecran().width_in_pixels - taille_.largeur) / 2); }
    int haut() const { return std::max(0, (serveur_->ecran().height_in_pixels - taille_.hauteur) / 2); }

    /// What others may know of it.
    void se_presente(const std::string& titre) {
        const std::string utf8 = texte::vers_utf8(titre);
        note(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, titre.data(), titre.size());
        note(a(Atome::net_wm_name), a(Atome::utf8_string), 8, utf8.data(), utf8.size());
        note(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, classe, sizeof classe);
        const std::uint32_t processus = static_cast<std::uint32_t>(getpid());
        note(a(Atome::net_wm_pid), XCB_ATOM_CARDINAL, 32, &processus, 1);
        char machine[256] = {};
        if (gethostname(machine, sizeof machine - 1) == 0)
            note(a(Atome::wm_client_machine), XCB_ATOM_STRING, 8, machine, std::string_view(machine).size());
        const xcb_atom_t appels[] = {a(Atome::wm_delete_window), a(Atome::net_wm_ping)};
        note(a(Atome::wm_protocols), XCB_ATOM_ATOM, 32, appels, std::size(appels));
        const std::uint32_t prend_le_clavier[9] = {1, 1};
        note(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32, prend_le_clavier, std::size(prend_le_clavier));
        if (mode_ == Mode::plein_ecran) {
            demande_le_plein_ecran();
            const std::uint32_t sans_detour = 1;
            note(a(Atome::net_wm_bypass_compositor), XCB_ATOM_CARDINAL, 32, &sans_detour, 1);
            return;
        }
        Indications i;
        i.drapeaux = Indications::place | Indications::taille_min | Indications::taille_max;
        i.l_min = i.l_max = static_cast<std::uint32_t>(taille_.largeur);
        i.h_min = i.h_max = static_cast<std::uint32_t>(taille_.hauteur);
        note(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, &i, 18);
    }

    void demande_le_plein_ecran() {
        const xcb_atom_t plein = a(Atome::net_wm_state_fullscreen);
        note(a(Atome::net_wm_state), XCB_ATOM_ATOM, 32, &plein, 1);
    }

    xcb_atom_t a(Atome atome) const { return serveur_->atome(atome); }

    void note(xcb_atom_t nom, xcb_atom_t sorte, std::uint8_t bits, const void* valeurs, std::size_t nombre) {
        xcb_change_property(c_, XCB_PROP_MODE_REPLACE, fenetre_, nom, sorte, bits, static_cast<std::uint32_t>(nombre),
                            valeurs);
    }

    /// The manager has the last word on the size, and gives it before the window is first seen. One that has just been
    /// started with the session may overlook who asks.
    void demande_sa_place() {
        for (int n = 0; n < demandes_au_gerant && !vue_ && !disparu_; ++n) {
            xcb_map_window(c_, fenetre_);
            const Moment jusqua = std::chrono::steady_clock::now() + attente_du_gerant;
            while (!vue_ && !disparu_ && !patiente(jusqua)) continue;
        }
    }

    /// Sleeps until something has happened, and hears of it. True when it was the time.
    bool patiente(std::optional<Moment> jusqua) {
        xcb_flush(c_);
        if (xcb_generic_event_t* e = xcb_poll_for_queued_event(c_)) {  // it came while something was sent
            entend(e);
            recoit();
            return false;
        }
        const VeilleX11::Cause cause = veille_.attend(xcb_get_file_descriptor(c_), jusqua);
        if (cause.reveil) entrees_.ajoute(Sorte::reveil);
        if (cause.fin) entrees_.ajoute(Sorte::fin);
        if (devant_.exchange(false)) passe_devant();
        appelee_ = appelee_ || cause.appel;
        recoit();
        return cause.heure;
    }

    void entend(xcb_generic_event_t* e) {
        traite(*e);
        std::free(e);
    }

    /// Hears of everything that has come.
    void recoit() {
        while (xcb_generic_event_t* e = xcb_poll_for_event(c_)) entend(e);
        if (serveur_->a_disparu()) return disparait();
        if (image_ == nullptr || decouverte_.vide() || images_.en_lecture()) return;
        montre_zone(std::exchange(decouverte_, {}));
        xcb_flush(c_);
    }

    /// The server has gone, or somebody has taken the window away: nothing can be shown any more.
    void disparait() {
        images_.abandonne();
        disparu_ = true;
        entrees_.ajoute(Sorte::ecran_perdu);
    }

    void montre_zone(const Zone& z) {
        const Zone dedans = intersection(z, {0, 0, image_->largeur, image_->hauteur});
        if (!dedans.vide() && !image_->pixels.empty()) images_.montre(fenetre_, contexte_, *image_, dedans);
    }

    void traite(const xcb_generic_event_t& e) {
        switch (e.response_type & 0x7F) {
            case XCB_GE_GENERIC:
                return agit(reinterpret_cast<const xcb_ge_generic_event_t&>(e));
            case XCB_EXPOSE:
                return decouvre(reinterpret_cast<const xcb_expose_event_t&>(e));
            case XCB_CONFIGURE_NOTIFY:
                return change_de_taille(reinterpret_cast<const xcb_configure_notify_event_t&>(e));
            case XCB_UNMAP_NOTIFY:
                if (reinterpret_cast<const xcb_unmap_notify_event_t&>(e).window == fenetre_) entrees_.lache();
                return;
            case XCB_MAP_NOTIFY:
                return garde_le_clavier();
            case XCB_REPARENT_NOTIFY:
                return perd_son_cadre();
            case XCB_DESTROY_NOTIFY:
                return est_detruite(reinterpret_cast<const xcb_destroy_notify_event_t&>(e).window);
            case XCB_FOCUS_IN:
            case XCB_FOCUS_OUT:
                return change_de_place(reinterpret_cast<const xcb_focus_in_event_t&>(e));
            case XCB_CLIENT_MESSAGE:
                return repond(reinterpret_cast<const xcb_client_message_event_t&>(e));
            case XCB_PROPERTY_NOTIFY:
                return suit_les_reglages(reinterpret_cast<const xcb_property_notify_event_t&>(e).atom);
            default:
                images_.regarde(e);
                clavier_.regarde(e);
        }
    }

    /// Where nobody hands the keyboard on, the window under the finger takes it.
    void agit(const xcb_ge_generic_event_t& e) {
        const bool pose = e.event_type == XCB_INPUT_TOUCH_BEGIN || e.event_type == XCB_INPUT_BUTTON_PRESS;
        if (pose && !a_le_clavier_ && !serveur_->plein_ecran_gere()) prend_le_clavier();
        entrees_.decode(e);
    }

    void decouvre(const xcb_expose_event_t& e) {
        decouverte_ = reunion(decouverte_, {e.x, e.y, e.x + e.width, e.y + e.height});
        if (!std::exchange(vue_, true) && !serveur_->plein_ecran_gere()) prend_le_clavier();
    }

    /// The screen has turned, or the window has another size.
    void change_de_taille(const xcb_configure_notify_event_t& e) {
        if (e.window == serveur_->ecran().root) {
            if (mode_ == Mode::fenetre || serveur_->plein_ecran_gere()) return;
            const std::uint32_t taille[] = {e.width, e.height};
            xcb_configure_window(c_, fenetre_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, taille);
            return;
        }
        if (e.window != fenetre_ || (taille_.largeur == e.width && taille_.hauteur == e.height)) return;
        taille_.largeur = e.width;
        taille_.hauteur = e.height;
        if (ouverte_) entrees_.ajoute(Sorte::repeindre);
    }

    /// The root window, or the one by which the manager is known, has got a property anew.
    void suit_les_reglages(xcb_atom_t propriete) {
        if (propriete == a(Atome::net_supporting_wm_check) || propriete == a(Atome::net_supported)) suit_le_gerant();
        if (propriete != XCB_ATOM_RESOURCE_MANAGER) return;
        serveur_->relis_la_densite();
        taille_.echelle = serveur_->densite();
        if (ouverte_) entrees_.ajoute(Sorte::repeindre);
    }

    /// This window, or the one by which the manager was known.
    void est_detruite(xcb_window_t fenetre) { fenetre == fenetre_ ? disparait() : suit_le_gerant(); }

    /// Whoever manages the windows has come or gone, or is about to: one that ends tells it more than once, and lets
    /// the keyboard go last.
    void suit_le_gerant() {
        const bool avant = serveur_->plein_ecran_gere();
        serveur_->cherche_le_gerant();
        if (!serveur_->plein_ecran_gere()) return se_passe_du_gerant();
        if (!avant) se_confie_au_gerant();
    }

    /// The window that lay over all by itself is one of the manager's from now on; it takes such a one as it is mapped.
    void se_confie_au_gerant() {
        if (!std::exchange(seule_, false)) return;
        xcb_unmap_window(c_, fenetre_);
        const std::uint32_t geree = 0;
        xcb_change_window_attributes(c_, fenetre_, XCB_CW_OVERRIDE_REDIRECT, &geree);
        demande_le_plein_ecran();
        vue_ = false;
        demande_sa_place();
    }

    /// It stays one that the next manager takes.
    void se_passe_du_gerant() {
        if (mode_ == Mode::plein_ecran) {
            demande_le_plein_ecran();
            xcb_map_window(c_, fenetre_);  // a manager may have died over it
            const Zone tout = serveur_->etendue();
            const std::uint32_t place[] = {0, 0, static_cast<std::uint32_t>(tout.droite),
                                           static_cast<std::uint32_t>(tout.bas), XCB_STACK_MODE_ABOVE};
            xcb_configure_window(c_, fenetre_,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                     XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_STACK_MODE,
                                 place);
        }
        prend_le_clavier();
    }

    /// A manager that ends may give the window back after it has told that it ends.
    void perd_son_cadre() {
        if (vue_ && !serveur_->plein_ecran_gere()) se_passe_du_gerant();
    }

    void repond(const xcb_client_message_event_t& e) {
        if (e.type != a(Atome::wm_protocols)) return;
        if (e.data.data32[0] == a(Atome::wm_delete_window)) entrees_.ajoute(Sorte::fermeture);
        if (e.data.data32[0] == a(Atome::net_wm_ping)) {  // whether it is still alive
            xcb_client_message_event_t reponse = e;
            reponse.window = serveur_->ecran().root;
            envoie_au_gerant(reponse);
        }
    }

    void envoie_au_gerant(const xcb_client_message_event_t& message) {
        xcb_send_event(c_, 0, serveur_->ecran().root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
    }

    /// The window gets the keyboard or loses it; what only the pointer gives counts as little as nothing, and is taken
    /// whole where no manager gives it. The screen stays lit while the order taking is in front, and no longer: the
    /// server counts the wishes.
    void change_de_place(const xcb_focus_in_event_t& e) {
        const bool devant = (e.response_type & 0x7F) == XCB_FOCUS_IN;
        const bool entier = e.detail != XCB_NOTIFY_DETAIL_POINTER;
        if (!(devant && entier)) garde_le_clavier();
        if (!entier) return;
        if (!devant) entrees_.lache();
        if (!devant) clavier_.oublie_composition();
        if (devant == std::exchange(a_le_clavier_, devant)) return;
        if (serveur_->connait(xcb_screensaver_id)) xcb_screensaver_suspend(c_, devant);
    }

    /// Where no manager gives it to anybody.
    void garde_le_clavier() {
        if (!serveur_->plein_ecran_gere() && serveur_->clavier_a_prendre()) prend_le_clavier();
    }

    void prend_le_clavier() { xcb_set_input_focus(c_, XCB_INPUT_FOCUS_POINTER_ROOT, fenetre_, XCB_CURRENT_TIME); }

    void passe_devant() {
        const std::uint32_t dessus = XCB_STACK_MODE_ABOVE;
        xcb_map_window(c_, fenetre_);  // it may be hidden away
        xcb_configure_window(c_, fenetre_, XCB_CONFIG_WINDOW_STACK_MODE, &dessus);
        if (serveur_->plein_ecran_gere()) {
            xcb_client_message_event_t demande{};
            demande.response_type = XCB_CLIENT_MESSAGE;
            demande.format = 32;
            demande.window = fenetre_;
            demande.type = a(Atome::net_active_window);
            demande.data.data32[0] = 2;  // it is the user who asks
            envoie_au_gerant(demande);
        } else {
            prend_le_clavier();
        }
        entrees_.ajoute(Sorte::reveil);
    }
};

}  // namespace

std::unique_ptr<Fenetre> cree_fenetre(Mode mode, const std::string& titre, int largeur, int hauteur,
                                      std::string& refus) {
    auto serveur = ServeurX11::joint(refus);
    if (!serveur) return nullptr;
    auto fenetre = std::make_unique<FenetreX11>(std::move(serveur), mode);
    fenetre->ouvre(titre, largeur, hauteur);
    return fenetre;
}

}  // namespace ecran
