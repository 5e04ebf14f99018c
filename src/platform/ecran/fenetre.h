// A window system shows an image and reports touches and keys, no more. One file per system offers it.
#pragma once

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string>

#include "platform/peinture/peintre.h"

namespace ecran {

enum class Cle : std::uint8_t { entree, echappement, retour_arriere };

struct Evenement {
    enum class Sorte : std::uint8_t {
        rien,         ///< time to look at timers and answers
        appui,        ///< finger down at x, y
        glisse,       ///< finger moved to x, y while down
        relache,      ///< finger up
        perdu,        ///< the finger is no longer known of: it does nothing more
        caractere,    ///< character `code` of the page 1252 typed
        cle,          ///< special key `cle`
        repeindre,    ///< the window lost its content or changed its size
        reveil,       ///< the machine woke up, or the program was asked to come to the front
        fermeture,    ///< the system asks the program to end
        extinction,   ///< the system may stop at any moment: what is in hand must be kept at once
        fin,          ///< the program must end now, without a question
        ecran_perdu,  ///< nothing can be shown any more: as above, and the program has failed
    };
    Sorte sorte = Sorte::rien;
    int x = 0, y = 0;  ///< pixels of the image
    int code = 0;
    Cle cle = Cle::entree;
};

struct TailleEcran {
    int largeur = 0, hauteur = 0;  ///< pixels
    double echelle = 1;            ///< pixels per 15 twips
};

class Fenetre {
  public:
    virtual ~Fenetre() = default;
    virtual TailleEcran taille() const = 0;
    /// Whether somebody sees it; without an eye nothing has to be painted between two events.
    virtual bool se_voit() const = 0;
    /// Waits at most `ms` milliseconds (-1: without end) for the next event.
    virtual Evenement attend(int ms) = 0;
    /// Where the pixels of what it shows lie best. It outlives them.
    virtual std::pmr::memory_resource* memoire() { return std::pmr::get_default_resource(); }
    /// Waits until the image shown last may be changed: to be called before anything is painted.
    virtual void laisse_peindre() {}
    /// Shows the changed zones of the image, which must stay there as it is until the next laisse_peindre().
    virtual void montre(const Image& image, std::span<const Zone> zones) = 0;
    /// Ends an attend() under way; callable from any thread.
    virtual void reveille() = 0;
    /// Brings the window before all others and reports a Sorte::reveil; callable from any thread.
    virtual void vient_devant() = 0;
};

enum class Mode { plein_ecran, fenetre };

/// The native window; null when the system has no display, and `refus` may say why (French, UTF-8). `largeur` and
/// `hauteur` are the wish of Mode::fenetre.
std::unique_ptr<Fenetre> cree_fenetre(Mode mode, const std::string& titre, int largeur, int hauteur,
                                      std::string& refus);
/// No window: an image of the given size, and no events.
std::unique_ptr<Fenetre> cree_fenetre_muette(int largeur, int hauteur);

}  // namespace ecran
