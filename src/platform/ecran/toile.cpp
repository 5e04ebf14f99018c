#include "platform/ecran/toile.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "platform/texte.h"

namespace ecran {
namespace {

std::uint32_t melange(std::uint32_t dessous, std::uint32_t dessus, std::uint32_t opacite) {
    const std::uint32_t a = opacite + (opacite >> 7), b = 256 - a;
    const std::uint32_t rb = ((dessous & 0xFF00FF) * b + (dessus & 0xFF00FF) * a) >> 8;
    const std::uint32_t v = ((dessous & 0x00FF00) * b + (dessus & 0x00FF00) * a) >> 8;
    return (rb & 0xFF00FF) | (v & 0x00FF00);
}

/// Coverage of the pixels of a quarter disc, its centre at the bottom right: row by row, `rayon` to a row.
const std::vector<std::uint8_t>& quart_de_disque(int rayon) {
    static std::map<int, std::vector<std::uint8_t>> faits;
    auto& m = faits[rayon];
    if (!m.empty()) return m;
    constexpr int finesse = 8;
    m.resize(static_cast<std::size_t>(rayon) * static_cast<std::size_t>(rayon));
    for (int y = 0; y < rayon; ++y) {
        for (int x = 0; x < rayon; ++x) {
            int dedans = 0;
            for (int i = 0; i < finesse * finesse; ++i) {
                const double dx = rayon - x - (i % finesse + 0.5) / finesse,
                             dy = rayon - y - (i / finesse + 0.5) / finesse;
                if (dx * dx + dy * dy <= static_cast<double>(rayon) * rayon) ++dedans;
            }
            m[static_cast<std::size_t>(y * rayon + x)] = static_cast<std::uint8_t>(dedans * 255 / (finesse * finesse));
        }
    }
    return m;
}

}  // namespace

Zone intersection(const Zone& a, const Zone& b) {
    return {std::max(a.gauche, b.gauche), std::max(a.haut, b.haut), std::min(a.droite, b.droite),
            std::min(a.bas, b.bas)};
}

Zone reunion(const Zone& a, const Zone& b) {
    if (a.vide()) return b;
    if (b.vide()) return a;
    return {std::min(a.gauche, b.gauche), std::min(a.haut, b.haut), std::max(a.droite, b.droite),
            std::max(a.bas, b.bas)};
}

void Toile::ligne(int y, int debut, int fin, Couleur couleur, int opacite) {
    if (y < coupe_.haut || y >= coupe_.bas) return;
    debut = std::max(debut, coupe_.gauche);
    fin = std::min(fin, coupe_.droite);
    if (debut >= fin) return;
    std::uint32_t* p = image_.pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.largeur);
    const auto c = static_cast<std::uint32_t>(couleur);
    if (opacite >= 255) {
        std::fill(p + debut, p + fin, c);
    } else {
        for (int x = debut; x < fin; ++x) p[x] = melange(p[x], c, static_cast<std::uint32_t>(opacite));
    }
}

void Toile::point(int x, int y, Couleur couleur, int opacite) {
    if (opacite > 0) ligne(y, x, x + 1, couleur, opacite);
}

void Toile::remplit(const Zone& z, Couleur couleur) {
    voile(z, couleur, 255);
}

void Toile::voile(const Zone& z, Couleur couleur, int opacite) {
    const Zone c = intersection(z, coupe_);
    for (int y = c.haut; y < c.bas; ++y) ligne(y, c.gauche, c.droite, couleur, opacite);
}

void Toile::rectangle_rond(const Zone& z, int rayon, Coins coins, Couleur couleur, int opacite) {
    if (intersection(z, coupe_).vide()) return;
    const int r = std::clamp(rayon, 0, std::min(z.droite - z.gauche, z.bas - z.haut) / 2);
    const int h = coins & hauts ? r : 0, b = coins & bas ? r : 0;
    voile({z.gauche, z.haut + h, z.droite, z.bas - b}, couleur, opacite);
    if (r == 0) return;
    const auto& disque = quart_de_disque(r);
    const auto bord = [&](int y, int rang) {
        if (y < coupe_.haut || y >= coupe_.bas) return;
        ligne(y, z.gauche + r, z.droite - r, couleur, opacite);
        for (int x = 0; x < r; ++x) {
            const int a = disque[static_cast<std::size_t>(rang * r + x)] * opacite / 255;
            point(z.gauche + x, y, couleur, a);
            point(z.droite - 1 - x, y, couleur, a);
        }
    };
    for (int i = 0; i < h; ++i) bord(z.haut + i, i);
    for (int i = 0; i < b; ++i) bord(z.bas - 1 - i, i);
}

void Toile::glyphe_en(const Glyphe& g, int x, int y, Couleur couleur) {
    const Zone c = intersection({x, y, x + g.largeur, y + g.hauteur}, coupe_);
    const auto couleur_pleine = static_cast<std::uint32_t>(couleur);
    for (int l = c.haut; l < c.bas; ++l) {
        std::uint32_t* p =
            image_.pixels.data() + static_cast<std::size_t>(l) * static_cast<std::size_t>(image_.largeur);
        const std::uint8_t* a = g.couverture.data() + static_cast<std::ptrdiff_t>(l - y) * g.largeur - x;
        for (int k = c.gauche; k < c.droite; ++k) {
            if (a[k] != 0) p[k] = melange(p[k], couleur_pleine, a[k]);
        }
    }
}

void Toile::texte(Police police, int taille, std::string_view t, float x, float y, Couleur couleur) {
    const int base = static_cast<int>(std::lround(y));
    for (const char octet : t) {
        const int place = static_cast<int>(std::floor(x * quarts + 0.5F));
        const int pixel = place >= 0 ? place / quarts : (place - quarts + 1) / quarts;
        const Glyphe& g =
            glyphe(police, taille, texte::point_de_code(static_cast<unsigned char>(octet)), place - pixel * quarts);
        glyphe_en(g, pixel + g.gauche, base + g.haut, couleur);
        x += g.avance;
    }
}

void Toile::icone(char32_t p, int taille, int x, int y, Couleur couleur) {
    const Glyphe& g = glyphe(Police::images, taille, p);
    const Metrique m = metrique(Police::images, taille);
    const float gauche = static_cast<float>(x) - g.avance / 2;
    const float base = static_cast<float>(y) - m.hauteur / 2 + m.ascendante;
    glyphe_en(g, static_cast<int>(std::lround(gauche)) + g.gauche, static_cast<int>(std::lround(base)) + g.haut,
              couleur);
}

}  // namespace ecran
