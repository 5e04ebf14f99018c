// Drawing upon an image: every call brings its own colour, and nothing is drawn outside the clip. What a pixel becomes
// never depends on the clip, so that a part painted anew is the same as the whole painted anew.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "platform/controles/apparence.h"
#include "platform/peinture/polices.h"

namespace ecran {

/// 32-bit pixels 0x00RRGGBB, row by row, without gaps.
struct Image {
    int largeur = 0, hauteur = 0;
    std::pmr::vector<std::uint32_t> pixels;
};

/// Pixels of the image.
struct Zone {
    int gauche = 0, haut = 0, droite = 0, bas = 0;  ///< right and bottom are outside
    bool vide() const { return droite <= gauche || bas <= haut; }
    bool operator==(const Zone&) const = default;
};

/// The part that two zones share; empty when they share none.
inline Zone intersection(const Zone& a, const Zone& b) {
    const Zone z = {std::max(a.gauche, b.gauche), std::max(a.haut, b.haut), std::min(a.droite, b.droite),
                    std::min(a.bas, b.bas)};
    return z.vide() ? Zone{} : z;
}
/// The smallest zone around two; an empty one adds nothing.
inline Zone reunion(const Zone& a, const Zone& b) {
    if (a.vide()) return b;
    if (b.vide()) return a;
    return {std::min(a.gauche, b.gauche), std::min(a.haut, b.haut), std::max(a.droite, b.droite),
            std::max(a.bas, b.bas)};
}
/// The zone moved inwards on all sides by `n` pixels (negative: outwards).
Zone retreci(const Zone& z, int n);

/// Corners of a rectangle, to be combined.
enum Coins : std::uint8_t {
    aucun_coin = 0,
    haut_gauche = 1,
    haut_droite = 2,
    bas_gauche = 4,
    bas_droite = 8,
    coins_hauts = haut_gauche | haut_droite,
    coins_bas = bas_gauche | bas_droite,
    tous_coins = coins_hauts | coins_bas,
};

inline constexpr int opaque = 255;

class Toile {
  public:
    Toile(Image& image, const Zone& coupe);
    /// The same image with a narrower clip.
    Toile coupee(const Zone& z) const { return {image_, intersection(coupe_, z)}; }
    const Zone& coupe() const { return coupe_; }

    /// `opacite` is 0 to 255.
    void remplit(const Zone& z, Couleur couleur, int opacite = opaque);
    /// Copies the row `y` of the clip into those below it, as far as `fin`.
    void repete(int y, int fin);
    /// A rectangle with round corners of `rayon` pixels where `coins` says so.
    void arrondi(const Zone& z, int rayon, unsigned coins, Couleur couleur, int opacite = opaque);
    /// What is seen of a key's shadow, which lies `descente` pixels lower than the key: below it and in its two
    /// corners.
    void ombre_de_touche(const Zone& touche, int rayon, int descente, Couleur couleur, int opacite);
    /// The soft shadow of a box, black, `flou` pixels (the standard deviation) wide; the inside of the box is left out.
    void ombre(const Zone& boite, int flou, int opacite);
    /// One line of text: `x` is the pen's left, `y` the base line, in pixels.
    void texte(Police police, int taille, std::string_view t, float x, float y, Couleur couleur);
    /// A glyph of the icon font with its em box centred on a point.
    void icone(char32_t point, int taille, int x, int y, Couleur couleur);

  private:
    Image& image_;
    Zone coupe_;  ///< always within the image

    std::uint32_t* rangee(int y) const {
        return image_.pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.largeur);
    }
    void trait(int y, int debut, int fin, Couleur couleur, int opacite);
    void point(int x, int y, Couleur couleur, int opacite);
    void rang_de_coins(const Zone& z, int r, int y, unsigned coins, Couleur couleur, int opacite, int creux = 0);
    void couverture(const Glyphe& g, int x, int y, Couleur couleur);
};

}  // namespace ecran
