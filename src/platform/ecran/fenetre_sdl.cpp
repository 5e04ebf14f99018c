// The window of Linux: SDL2 on X11, Wayland or a console without a desktop. Its surface is used without acceleration,
// which starts three times faster and takes a sixth of the memory.
#include <SDL2/SDL.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>

#include "platform/ecran/fenetre.h"
#include "platform/systeme/texte.h"

namespace ecran {
namespace {

bool montree = false;

/// The libraries below end the program when the display server goes. What they would then be asked for while the window
/// is destroyed never comes, and the program would hold its working directory for ever.
void finit_sans_ecran() {
    if (montree) std::_Exit(EXIT_FAILURE);
}

class FenetreSdl final : public Fenetre {
  public:
    /// `evenements`: the first of two event types of our own, to wake the loop and to bring the window to the front.
    FenetreSdl(SDL_Window* fenetre, Uint32 evenements)
        : fenetre_(fenetre), evenement_reveil_(evenements), evenement_devant_(evenements + 1) {}
    ~FenetreSdl() override {
        SDL_DestroyWindow(fenetre_);
        SDL_Quit();
        montree = false;
    }
    FenetreSdl(const FenetreSdl&) = delete;
    FenetreSdl& operator=(const FenetreSdl&) = delete;

    TailleEcran taille() const override {
        TailleEcran t;
        int points = 0, inutile = 0;
        SDL_GetWindowSizeInPixels(fenetre_, &t.largeur, &t.hauteur);
        SDL_GetWindowSize(fenetre_, &points, &inutile);
        if (points > 0) t.echelle = std::max(1.0, static_cast<double>(t.largeur) / points);
        return t;
    }

    bool se_voit() const override { return true; }

    Evenement attend(int ms) override {
        SDL_Event e;
        if (file_.empty() && (ms < 0 ? SDL_WaitEvent(&e) : SDL_WaitEventTimeout(&e, ms)) != 0) {
            do {
                range(e);
            } while (SDL_PollEvent(&e) != 0);
        }
        if (file_.empty()) return {};
        const Evenement premier = file_.front();
        file_.pop_front();
        return premier;
    }

    void montre(const Image& image, std::span<const Zone> zones) override {
        SDL_Surface* surface = SDL_GetWindowSurface(fenetre_);
        if (surface == nullptr || surface->format->BytesPerPixel != 4) return;
        rectangles_.clear();
        for (const Zone& z : zones) {
            const int droite = std::min({z.droite, image.largeur, surface->w});
            const int bas = std::min({z.bas, image.hauteur, surface->h});
            if (droite <= z.gauche || bas <= z.haut) continue;
            copie(image, *surface, z, droite, bas);
            rectangles_.push_back({z.gauche, z.haut, droite - z.gauche, bas - z.haut});
        }
        if (!rectangles_.empty()) {
            SDL_UpdateWindowSurfaceRects(fenetre_, rectangles_.data(), static_cast<int>(rectangles_.size()));
        }
    }

    void reveille() override { previens(evenement_reveil_); }
    void vient_devant() override { previens(evenement_devant_); }

  private:
    SDL_Window* fenetre_;
    Uint32 evenement_reveil_, evenement_devant_;
    std::deque<Evenement> file_;
    std::vector<SDL_Rect> rectangles_;

    static void copie(const Image& image, SDL_Surface& surface, const Zone& z, int droite, int bas) {
        for (int y = z.haut; y < bas; ++y) {
            const auto* source = image.pixels.data() + static_cast<std::size_t>(y) * image.largeur + z.gauche;
            auto* cible = static_cast<std::uint8_t*>(surface.pixels) + y * surface.pitch + z.gauche * 4;
            std::memcpy(cible, source, static_cast<std::size_t>(droite - z.gauche) * 4);
        }
    }

    static void previens(Uint32 evenement) {
        SDL_Event e{};
        e.type = evenement;
        SDL_PushEvent(&e);
    }

    void passe_devant() {
        if ((SDL_GetWindowFlags(fenetre_) & SDL_WINDOW_MINIMIZED) != 0) SDL_RestoreWindow(fenetre_);
        SDL_RaiseWindow(fenetre_);
        ajoute(Evenement::Sorte::reveil);
    }

