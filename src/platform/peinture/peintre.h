// Paints the loaded forms into an image in memory: software, anti-aliased, only what has changed. Nothing has to be
// declared as changed: each turn the painter compares what is to be seen with what it painted last, or on another
// picture that it keeps.
#pragma once

#include <span>
#include <vector>

#include "platform/controles/controles.h"
#include "platform/peinture/toile.h"

namespace ecran {

class Peintre {
  public:
    /// The pixels lie in `memoire`, which outlives the painter.
    explicit Peintre(std::pmr::memory_resource* memoire = std::pmr::get_default_resource());
    ~Peintre();
    /// Size of the image in pixels and pixels per 15 twips (1 on an ordinary screen). Everything is painted anew. The
    /// image has its pixels from the next peint() on: before, it takes neither time nor memory.
    void dimensionne(int largeur, int hauteur, double echelle);
    /// Brings the image up to date with the forms, from the bottom to the top of the stack.
    /// Returns the zones that changed, empty when nothing did; valid until the next call.
    std::span<const Zone> peint(std::span<Forme* const> pile, const Appui& appui);
    /// Gives the next picture its memory, which takes longer than to paint it: to be called while a finger rests, so
    /// that what its lifting shows finds that ready. Does nothing once all pictures have theirs, nor where all that can
    /// change is a small part of the screen.
    void prepare();
    /// All of the picture in view counts as changed at the next call; those that are kept still hold.
    void oublie();
    const Image& image() const;
    double echelle() const;

  private:
    struct Interne;
    Interne* interne_;
};

/// The part of an image as a PNG file's content; empty on failure.
std::vector<unsigned char> en_png(const Image& image, const Zone& zone);

}  // namespace ecran
