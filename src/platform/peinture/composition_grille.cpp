#include "platform/peinture/composition.h"

namespace ecran {
namespace {

// Lengths of the looks, in design pixels.
constexpr int bande_ascenseur = 18, largeur_ascenseur = 7, marge_ascenseur = 6, ascenseur_min = 24;
constexpr int ecart_ascenseur = 2, retrait_trait = 14;
constexpr int marge_puce = 5, rayon_puce = 5;
constexpr Couleur couleur_ascenseur = 0x9A938A, titre_sans_texte = 0xFFF1E2;

/// Whether the vectors of a grid are as long as its size says.
bool est_entiere(const Grille& g) {
    const auto lignes = static_cast<std::size_t>(std::max(0, g.lignes));
    const auto colonnes = static_cast<std::size_t>(std::max(0, g.colonnes));
    return lignes > 0 && colonnes > 0 && g.cellules.size() >= lignes * colonnes &&
           (g.largeurs.empty() || g.largeurs.size() >= colonnes) && (g.hauteurs.empty() || g.hauteurs.size() >= lignes);
}

/// Whether all rows are always in view.
bool tient_en_entier(const Grille& g) {
    return g.flots > 1 || (g.hauteur_ligne == 0 && g.hauteurs.empty());
}

bool deborde(const Controle& c) {
    const Grille& g = c.grille;
    return g.defile && !tient_en_entier(g) && g.lignes - g.lignes_fixes > g.lignes_visibles(c.cadre);
}

}  // namespace

void Composition::grille(const Controle& c, const Zone& z) {
    const Grille& g = c.grille;
    if (!est_entiere(g)) return;
    Vue v = {c, z, z, c.aspect.role == Role::carte};
    const bool avec_ascenseur = deborde(c);
    if (v.carte) {
        v.utile = retreci(z, p_.px(1));
        if (avec_ascenseur) v.utile.droite -= p_.px(bande_ascenseur);
    } else {
        v.utile.bas += p_.px(ombre_touche);
    }
    const std::uint64_t debut = ordre_;
    const int premiere = tient_en_entier(g) ? 0 : std::max({g.premiere_ligne, g.lignes_fixes, 0});
    for (int l = 0; l < g.lignes; ++l) {
        if (l == g.lignes_fixes && l < premiere) l = premiere;
        ordre_ = debut;
        if (l >= g.lignes || (!rangee(v, l) && l >= premiere)) break;
    }
    ordre_ = debut;
    coupe_ = ecran_;
    if (g.reglee && !avec_ascenseur) lignes_vides(v);
    ordre_ = debut + cellule_max * pas_cellule;
    if (avec_ascenseur) ascenseur(v);
}

/// One row; false when nothing of it is in view.
bool Composition::rangee(const Vue& v, int l) {
    const Grille& g = v.c.grille;
    const std::uint64_t debut = ordre_;
    int derniere = g.colonnes - 1;
    while (derniere > 0 && !g.largeurs.empty() && g.largeurs[static_cast<std::size_t>(derniere)] <= 0) --derniere;
    bool vue = false;
    for (int k = 0; k < g.colonnes; ++k) {
        const Cadre cadre = cadre_cellule(v.c, l, k);
        if (cadre.largeur <= 0 || cadre.hauteur <= 0) continue;
        const std::uint64_t numero =
            static_cast<std::uint64_t>(l) * static_cast<std::uint64_t>(g.colonnes) + static_cast<std::uint64_t>(k) + 1;
        ordre_ = debut + std::min(numero, cellule_max) * pas_cellule;
        cellule(v, l, k, cadre, {v.carte, !vue, k == derniere});
        vue = true;
    }
    return vue || tient_en_entier(g);
}

void Composition::cellule(const Vue& v, int l, int k, const Cadre& cadre, const Rang& rang) {
    const Grille& g = v.c.grille;
    const Aspect& a = g.cellule(l, k);
    Cadre plein = cadre;
    if (!tient_en_entier(g)) {
        plein.hauteur = g.hauteurs.empty() ? g.hauteur_ligne : g.hauteurs[static_cast<std::size_t>(l)];
    }
    const Zone z = p_.zone(plein);
    const bool appuye = presse(v.c, l, k);
    coupe_ = intersection(v.utile, ecran_);
    const bool touche = est_touche(a.role) || a.role == Role::vide || g.espace > 0;
    if (touche) {
        fond(z, a, appuye);
    } else if (a.role == Role::puce && a.fond != sans_couleur) {
        rond(Part::fond, retreci(z, p_.px(marge_puce)), p_.px(rayon_puce), appuye ? enfonce(a.fond) : a.fond);
    } else {
        const bool au_bout = rang.derniere && (a.role == Role::entete || a.role == Role::titre_groupe);
        if (a.role == Role::entete) coupe_ = intersection(v.carte ? retreci(v.z, p_.px(1)) : v.z, ecran_);
        const int gauche = rang.premiere ? std::min(z.gauche, v.utile.gauche) : z.gauche;
        fond_de_rangee(v, {gauche, z.haut, au_bout ? std::max(z.droite, coupe_.droite) : z.droite, z.bas}, a, appuye);
    }
    if (a.trait) {
        const int debut = rang.premiere ? v.z.gauche + p_.px(retrait_trait) : z.gauche;
        const int fin = rang.derniere ? v.utile.droite - p_.px(retrait_trait) : z.droite;
        aplat(Part::trait, {debut, z.bas - p_.px(1), fin, z.bas}, palette::trait);
    }
    if (g.quadrillage) {
        const int debut = rang.premiere ? v.utile.gauche : z.gauche, fin = rang.derniere ? v.utile.droite : z.droite;
        aplat(Part::trait, {debut, z.bas - p_.px(1), fin, z.bas}, palette::trait);
        if (!rang.derniere) aplat(Part::colonne, {z.droite - p_.px(1), z.haut, z.droite, z.bas}, palette::trait);
    }
    const bool rang_de_liste = rang.liste && !touche;
    const Zone vue = {std::max(z.gauche, v.utile.gauche), z.haut, std::min(z.droite, coupe_.droite), z.bas};
    const Rang place = {rang_de_liste, rang.premiere, rang.derniere};
    const int police = a.police > 0 ? a.police : v.c.aspect.police;
    contenu({rang_de_liste ? vue : z, a, police, a.gras || v.c.aspect.gras, place});
}

/// The ground of a row's cell; where it lies in a corner of its card it is rounded like the card.
void Composition::fond_de_rangee(const Vue& v, const Zone& z, const Aspect& a, bool appuye) {
    Couleur couleur = fond_montre(a);
    if (a.role == Role::titre_groupe && a.fond == sans_couleur && a.texte.empty()) couleur = titre_sans_texte;
    if (appuye) couleur = couleur == sans_couleur ? palette::doux : enfonce(couleur);
    if (couleur == sans_couleur) return;
    const Zone dans = intersection(z, coupe_);
    if (!v.carte) return aplat(Part::fond, dans, couleur);
    const Zone carte = retreci(v.z, p_.px(1));
    unsigned coins = tous_coins;
    if (dans.gauche > carte.gauche) coins &= ~unsigned{haut_gauche | bas_gauche};
    if (dans.droite < carte.droite) coins &= ~unsigned{haut_droite | bas_droite};
    if (dans.haut > carte.haut) coins &= ~unsigned{coins_hauts};
    if (dans.bas < carte.bas) coins &= ~unsigned{coins_bas};
    rond(Part::fond, dans, p_.pixels(coin) - p_.px(1), couleur, coins);
}

/// The lines of the rows that a short list does not have.
void Composition::lignes_vides(const Vue& v) {
    const Grille& g = v.c.grille;
    Cadre rang = cadre_cellule(v.c, g.lignes - 1, 0);
    if (rang.hauteur <= 0 || p_.pixels(g.hauteur_ligne) < 1) return;
    ordre_ += std::min(g.cellules.size(), static_cast<std::size_t>(cellule_max / 2)) * pas_cellule;
    for (rang.hauteur += g.hauteur_ligne; rang.bas() <= v.c.cadre.bas(); rang.hauteur += g.hauteur_ligne) {
        const int gauche = v.z.gauche + p_.px(retrait_trait), droite = v.utile.droite - p_.px(retrait_trait);
        const int bas = p_.zone(rang).bas;
        ordre_ += pas_cellule;
        aplat(Part::trait, {gauche, bas - p_.px(1), droite, bas}, palette::trait);
    }
}

/// How much of the list is in view, and where: within a card, else in the margin at the right.
void Composition::ascenseur(const Vue& v) {
    const Grille& g = v.c.grille;
    const int total = g.lignes - g.lignes_fixes, vues = std::min(total, g.lignes_visibles(v.c.cadre));
    const int premiere = std::clamp(g.premiere_ligne - g.lignes_fixes, 0, std::max(0, total - vues));
    const int marge = p_.px(marge_ascenseur), l = p_.px(largeur_ascenseur);
    int haut = v.z.haut + marge;
    if (g.lignes_fixes > 0) haut = p_.zone(cadre_cellule(v.c, g.lignes_fixes - 1, 0)).bas + marge;
    const int course = v.z.bas - marge - haut;
    if (course <= 0) return;
    const auto part = [&](int longueur, int n, int sur) {
        return static_cast<int>(static_cast<std::int64_t>(longueur) * n / std::max(1, sur));
    };
    const int h = std::clamp(part(course, vues, total), std::min(course, p_.px(ascenseur_min)), course);
    const int y = haut + part(course - h, premiere, total - vues);
    const int x = v.carte ? v.z.droite - marge - l : std::min(v.z.droite + p_.px(ecart_ascenseur), ecran_.droite - l);
    rond(Part::marque, {x, y, x + l, y + h}, l / 2, couleur_ascenseur);
}

}  // namespace ecran
