// The picture set of keys and function rows: one table of number, glyph of the icon font, and name.
#pragma once

#include <cstdint>

namespace ecran {

/// Pictures of the set have numbers 1 to nb_images - 1; the set with offset 50 holds the same ones drawn larger.
inline constexpr int decalage_grand = 50;
inline constexpr int nb_images = 100;

struct ImageDeTouche {
    char32_t glyphe = 0;       ///< code point in the icon font, 0: no picture
    const char* nom = "";      ///< what it shows, French, UTF-8, for the picture list and for tests
    std::int32_t teinte = -1;  ///< own colour, -1: the readable ink of the ground
    bool grande = false;       ///< drawn larger
};

/// The picture of a number; one without glyph outside the set.
const ImageDeTouche& image_de_touche(int numero);

}  // namespace ecran
