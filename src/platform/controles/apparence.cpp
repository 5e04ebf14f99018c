#include "platform/controles/apparence.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ecran {
namespace {

struct Look {
    Couleur fond, encre;
    bool touche;
};

/// By role, in the order of the enumeration.
constexpr Look looks[] = {
    {sans_couleur, palette::encre, false},     // rien
    {palette::papier, palette::encre, false},  // papier
    {palette::encre, palette::blanc, false},   // bandeau
    {palette::blanc, palette::encre, false},   // carte
    {palette::blanc, palette::encre, true},    // touche
    {palette::doux, palette::encre, true},     // touche_douce
    {palette::encre, palette::blanc, true},    // action
    {palette::vert, palette::blanc, true},     // aller
    {palette::rouge, palette::blanc, true},    // detruire
    {palette::ambre, palette::encre, true},    // attendre
    {palette::bleu, palette::blanc, true},     // note
    {palette::doux, palette::encre, false},    // vide
    {palette::doux, palette::encre, false},    // entete
    {sans_couleur, palette::encre, false},     // ligne
    {0xFFE0C0, palette::encre, false},         // titre_groupe
    {palette::blanc, palette::rouge, false},   // pastille
    {palette::blanc, palette::encre, true},    // choisie
    {palette::blanc, palette::encre, false},   // champ
    {palette::blanc, palette::encre, false},   // boite
    {0xE4DED3, palette::encre, false},         // clavier
    {0xDCE6F1, palette::encre, false},         // ligne_touchee
    {palette::bleu, palette::blanc, false},    // ligne_choisie
    {palette::doux, palette::repos, true},     // repos
    {palette::blanc, palette::encre, false},   // compte
    {sans_couleur, palette::encre, false},     // puce
};

const Look& look(Role role) {
    return looks[static_cast<std::size_t>(role)];
}

/// The light that each value of an sRGB channel stands for, 0 to 1.
const std::array<double, 256>& lumieres() {
    static const auto table = [] {
        std::array<double, 256> t{};
        for (std::size_t i = 0; i < t.size(); ++i) {
            const double v = static_cast<double>(i) / 255;
            t[i] = v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        }
        return t;
    }();
    return table;
}

double luminance(Couleur c) {
    const auto canal = [&](int decalage) { return lumieres()[static_cast<std::size_t>((c >> decalage) & 0xFF)]; };
    return 0.2126 * canal(16) + 0.7152 * canal(8) + 0.0722 * canal(0);
}

}  // namespace

Couleur depuis_bgr(std::int32_t bgr) {
    return bgr < 0 ? sans_couleur : ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}
std::int32_t vers_bgr(Couleur couleur) {
    return depuis_bgr(couleur);  // the exchange of two bytes is its own inverse
}

Couleur fond_de(Role role) {
    return look(role).fond;
}
Couleur encre_de(Role role) {
    return look(role).encre;
}
bool est_touche(Role role) {
    return look(role).touche;
}

double contraste(Couleur a, Couleur b) {
    const auto [bas, haut] = std::minmax({luminance(a), luminance(b)});
    return (haut + 0.05) / (bas + 0.05);
}

Couleur encre_lisible(Couleur fond) {
    for (const Couleur c : {palette::blanc, palette::encre}) {
        if (contraste(c, fond) >= contraste_lisible) return c;
    }
    return palette::noir;
}

}  // namespace ecran
