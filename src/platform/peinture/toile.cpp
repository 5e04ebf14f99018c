#include "platform/peinture/toile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <vector>

namespace ecran {
namespace {

/// An opacity of 0 to 255 as a share of 256, so that mixing needs no division.
std::uint32_t part(int opacite) {
    const auto o = static_cast<std::uint32_t>(std::clamp(opacite, 0, opaque));
    return o + (o >> 7);
}

std::uint32_t melange(std::uint32_t dessous, std::uint32_t dessus, std::uint32_t a) {
    const std::uint32_t b = 256 - a;
    const std::uint32_t rb = ((dessous & 0xFF00FF) * b + (dessus & 0xFF00FF) * a) >> 8;
    const std::uint32_t v = ((dessous & 0x00FF00) * b + (dessus & 0x00FF00) * a) >> 8;
    return (rb & 0xFF00FF) | (v & 0x00FF00);
}

/// As melange() over a row. Works on bytes in blocks, which compilers turn into vector instructions.
void melange_rangee(std::uint32_t* p, int n, std::uint32_t couleur, std::uint32_t a) {
    constexpr int bloc = 16;
    constexpr int pixels_par_bloc = bloc / 4;
    std::uint16_t ajout[bloc];
    std::uint8_t octets[4];
    std::memcpy(octets, &couleur, 4);
    for (int i = 0; i < bloc; ++i) ajout[i] = static_cast<std::uint16_t>(octets[i % 4] * a);
    const auto b = static_cast<std::uint16_t>(256 - a);
    auto* o = reinterpret_cast<std::uint8_t*>(p);
    int i = 0;
    for (; i + pixels_par_bloc <= n; i += pixels_par_bloc, o += bloc) {
        for (int k = 0; k < bloc; ++k) {
            const auto somme = static_cast<std::uint16_t>(o[k] * b + ajout[k]);
            o[k] = static_cast<std::uint8_t>(somme >> 8);
        }
    }
    for (; i < n; ++i) p[i] = melange(p[i], couleur, a);
}

/// A quarter disc, its centre at the bottom right, of as many rows and columns as its radius has pixels.
struct QuartDeDisque {
    struct Rang {
        int debut;  ///< the first pixel that is touched
        int plein;  ///< the first one that is covered, as are all behind it
    };
    std::vector<Rang> rangs;
    std::vector<std::uint8_t> couverture;  ///< row by row
};

std::uint8_t couverture_du_disque(int rayon, int x, int y) {
    constexpr int finesse = 8;
    int dedans = 0;
    for (int i = 0; i < finesse * finesse; ++i) {
        const double dx = rayon - x - (i % finesse + 0.5) / finesse;
        const double dy = rayon - y - (i / finesse + 0.5) / finesse;
        if (dx * dx + dy * dy <= static_cast<double>(rayon) * rayon) ++dedans;
    }
    return static_cast<std::uint8_t>(dedans * opaque / (finesse * finesse));
}

const QuartDeDisque& quart_de_disque(int rayon) {
    static std::map<int, QuartDeDisque> faits;
    QuartDeDisque& q = faits[rayon];
    if (!q.rangs.empty()) return q;
    for (int y = 0; y < rayon; ++y) {
        QuartDeDisque::Rang rang = {rayon, rayon};
        for (int x = rayon - 1; x >= 0; --x) {
            const std::uint8_t c = couverture_du_disque(rayon, x, y);
            if (c == opaque) rang.plein = x;
            if (c != 0) rang.debut = x;
        }
        q.rangs.push_back(rang);
        for (int x = 0; x < rayon; ++x) q.couverture.push_back(couverture_du_disque(rayon, x, y));
    }
    return q;
}

/// The share of the shadow at an edge that is blurred, less one half: by the pixels that lie between, negative outside.
class BordFlou {
  public:
    explicit BordFlou(int flou) : portee_(6 * flou) {
        const float largeur = static_cast<float>(flou) * std::sqrt(2.0F);
        for (int i = -portee_; i < portee_; ++i)
            parts_.push_back(0.5F * std::erf((static_cast<float>(i) + 0.5F) / largeur));
    }
    /// Share of the shadow of a bar from `a` to `b`, 0 to 1.
    float barre(int place, int a, int b) const { return part_a(place - a) - part_a(place - b); }

  private:
    int portee_;  ///< further away it is all or nothing
    std::vector<float> parts_;

