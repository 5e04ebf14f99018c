#include "platform/peinture/polices.h"

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>

#include "platform/controles/apparence.h"
#include "platform/systeme/texte.h"

#define STB_TRUETYPE_IMPLEMENTATION
#define STBTT_STATIC
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#include <stb_truetype.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

// The fonts that the build embeds.
extern "C" {
extern const unsigned char police_normale_debut[], police_grasse_debut[], police_images_debut[];
}

namespace ecran {
namespace {

constexpr std::size_t octets_glyphes_max = 24U << 20;  ///< the glyphs are made anew beyond
constexpr std::size_t nb_octets = 256;

/// Measures of a font for an em of 1, and what is drawn from it.
class Fonte {
  public:
    explicit Fonte(const unsigned char* octets) {
        stbtt_InitFont(&info_, octets, 0);
        unite_ = stbtt_ScaleForMappingEmToPixels(&info_, 1);
        int haut = 0, bas = 0, interligne = 0;
        stbtt_GetFontVMetrics(&info_, &haut, &bas, &interligne);
        ascendante_ = static_cast<float>(haut) * unite_;
        hauteur_ = static_cast<float>(haut - bas) * unite_;
        for (std::size_t c = 0; c < nb_octets; ++c) {
            numeros_[c] = stbtt_FindGlyphIndex(&info_, static_cast<int>(point_peint(static_cast<unsigned char>(c))));
            int a = 0;
            stbtt_GetGlyphHMetrics(&info_, numeros_[c], &a, nullptr);
            avances_[c] = static_cast<float>(a) * unite_;
        }
        crenages_.fill(inconnu);
    }

    float ascendante() const { return ascendante_; }
    float hauteur() const { return hauteur_; }
    float avance(unsigned char c) const { return avances_[c]; }
    bool possede(char32_t point) const { return stbtt_FindGlyphIndex(&info_, static_cast<int>(point)) != 0; }

    float crenage(unsigned char avant, unsigned char c) const {
        if (avant == 0) return 0;
        std::int16_t& k = crenages_[avant * nb_octets + c];
        if (k == inconnu) {
            k = static_cast<std::int16_t>(stbtt_GetGlyphKernAdvance(&info_, numeros_[avant], numeros_[c]));
        }
        return static_cast<float>(k) * unite_;
    }

    Glyphe dessine(int taille, char32_t point, int quart) const {
        const float echelle = unite_ * static_cast<float>(taille);
        const float decalage = static_cast<float>(quart) / quarts;
        const int numero = stbtt_FindGlyphIndex(&info_, static_cast<int>(point));
        int a = 0, x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        stbtt_GetGlyphHMetrics(&info_, numero, &a, nullptr);
        stbtt_GetGlyphBitmapBoxSubpixel(&info_, numero, echelle, echelle, decalage, 0, &x0, &y0, &x1, &y1);
        Glyphe g{x0, y0, std::max(0, x1 - x0), std::max(0, y1 - y0), static_cast<float>(a) * echelle, {}};
        if (g.largeur == 0 || g.hauteur == 0) return g;
        g.couverture.resize(static_cast<std::size_t>(g.largeur) * static_cast<std::size_t>(g.hauteur));
        stbtt_MakeGlyphBitmapSubpixel(&info_, g.couverture.data(), g.largeur, g.hauteur, g.largeur, echelle, echelle,
                                      decalage, 0, numero);
        return g;
    }

  private:
    static constexpr std::int16_t inconnu = std::numeric_limits<std::int16_t>::max();

    stbtt_fontinfo info_{};
    float unite_ = 0, ascendante_ = 0, hauteur_ = 0;
    std::array<float, nb_octets> avances_{};
    std::array<int, nb_octets> numeros_{};
    mutable std::array<std::int16_t, nb_octets * nb_octets> crenages_{};  ///< font units, filled when asked for
};

const unsigned char* police_fixe_apportee = police_normale_debut;

const Fonte& fonte(Police p) {
    switch (p) {
        case Police::grasse: {
            static const Fonte grasse(police_grasse_debut);
            return grasse;
        }
        case Police::images: {
            static const Fonte images(police_images_debut);
            return images;
        }
        case Police::fixe: {
            static const Fonte fixe(police_fixe_apportee);
            return fixe;
        }
        case Police::normale:
            break;
    }
    static const Fonte normale(police_normale_debut);
    return normale;
}

}  // namespace

void apporte_police_fixe(const unsigned char* octets) {
    police_fixe_apportee = octets;
}

char32_t point_peint(unsigned char octet) {
    return octet < ' ' ? U' ' : texte::point_de_code(octet);
}

const Glyphe& glyphe(Police police, int taille, char32_t point, int quart) {
    static std::unordered_map<std::uint64_t, Glyphe> faits;
    static std::size_t octets = 0;
    taille = std::clamp(taille, 1, taille_max);
    quart &= quarts - 1;
    const std::uint64_t cle = (static_cast<std::uint64_t>(point) << 24) | (static_cast<std::uint64_t>(taille) << 8) |
                              (static_cast<std::uint64_t>(police) << 2) | static_cast<std::uint64_t>(quart);
    if (const auto i = faits.find(cle); i != faits.end()) return i->second;
    if (octets > octets_glyphes_max) {
        faits.clear();
        octets = 0;
    }
    const Glyphe& g = faits.emplace(cle, fonte(police).dessine(taille, point, quart)).first->second;
    octets += sizeof(Glyphe) + g.couverture.size();
    return g;
}

bool possede(Police police, char32_t point) {
    return fonte(police).possede(point);
}

float avance(Police police, int taille, unsigned char octet) {
    return fonte(police).avance(octet) * static_cast<float>(taille);
}

float crenage(Police police, int taille, unsigned char avant, unsigned char octet) {
    return fonte(police).crenage(avant, octet) * static_cast<float>(taille);
}

float largeur_texte(Police police, int taille, std::string_view t) {
    const Fonte& f = fonte(police);
    float l = 0;
    unsigned char avant = 0;
    for (const char c : t) {
        const auto octet = static_cast<unsigned char>(c);
        l += f.avance(octet) + f.crenage(avant, octet);
        avant = octet;
    }
    return l * static_cast<float>(taille);
}

int largeur_en_twips(int points, bool gras, std::string_view t) {
    return static_cast<int>(largeur_texte(gras ? Police::grasse : Police::normale, points * twips_par_point, t)) + 1;
}

Metrique metrique(Police police, int taille) {
    const Fonte& f = fonte(police);
    return {f.ascendante() * static_cast<float>(taille), f.hauteur() * static_cast<float>(taille)};
}

}  // namespace ecran
