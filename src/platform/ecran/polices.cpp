#include "platform/ecran/polices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "platform/texte.h"

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

constexpr int taille_max = 600;
constexpr int taille_minimale = 9;                            ///< captions shrink no further, pixels
constexpr std::size_t glyphes_max = 20000, mises_max = 4000;  ///< the caches start anew beyond

struct Fonte {
    stbtt_fontinfo info{};
    std::array<float, 256> avances{};  ///< per character of the page, for an em of 1
    float ascendante = 0, hauteur = 0;

    explicit Fonte(const unsigned char* octets) {
        stbtt_InitFont(&info, octets, 0);
        const float echelle = stbtt_ScaleForMappingEmToPixels(&info, 1);
        int haut = 0, bas = 0, interligne = 0;
        stbtt_GetFontVMetrics(&info, &haut, &bas, &interligne);
        ascendante = static_cast<float>(haut) * echelle;
        hauteur = static_cast<float>(haut - bas) * echelle;
        for (int c = 0; c < 256; ++c) {
            int avance = 0;
            stbtt_GetCodepointHMetrics(&info, static_cast<int>(texte::point_de_code(static_cast<unsigned char>(c))),
                                       &avance, nullptr);
            avances[static_cast<std::size_t>(c)] = static_cast<float>(avance) * echelle;
        }
    }
};

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
        case Police::normale:
            break;
    }
    static const Fonte normale(police_normale_debut);
    return normale;
}

Glyphe dessine(Police police, int taille, char32_t point, int quart) {
    const Fonte& f = fonte(police);
    const float echelle = stbtt_ScaleForMappingEmToPixels(&f.info, static_cast<float>(taille));
    const float decalage = static_cast<float>(quart) / quarts;
    int avance = 0, x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    const int numero = stbtt_FindGlyphIndex(&f.info, static_cast<int>(point));
    stbtt_GetGlyphHMetrics(&f.info, numero, &avance, nullptr);
    stbtt_GetGlyphBitmapBoxSubpixel(&f.info, numero, echelle, echelle, decalage, 0, &x0, &y0, &x1, &y1);
    Glyphe g{x0, y0, std::max(0, x1 - x0), std::max(0, y1 - y0), static_cast<float>(avance) * echelle, {}};
    if (g.largeur == 0 || g.hauteur == 0) return g;
    g.couverture.resize(static_cast<std::size_t>(g.largeur) * static_cast<std::size_t>(g.hauteur));
    stbtt_MakeGlyphBitmapSubpixel(&f.info, g.couverture.data(), g.largeur, g.hauteur, g.largeur, echelle, echelle,
                                  decalage, 0, numero);
    return g;
}

/// Breaks one paragraph on blanks; a word that is too wide stands alone on its line.
void coupe_paragraphe(Police police, int taille, std::string_view t, int largeur, std::vector<std::string>& lignes) {
    std::string ligne;
    while (!t.empty()) {
        // A word with the blanks before it.
        const auto debut = std::min(t.find_first_not_of(' '), t.size());
        const auto fin = std::min(t.find(' ', debut), t.size());
        const std::string_view mot = t.substr(0, fin);
        t.remove_prefix(fin);
        const std::string essai = ligne + std::string(mot);
        if (!ligne.empty() && largeur_texte(police, taille, essai) > static_cast<float>(largeur)) {
            lignes.push_back(std::move(ligne));
            ligne = texte::rogne(mot);
        } else {
            ligne = essai;
        }
    }
    lignes.push_back(std::move(ligne));
}

std::vector<std::string> coupe(Police police, int taille, std::string_view t, int largeur) {
    std::vector<std::string> lignes;
    for (const std::string_view paragraphe : texte::lignes(t))
        coupe_paragraphe(police, taille, paragraphe, largeur, lignes);
    return lignes;
}

