#include "platform/peinture/elements.h"

#include <algorithm>
#include <functional>

namespace ecran {
namespace {

std::uint64_t mele(std::uint64_t h, std::uint64_t v) {
    h = (h ^ v) * 0x9E3779B97F4A7C15ULL;
    return h ^ (h >> 29);
}
std::uint64_t deux(int a, int b) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32) | static_cast<std::uint32_t>(b);
}
std::uint64_t mele(std::uint64_t h, const Zone& z) {
    return mele(mele(h, deux(z.gauche, z.haut)), deux(z.droite, z.bas));
}

float part(Alignement a) {
    return a == Alignement::gauche ? 0.F : a == Alignement::droite ? 1.F : 0.5F;
}

void dessine_texte(const Element& e, Toile toile) {
    parcourt_lignes(e, [&](const LignePeinte& l) { toile.texte(e.police, l.taille, l.texte, l.x, l.y, e.couleur); });
}

void dessine_saisie(const Element& e, Toile toile) {
    const Metrique m = metrique(e.police, e.taille);
    const float y = static_cast<float>(e.cadre.haut + e.cadre.bas) / 2 - m.hauteur / 2 + m.ascendante;
    toile.texte(e.police, e.taille, e.texte, static_cast<float>(e.cadre.gauche - e.decalage), y, e.couleur);
}

}  // namespace

void parcourt_lignes(const Element& e, const std::function<void(const LignePeinte&)>& ligne) {
    const int l = e.cadre.droite - e.cadre.gauche, h = e.cadre.bas - e.cadre.haut;
    const int d_une_ligne = e.lignes_max > 1 ? e.taille * 2 / 3 : 0;
    const MiseEnLignes& m =
        met_en_lignes(e.police, e.taille, e.texte, {l, h, e.lignes_max, taille_lisible, d_une_ligne});
    const Metrique mesures = metrique(e.police, m.taille);
    float y = static_cast<float>(e.cadre.haut) +
              (static_cast<float>(h) - mesures.hauteur * static_cast<float>(m.lignes.size())) / 2 + mesures.ascendante;
    for (const std::string& texte : m.lignes) {
        const float reste = static_cast<float>(l) - largeur_texte(e.police, m.taille, texte);
        ligne({texte, m.taille, static_cast<float>(e.cadre.gauche) + std::max(0.F, reste) * part(e.alignement), y});
        y += mesures.hauteur;
    }
}

std::uint64_t empreinte(const Element& e) {
    std::uint64_t h = mele(mele(static_cast<std::uint64_t>(e.sorte) + 1, e.cadre), e.zone);
    h = mele(h, deux(e.couleur, e.opacite));
    h = mele(h, deux(e.rayon, static_cast<int>(e.coins)));
    h = mele(h, deux(e.taille, e.decalage));
    h = mele(h, deux(static_cast<int>(e.glyphe), e.lignes_max));
    h = mele(h, deux(static_cast<int>(e.police), static_cast<int>(e.alignement)));
    return e.texte.empty() ? h : mele(h, std::hash<std::string_view>{}(e.texte));
}

void marque_rangs(const Element& e, int haut, std::span<std::uint8_t> rangs) {
    const auto marque = [&](int debut, int dernier) {
        const int nombre = static_cast<int>(rangs.size());
        for (int y = std::max(0, debut - haut); y <= std::min(dernier - haut, nombre - 1); ++y)
            rangs[static_cast<std::size_t>(y)] = 1;
    };
    marque(e.zone.haut, e.zone.haut);
    marque(e.zone.bas, e.zone.bas);
    if (e.sorte == Element::Sorte::aplat) return;
    if (e.sorte == Element::Sorte::ombre) return marque(e.zone.haut, e.zone.bas);
    marque(e.cadre.haut, e.cadre.haut + e.rayon);
    marque(e.cadre.bas - e.rayon, e.cadre.bas + e.decalage);
}

void dessine(const Element& e, const Toile& toile) {
    Toile t = toile.coupee(e.zone);
    if (t.coupe().vide()) return;
    switch (e.sorte) {
        case Element::Sorte::aplat:
            return t.remplit(e.cadre, e.couleur, e.opacite);
        case Element::Sorte::rond:
            return t.arrondi(e.cadre, e.rayon, e.coins, e.couleur, e.opacite);
        case Element::Sorte::pied:
            return t.ombre_de_touche(e.cadre, e.rayon, e.decalage, e.couleur, e.opacite);
        case Element::Sorte::ombre:
            return t.ombre(e.cadre, e.rayon, e.opacite);
        case Element::Sorte::icone:
            return t.icone(e.glyphe, e.taille, (e.cadre.gauche + e.cadre.droite) / 2, (e.cadre.haut + e.cadre.bas) / 2,
                           e.couleur);
        case Element::Sorte::texte:
            return dessine_texte(e, t);
        case Element::Sorte::saisie:
            return dessine_saisie(e, t);
    }
}

}  // namespace ecran
