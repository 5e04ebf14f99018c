#include "config/nuances.h"

#include <algorithm>
#include <cmath>

namespace nuances {
namespace {

constexpr double secteur = 60;  ///< degrees between two main hues

double canal(ecran::Couleur c, int decalage) {
    return ((c >> decalage) & 0xFF) / 255.0;
}

}  // namespace

Nuance depuis(ecran::Couleur c) {
    const double r = canal(c, 16), v = canal(c, 8), b = canal(c, 0);
    const auto [bas, haut] = std::minmax({r, v, b});
    const double ecart = haut - bas;
    Nuance n{0, 0, (haut + bas) / 2};
    if (ecart <= 0) return n;
    n.saturation = ecart / (1 - std::abs(2 * n.clarte - 1));
    if (haut == r) {
        n.teinte = secteur * std::fmod((v - b) / ecart + 6, 6);
    } else {
        n.teinte = haut == v ? secteur * ((b - r) / ecart + 2) : secteur * ((r - v) / ecart + 4);
    }
    return n;
}

ecran::Couleur vers_couleur(const Nuance& n) {
    const double amplitude = n.saturation * std::min(n.clarte, 1 - n.clarte);
    const auto composante = [&](double place) {
        const double k = std::fmod(place + n.teinte / 30, 12);
        const double v = n.clarte - amplitude * std::clamp(std::min(k - 3, 9 - k), -1.0, 1.0);
        return static_cast<ecran::Couleur>(std::lround(std::clamp(v, 0.0, 1.0) * 255));
    };
    return (composante(0) << 16) | (composante(8) << 8) | composante(4);
}

}  // namespace nuances
