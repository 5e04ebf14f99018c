#include "platform/peinture/placement.h"

#include <algorithm>
#include <cmath>

namespace ecran {
namespace {

// Lengths of the looks, in design pixels.
constexpr int marge_touche = 8, marge_touche_gauche = 18, marge_bandeau = 12, marge_cellule = 10, marge_liste = 20;
constexpr int marge_champ = 14, marge_legende = 4;
constexpr int disque_max = 38, disque_de_coin = 26, hauteur_de_coin = 54, bord_marque = 14, bord_coin = 6;
constexpr int retrait_image_droite = 24, image_mince = 40, image_max = 150, case_max = 84;

/// Screens stay far below; what is damaged beyond cannot overflow.
constexpr double pixels_max = 1e6;

/// To the nearest pixel. Every edge goes through here: a call of the library would be dearer than all the rest.
int borne(double pixels) {
    const double v = std::clamp(pixels, -pixels_max, pixels_max);
    return static_cast<int>(v + (v < 0 ? -0.5 : 0.5));
}

}  // namespace

Couleur fond_montre(const Aspect& a) {
    return a.role != Role::repos && a.fond != sans_couleur ? a.fond : fond_de(a.role);
}

Couleur encre_montree(const Aspect& a) {
    if (a.role == Role::repos) return encre_de(a.role);
    if (a.encre != sans_couleur) return a.encre;
    return a.fond != sans_couleur ? encre_lisible(a.fond) : encre_de(a.role);
}

std::string_view legende(const Aspect& a) {
    if (!est_touche(a.role)) return a.texte;
    if (a.texte == " ") return a.role == Role::touche ? "Espace" : "";
    return a.texte == "&&" ? "&" : std::string_view(a.texte);
}

int Placement::pixels(std::int64_t twips) const {
    return borne(static_cast<double>(twips) * echelle_ / twips_par_pixel);
}

int Placement::px(int design) const {
    return std::max(1, borne(design * echelle_));
}

int Placement::em(int points) const {
    return std::max(1, pixels(static_cast<std::int64_t>(points) * twips_par_point));
}

Zone Placement::zone(const Cadre& c) const {
    return {pixels(x_ + c.gauche), pixels(y_ + c.haut), pixels(x_ + c.gauche + std::int64_t{c.largeur}),
            pixels(y_ + c.haut + std::int64_t{c.hauteur})};
}

Zone Placement::place_du_texte(const Zone& z, const Aspect& a, const Rang& rang) const {
    int gauche = 0, droite = 0, dessus = 0;
    const int largeur = z.droite - z.gauche;
    if (rang.liste) {
        gauche = px(marge_cellule);
        droite = px(rang.derniere ? marge_liste : marge_cellule);
        if (a.alignement == Alignement::centre) gauche = droite = px(marge_legende);
    } else if (est_touche(a.role) || a.role == Role::titre_groupe) {
        gauche = droite = std::min(px(marge_touche), largeur / 10);
        dessus = std::min(px(marge_legende), (z.bas - z.haut) / 12);
        if (a.alignement == Alignement::gauche) gauche = std::min(px(marge_touche_gauche), largeur / 8);
    } else if (a.role == Role::bandeau || a.role == Role::carte || a.role == Role::entete) {
        const int marge = px(a.role == Role::bandeau ? marge_bandeau : marge_liste);
        if (a.alignement == Alignement::gauche) gauche = marge;
        if (a.alignement == Alignement::droite) droite = marge;
    }
    return {z.gauche + gauche + pixels(a.marge_gauche), z.haut + dessus + pixels(a.marge_haut),
            z.droite - droite - pixels(a.marge_droite), z.bas - dessus - pixels(a.marge_bas)};
}

/// The em size of a picture: its drawing fills about five sixths of it.
int Placement::cote_image(const Zone& z, const Aspect& a, bool avec_texte, bool grande) const {
    const int l = z.droite - z.gauche, h = z.bas - z.haut, moindre = std::min(l, h);
    double cote = 0.6 * moindre;
    if (a.place_image == PlaceImage::gauche) {
        cote = std::min(0.52 * h, 0.3 * l);
    } else if (a.place_image == PlaceImage::droite) {
        cote = 0.56 * h;
    } else if (avec_texte && a.place_image != PlaceImage::milieu) {
        cote = std::min(0.36 * h + 11 * echelle_, std::min(0.46 * l, 0.6 * h));
    } else if (moindre < px(image_mince)) {
        cote = 0.92 * moindre;
    }
    return std::clamp(static_cast<int>(std::lround(grande ? cote * 1.12 : cote)), 1,
                      std::max(1, std::min(moindre, px(image_max))));
}

PlaceContenu Placement::contenu(const Zone& z, const Aspect& a, bool avec_texte, const Rang& rang) const {
    PlaceContenu p{place_du_texte(z, a, rang)};
    const ImageDeTouche& image = image_de_touche(a.image);
    if (image.glyphe == 0) return p;
    const int l = z.droite - z.gauche, h = z.bas - z.haut;
    p.cote = cote_image(z, a, avec_texte, image.grande);
    p.x = z.gauche + l / 2;
    p.y = z.haut + h / 2;
    if (a.place_image == PlaceImage::droite) {
        p.x = z.droite - std::min(px(retrait_image_droite), l / 8) - p.cote / 2;
        p.texte.droite = std::min(p.texte.droite, p.x - p.cote / 2 - px(marge_legende));
    } else if (!avec_texte || a.place_image == PlaceImage::milieu) {
        return p;
    } else if (a.place_image == PlaceImage::gauche) {
        const int marge = a.alignement == Alignement::gauche ? p.texte.gauche - z.gauche + p.cote / 2 : l / 4;
        p.x = z.gauche + std::min(marge, l / 4);
        p.texte.gauche = p.x + p.cote / 2 + px(a.alignement == Alignement::gauche ? marge_champ : marge_legende);
    } else {
        p.y = z.haut + h * 36 / 100;
        const int cote = std::min(px(marge_legende), l / 16);
        p.texte = {z.gauche + cote, z.haut + h * 60 / 100, z.droite - cote, z.haut + h * 955 / 1000};
    }
    return p;
}

PlaceMarque Placement::marque(const Zone& z, Alignement alignement) const {
    const int h = z.bas - z.haut, l = z.droite - z.gauche;
    if (alignement == Alignement::gauche || h < px(hauteur_de_coin)) {
        const int d = std::min({px(disque_max), h * 7 / 10, l / 3}), haut = z.haut + (h - d) / 2;
        const int droite = z.droite - std::min(px(bord_marque), l / 16);
        return {{droite - d, haut, droite, haut + d}, true};
    }
    const int d = std::min({px(disque_de_coin), h / 2, l / 3}), bord = std::min({px(bord_coin), l / 16, (h - d) / 2});
    return {{z.droite - bord - d, z.haut + bord, z.droite - bord, z.haut + bord + d}, false};
}

Zone Placement::dans_le_champ(const Zone& z) const {
    const int cote = std::min(px(marge_champ), (z.droite - z.gauche) / 8);
    return {z.gauche + cote, z.haut + px(2), z.droite - cote, z.bas - px(2)};
}

Zone Placement::case_a_cocher(const Zone& z, bool avec_texte) const {
    const int h = z.bas - z.haut, l = z.droite - z.gauche;
    const int cote = std::min({px(case_max), h * 3 / 4, l * 3 / 4});
    const int gauche = avec_texte ? z.gauche + (h - cote) / 2 : z.gauche + (l - cote) / 2;
    const int haut = z.haut + (h - cote) / 2;
    return {gauche, haut, gauche + cote, haut + cote};
}

}  // namespace ecran