bool tient(Police police, int taille, const std::vector<std::string>& lignes, int largeur, int hauteur) {
    const float h = metrique(police, taille).hauteur * static_cast<float>(lignes.size());
    if (lignes.size() > 1 && h > static_cast<float>(hauteur)) return false;
    return std::all_of(lignes.begin(), lignes.end(), [&](const std::string& l) {
        return largeur_texte(police, taille, l) <= static_cast<float>(largeur);
    });
}

/// The longest beginning that fits with "…" behind it.
void raccourcit(std::string& ligne, Police police, int taille, int largeur) {
    constexpr char suite = '\x85';
    while (!ligne.empty() && largeur_texte(police, taille, ligne + suite) > static_cast<float>(largeur))
        ligne.pop_back();
    ligne += suite;
}

void tronque(MiseEnLignes& m, Police police, int largeur, int hauteur) {
    const float h = metrique(police, m.taille).hauteur;
    const auto possibles =
        std::max<std::size_t>(1, static_cast<std::size_t>(static_cast<float>(std::max(0, hauteur)) / h));
    const bool trop = m.lignes.size() > possibles;
    if (trop) m.lignes.resize(possibles);
    for (std::string& l : m.lignes) {
        if (largeur_texte(police, m.taille, l) > static_cast<float>(largeur)) raccourcit(l, police, m.taille, largeur);
    }
    if (trop && !m.lignes.back().ends_with('\x85')) raccourcit(m.lignes.back(), police, m.taille, largeur);
}

constexpr std::size_t longueur_max = 2000;  ///< of a caption; more never fits a screen

MiseEnLignes calcule(Police police, int taille, std::string_view t, int largeur, int hauteur) {
    t = t.substr(0, longueur_max);
    MiseEnLignes m{std::clamp(taille, 1, taille_max), {}};
    // A size far beyond the room needs no trial of each size in between.
    if (m.taille > hauteur && hauteur > taille_minimale) m.taille = hauteur;
    for (;;) {
        m.lignes = coupe(police, m.taille, t, largeur);
        if (tient(police, m.taille, m.lignes, largeur, hauteur)) return m;
        if (m.taille <= taille_minimale) break;
        m.taille = std::max(taille_minimale, std::min(m.taille - 1, m.taille * 19 / 20));
    }
    tronque(m, police, largeur, hauteur);
    return m;
}

}  // namespace

const Glyphe& glyphe(Police police, int taille, char32_t point, int quart) {
    static std::unordered_map<std::uint64_t, Glyphe> faits;
    taille = std::clamp(taille, 1, taille_max);
    const std::uint64_t cle = (static_cast<std::uint64_t>(point) << 24) | (static_cast<std::uint64_t>(taille) << 8) |
                              (static_cast<std::uint64_t>(police) << 2) | static_cast<std::uint64_t>(quart & 3);
    if (const auto i = faits.find(cle); i != faits.end()) return i->second;
    if (faits.size() >= glyphes_max) faits.clear();
    return faits.emplace(cle, dessine(police, taille, point, quart & 3)).first->second;
}

float largeur_texte(Police police, int taille, std::string_view t) {
    const Fonte& f = fonte(police);
    float l = 0;
    for (const char c : t) l += f.avances[static_cast<unsigned char>(c)];
    return l * static_cast<float>(taille);
}

Metrique metrique(Police police, int taille) {
    const Fonte& f = fonte(police);
    return {f.ascendante * static_cast<float>(taille), f.hauteur * static_cast<float>(taille)};
}

const MiseEnLignes& met_en_lignes(Police police, int taille, std::string_view t, int largeur, int hauteur) {
    static std::unordered_map<std::string, MiseEnLignes> faites;
    std::string cle(t);
    for (const int n : {static_cast<int>(police), taille, largeur, hauteur}) cle += '\0' + std::to_string(n);
    if (const auto i = faites.find(cle); i != faites.end()) return i->second;
    if (faites.size() >= mises_max) faites.clear();
    return faites.emplace(std::move(cle), calcule(police, taille, t, largeur, hauteur)).first->second;
}

}  // namespace ecran