    float part_a(int distance) const {
        return parts_[static_cast<std::size_t>(std::clamp(distance, -portee_, portee_ - 1) + portee_)];
    }
};

const BordFlou& bord_flou(int flou) {
    static std::map<int, BordFlou> faits;
    return faits.try_emplace(flou, flou).first->second;
}

/// Mixes black over a row, of so many parts for each pixel. Works on bytes, as melange_rangee().
void noircit(std::uint32_t* p, const float* parts, float force, int n) {
    constexpr int bloc = 64, octets = sizeof(std::uint32_t);
    for (int debut = 0; debut < n; debut += bloc) {
        const int pixels = std::min(bloc, n - debut);
        std::uint16_t restes[bloc * octets];
        for (int i = 0; i < pixels; ++i) {
            const auto reste =
                static_cast<std::uint16_t>(256 - part(static_cast<int>(force * parts[debut + i] + 0.5F)));
            std::fill_n(restes + i * octets, octets, reste);
        }
        auto* o = reinterpret_cast<std::uint8_t*>(p + debut);
        for (int i = 0; i < pixels * octets; ++i) o[i] = static_cast<std::uint8_t>(o[i] * restes[i] >> 8);
    }
}

}  // namespace

Zone retreci(const Zone& z, int n) {
    return {z.gauche + n, z.haut + n, z.droite - n, z.bas - n};
}

Toile::Toile(Image& image, const Zone& coupe)
    : image_(image), coupe_(intersection(coupe, {0, 0, image.largeur, image.hauteur})) {}

/// Part of a row; `y` is within the clip.
void Toile::trait(int y, int debut, int fin, Couleur couleur, int opacite) {
    debut = std::max(debut, coupe_.gauche);
    fin = std::min(fin, coupe_.droite);
    if (debut >= fin) return;
    std::uint32_t* p = rangee(y) + debut;
    if (opacite >= opaque) {
        std::fill_n(p, fin - debut, static_cast<std::uint32_t>(couleur));
    } else {
        melange_rangee(p, fin - debut, static_cast<std::uint32_t>(couleur), part(opacite));
    }
}

void Toile::point(int x, int y, Couleur couleur, int opacite) {
    if (x < coupe_.gauche || x >= coupe_.droite) return;
    std::uint32_t& p = rangee(y)[x];
    p = melange(p, static_cast<std::uint32_t>(couleur), part(opacite));
}

void Toile::remplit(const Zone& z, Couleur couleur, int opacite) {
    const Zone c = intersection(z, coupe_);
    if (opacite < opaque || c.vide()) {
        for (int y = c.haut; y < c.bas; ++y) trait(y, c.gauche, c.droite, couleur, opacite);
        return;
    }
    // The first row is filled, the others are copies of it: the system's copy has the widest stores of the processor.
    const std::size_t octets = static_cast<std::size_t>(c.droite - c.gauche) * sizeof(std::uint32_t);
    const std::uint32_t* premiere = rangee(c.haut) + c.gauche;
    trait(c.haut, c.gauche, c.droite, couleur, opacite);
    for (int y = c.haut + 1; y < c.bas; ++y) std::memcpy(rangee(y) + c.gauche, premiere, octets);
}

void Toile::repete(int y, int fin) {
    const std::size_t octets = static_cast<std::size_t>(coupe_.droite - coupe_.gauche) * sizeof(std::uint32_t);
    const std::uint32_t* modele = rangee(y) + coupe_.gauche;
    for (++y; y < fin; ++y) std::memcpy(rangee(y) + coupe_.gauche, modele, octets);
}

/// The `r` pixel rows at `y` that hold two corners, upper or lower ones, round where `coins` says so. `creux` rows of
/// them, on the side of the middle, are drawn in the corners alone.
void Toile::rang_de_coins(const Zone& z, int r, int y, unsigned coins, Couleur couleur, int opacite, int creux) {
    const bool gauche = (coins & (haut_gauche | bas_gauche)) != 0, droite = (coins & (haut_droite | bas_droite)) != 0;
    const bool en_bas = (coins & coins_bas) != 0;
    const QuartDeDisque& disque = quart_de_disque(r);
    const int fin = std::min(y + r, coupe_.bas);
    for (int l = std::max(y, coupe_.haut); l < fin; ++l) {
        const int rang = en_bas ? r - 1 - (l - y) : l - y;
        const auto [debut, plein] = disque.rangs[static_cast<std::size_t>(rang)];
        const std::uint8_t* d = disque.couverture.data() + static_cast<std::ptrdiff_t>(rang) * r;
        const int x0 = z.gauche + (gauche ? plein : 0), x1 = z.droite - (droite ? plein : 0);
        if (r - rang <= creux) {
            trait(l, x0, z.gauche + r, couleur, opacite);
            trait(l, z.droite - r, x1, couleur, opacite);
        } else {
            trait(l, x0, x1, couleur, opacite);
        }
        for (int k = debut; k < plein; ++k) {
            if (gauche) point(z.gauche + k, l, couleur, d[k] * opacite / opaque);
            if (droite) point(z.droite - 1 - k, l, couleur, d[k] * opacite / opaque);
        }
    }
}

void Toile::arrondi(const Zone& z, int rayon, unsigned coins, Couleur couleur, int opacite) {
    if (intersection(z, coupe_).vide()) return;
    const int r = std::clamp(rayon, 0, std::min(z.droite - z.gauche, z.bas - z.haut) / 2);
    const int haut = coins & coins_hauts ? r : 0, bas = coins & coins_bas ? r : 0;
    remplit({z.gauche, z.haut + haut, z.droite, z.bas - bas}, couleur, opacite);
    if (haut != 0) rang_de_coins(z, r, z.haut, coins & coins_hauts, couleur, opacite);
    if (bas != 0) rang_de_coins(z, r, z.bas - r, coins & coins_bas, couleur, opacite);
}

void Toile::ombre_de_touche(const Zone& touche, int rayon, int descente, Couleur couleur, int opacite) {
    const int r = std::clamp(rayon, 0, std::min(touche.droite - touche.gauche, touche.bas - touche.haut) / 2);
    if (r == 0) return remplit({touche.gauche, touche.bas, touche.droite, touche.bas + descente}, couleur, opacite);
    rang_de_coins(touche, r, touche.bas + descente - r, coins_bas, couleur, opacite, r - descente);
}

void Toile::ombre(const Zone& boite, int flou, int opacite) {
    const Zone c = intersection(retreci(boite, -3 * flou), coupe_);
    if (c.vide() || flou <= 0) return;
    const Zone coeur = intersection(retreci(boite, flou), c);
    const BordFlou& bord = bord_flou(flou);
    std::vector<float> colonnes;
    colonnes.reserve(static_cast<std::size_t>(c.droite - c.gauche));
    for (int x = c.gauche; x < c.droite; ++x) colonnes.push_back(bord.barre(x, boite.gauche, boite.droite));
    for (int y = c.haut; y < c.bas; ++y) {
        const float force = bord.barre(y, boite.haut, boite.bas) * static_cast<float>(opacite);
        const auto morceau = [&](int debut, int fin) {
            noircit(rangee(y) + debut, colonnes.data() + (debut - c.gauche), force, fin - debut);
        };
        const bool dedans = y >= coeur.haut && y < coeur.bas;
        morceau(c.gauche, dedans ? coeur.gauche : c.droite);
        if (dedans) morceau(coeur.droite, c.droite);
    }
}

void Toile::couverture(const Glyphe& g, int x, int y, Couleur couleur) {
    const Zone c = intersection({x, y, x + g.largeur, y + g.hauteur}, coupe_);
    const auto teinte = static_cast<std::uint32_t>(couleur);
    for (int l = c.haut; l < c.bas; ++l) {
        std::uint32_t* p = rangee(l) + c.gauche;
        const std::uint8_t* a = g.couverture.data() + static_cast<std::ptrdiff_t>(l - y) * g.largeur + (c.gauche - x);
        for (int k = 0; k < c.droite - c.gauche; ++k) {
            if (a[k] == opaque) {
                p[k] = teinte;
            } else if (a[k] != 0) {
                p[k] = melange(p[k], teinte, a[k] + (a[k] >> 7U));
            }
        }
    }
}

void Toile::texte(Police police, int taille, std::string_view t, float x, float y, Couleur couleur) {
    const int base = static_cast<int>(std::lround(y));
    unsigned char avant = 0;
    for (const char c : t) {
        const auto octet = static_cast<unsigned char>(c);
        x += crenage(police, taille, avant, octet);
        avant = octet;
        if (x > static_cast<float>(coupe_.droite + taille)) return;
        const int place = static_cast<int>(std::floor(x * quarts + 0.5F));
        const int pixel = place >= 0 ? place / quarts : (place - quarts + 1) / quarts;
        if (x >= static_cast<float>(coupe_.gauche - 3 * taille)) {
            const Glyphe& g = glyphe(police, taille, point_peint(octet), place - pixel * quarts);
            couverture(g, pixel + g.gauche, base + g.haut, couleur);
        }
        x += avance(police, taille, octet);
    }
}

void Toile::icone(char32_t p, int taille, int x, int y, Couleur couleur) {
    const Glyphe& g = glyphe(Police::images, taille, p);
    const Metrique m = metrique(Police::images, taille);
    const float gauche = static_cast<float>(x) - g.avance / 2;
    const float base = static_cast<float>(y) - m.hauteur / 2 + m.ascendante;
    couverture(g, static_cast<int>(std::lround(gauche)) + g.gauche, static_cast<int>(std::lround(base)) + g.haut,
               couleur);
}

}  // namespace ecran
