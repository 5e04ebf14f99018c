#include "platform/ecran/apparence.h"

#include <algorithm>
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
};

const Look& look(Role role) {
    return looks[static_cast<std::size_t>(role)];
}

double lineaire(int octet) {
    const double v = octet / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double luminance(Couleur c) {
    return 0.2126 * lineaire((c >> 16) & 0xFF) + 0.7152 * lineaire((c >> 8) & 0xFF) + 0.0722 * lineaire(c & 0xFF);
}

}  // namespace

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
    constexpr double lisible = 4.5;
    for (const Couleur c : {palette::blanc, palette::encre}) {
        if (contraste(c, fond) >= lisible) return c;
    }
    return palette::noir;
}

}  // namespace ecran
