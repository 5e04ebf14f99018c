#include <algorithm>

#include "platform/peinture/peintre.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#endif
#include <stb_image_write.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace ecran {

std::vector<unsigned char> en_png(const Image& image, const Zone& zone) {
    const Zone z = {std::max(0, zone.gauche), std::max(0, zone.haut), std::min(image.largeur, zone.droite),
                    std::min(image.hauteur, zone.bas)};
    if (z.vide()) return {};
    const int l = z.droite - z.gauche, h = z.bas - z.haut;
    std::vector<unsigned char> rvb;
    rvb.reserve(static_cast<std::size_t>(l) * static_cast<std::size_t>(h) * 3);
    for (int y = z.haut; y < z.bas; ++y) {
        for (int x = z.gauche; x < z.droite; ++x) {
            const std::uint32_t p = image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.largeur) +
                                                 static_cast<std::size_t>(x)];
            for (const int decalage : {16, 8, 0}) rvb.push_back(static_cast<unsigned char>(p >> decalage));
        }
    }
    std::vector<unsigned char> png;
    const auto recoit = [](void* contexte, void* octets, int taille) {
        auto& sortie = *static_cast<std::vector<unsigned char>*>(contexte);
        const auto* debut = static_cast<const unsigned char*>(octets);
        sortie.insert(sortie.end(), debut, debut + taille);
    };
    if (stbi_write_png_to_func(recoit, &png, l, h, 3, rvb.data(), l * 3) == 0) return {};
    return png;
}

}  // namespace ecran
