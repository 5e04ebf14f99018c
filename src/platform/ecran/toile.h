// Drawing upon an image: everything is clipped to a zone, and each call brings its own colour.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/ecran/apparence.h"
#include "platform/ecran/peintre.h"
#include "platform/ecran/polices.h"

namespace ecran {

/// Which corners of a rectangle are round.
enum Coins : std::uint8_t { aucun = 0, hauts = 1, bas = 2, tous = 3 };

class Toile {
  public:
    Toile(Image& image, const Zone& coupe) : image_(image), coupe_(coupe) {}

    void remplit(const Zone& z, Couleur couleur);
    /// As above, with an opacity of 0 to 255.
    void voile(const Zone& z, Couleur couleur, int opacite);
    void rectangle_rond(const Zone& z, int rayon, Coins coins, Couleur couleur, int opacite = 255);
    /// `x` is the left edge, `y` the base line, in pixels.
    void texte(Police police, int taille, std::string_view t, float x, float y, Couleur couleur);
    /// A glyph with its em box centred on a point.
    void icone(char32_t point, int taille, int x, int y, Couleur couleur);

  private:
    Image& image_;
    Zone coupe_;

    void glyphe_en(const Glyphe& g, int x, int y, Couleur couleur);
    void ligne(int y, int debut, int fin, Couleur couleur, int opacite);
    void point(int x, int y, Couleur couleur, int opacite);
};

/// The part that two zones share.
Zone intersection(const Zone& a, const Zone& b);
/// The smallest zone around two; an empty one adds nothing.
Zone reunion(const Zone& a, const Zone& b);

}  // namespace ecran