    int pixel(int point) const { return static_cast<int>(point * taille().echelle); }

    void ajoute(Evenement::Sorte sorte, int x = 0, int y = 0, int code = 0, Cle cle = Cle::entree) {
        file_.push_back({sorte, x, y, code, cle});
    }

    /// A finger reaches the queue as the mouse event that SDL makes of it, and so is never counted twice.
    void range(const SDL_Event& e) {
        using Sorte = Evenement::Sorte;
        switch (e.type) {
            case SDL_MOUSEBUTTONDOWN:
                if (e.button.button == SDL_BUTTON_LEFT) ajoute(Sorte::appui, pixel(e.button.x), pixel(e.button.y));
                return;
            case SDL_MOUSEBUTTONUP:
                if (e.button.button == SDL_BUTTON_LEFT) ajoute(Sorte::relache, pixel(e.button.x), pixel(e.button.y));
                return;
            case SDL_MOUSEMOTION:
                if ((e.motion.state & SDL_BUTTON_LMASK) != 0) {
                    ajoute(Sorte::glisse, pixel(e.motion.x), pixel(e.motion.y));
                }
                return;
            case SDL_TEXTINPUT:
                for (const char c : texte::depuis_utf8(e.text.text).value_or("")) {
                    ajoute(Sorte::caractere, 0, 0, static_cast<unsigned char>(c));
                }
                return;
            case SDL_KEYDOWN:
                return range_cle(e.key.keysym.sym, e.key.repeat != 0);
            case SDL_WINDOWEVENT:
                if (e.window.event == SDL_WINDOWEVENT_EXPOSED || e.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) {
                    ajoute(Sorte::repeindre);
                }
                return;
            case SDL_QUIT:
                return ajoute(Sorte::fermeture);
            default:
                if (e.type == evenement_reveil_) ajoute(Sorte::rien);
                if (e.type == evenement_devant_) passe_devant();
        }
    }

    /// Escape or Enter held down acts once: its repetitions would close one dialog after the other.
    void range_cle(SDL_Keycode cle, bool repetee) {
        using Sorte = Evenement::Sorte;
        if (repetee && cle != SDLK_BACKSPACE) return;
        if (cle == SDLK_RETURN || cle == SDLK_KP_ENTER) ajoute(Sorte::cle, 0, 0, 0, Cle::entree);
        if (cle == SDLK_ESCAPE) ajoute(Sorte::cle, 0, 0, 0, Cle::echappement);
        if (cle == SDLK_BACKSPACE) ajoute(Sorte::cle, 0, 0, 0, Cle::retour_arriere);
    }
};

/// Without any display the library falls back on a driver that nobody sees, unless that is what was asked for.
bool pilote_visible() {
    const std::string_view pilote = SDL_GetCurrentVideoDriver();
    return (pilote != "offscreen" && pilote != "dummy") || SDL_getenv("SDL_VIDEODRIVER") != nullptr;
}

}  // namespace

std::unique_ptr<Fenetre> cree_fenetre(Mode mode, const std::string& titre, int largeur, int hauteur) {
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "0");
    SDL_SetHint(SDL_HINT_APP_NAME, "Orvalune");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");  // a signal ends the program, without a question
    if (SDL_Init(SDL_INIT_VIDEO) != 0) return nullptr;
    if (!pilote_visible()) {
        SDL_Quit();
        return nullptr;
    }
    Uint32 drapeaux = SDL_WINDOW_ALLOW_HIGHDPI;
    if (mode == Mode::plein_ecran) drapeaux |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    SDL_Window* fenetre = SDL_CreateWindow(texte::vers_utf8(titre).c_str(), SDL_WINDOWPOS_CENTERED,
                                           SDL_WINDOWPOS_CENTERED, largeur, hauteur, drapeaux);
    if (fenetre == nullptr) {
        SDL_Quit();
        return nullptr;
    }
    SDL_StartTextInput();
    montree = true;
    std::atexit(finit_sans_ecran);
    return std::make_unique<FenetreSdl>(fenetre, SDL_RegisterEvents(2));
}

}  // namespace ecran
