#include "platform/controles/controles.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "platform/systeme/horloge.h"

namespace ecran {
namespace {

/// Height of a row in twips, for a grid whose rows do not share the height.
int hauteur_de(const Grille& g, int ligne) {
    if (!g.hauteurs.empty()) return g.hauteurs[static_cast<std::size_t>(ligne)];
    return g.hauteur_ligne;
}

bool rangees_partagees(const Grille& g) {
    return g.hauteur_ligne == 0 && g.hauteurs.empty();
}

/// Rows that one flow of a grid holds below its fixed rows.
int lignes_par_flot(const Grille& g) {
    return (g.lignes + g.flots - 1) / std::max(1, g.flots);
}

/// Splits `longueur` into `parts` with `espace` between them; sets place and size of part `i`, without rounding drift.
void partage(int longueur, int parts, int espace, int i, int& debut, int& taille) {
    const std::int64_t net = longueur + espace;
    debut = static_cast<int>(net * i / parts);
    taille = static_cast<int>(net * (i + 1) / parts) - espace - debut;
}

/// Left edge and width of a column within a grid of width `largeur`.
void etendue_colonne(const Grille& g, int largeur, int colonne, int& gauche, int& taille) {
    if (g.largeurs.empty()) return partage(largeur, g.colonnes, g.espace, colonne, gauche, taille);
    gauche = 0;
    for (int c = 0; c < colonne; ++c) {
        const int l = g.largeurs[static_cast<std::size_t>(c)];
        if (l > 0) gauche += l + g.espace;
    }
    taille = g.largeurs[static_cast<std::size_t>(colonne)];
}

/// Top and height of a row within the grid; height 0 when it is scrolled away.
void etendue_ligne(const Controle& c, int ligne, int& haut, int& taille) {
    const Grille& g = c.grille;
    haut = 0;
    taille = 0;
    if (rangees_partagees(g)) return partage(c.cadre.hauteur, g.lignes, g.espace, ligne, haut, taille);
    const bool fixe = ligne < g.lignes_fixes;
    const int premiere = std::max(g.premiere_ligne, g.lignes_fixes);
    if (!fixe && ligne < premiere) return;
    for (int l = 0; l < std::min(ligne, g.lignes_fixes); ++l) haut += hauteur_de(g, l) + g.espace;
    if (!fixe && g.hauteurs.empty()) {
        haut += (ligne - premiere) * (g.hauteur_ligne + g.espace);
    } else if (!fixe) {
        for (int l = premiere; l < ligne && haut < c.cadre.hauteur; ++l) haut += hauteur_de(g, l) + g.espace;
    }
    taille = std::min(hauteur_de(g, ligne), c.cadre.hauteur - haut);
}

}  // namespace

void Grille::dimensionne(int nb_lignes, int nb_colonnes, const Aspect& modele) {
    std::vector<Aspect> neuves(static_cast<std::size_t>(nb_lignes) * static_cast<std::size_t>(nb_colonnes), modele);
    for (int l = 0; l < std::min(lignes, nb_lignes); ++l) {
        for (int c = 0; c < std::min(colonnes, nb_colonnes); ++c) {
            neuves[static_cast<std::size_t>(l * nb_colonnes + c)] = std::move(cellule(l, c));
        }
    }
    cellules = std::move(neuves);
    lignes = nb_lignes;
    colonnes = nb_colonnes;
    premiere_ligne = std::clamp(premiere_ligne, 0, std::max(0, lignes - 1));
    ligne = colonne = -1;
}

int Grille::ajoute_ligne(const Aspect& modele) {
    cellules.resize(cellules.size() + static_cast<std::size_t>(colonnes), modele);
    return lignes++;
}

int Grille::lignes_visibles(const Cadre& cadre) const {
    if (rangees_partagees(*this)) return lignes - lignes_fixes;
    int reste = cadre.hauteur;
    for (int l = 0; l < lignes_fixes; ++l) reste -= hauteur_de(*this, l) + espace;
    if (hauteurs.empty()) return std::clamp((reste + espace) / std::max(1, hauteur_ligne + espace), 1, 1 << 20);
    int n = 0;
    for (int l = std::max(premiere_ligne, lignes_fixes); l < lignes && reste >= hauteur_de(*this, l); ++l, ++n) {
        reste -= hauteur_de(*this, l) + espace;
    }
    return std::max(1, n);
}

/// The first row of a list that is scrolled to its end.
static int premiere_de_la_fin(const Grille& g, const Cadre& cadre) {
    if (g.hauteurs.empty() || rangees_partagees(g)) return g.lignes - g.lignes_visibles(cadre);
    int reste = cadre.hauteur;
    for (int l = 0; l < g.lignes_fixes; ++l) reste -= hauteur_de(g, l) + g.espace;
    int l = g.lignes;
    for (; l > g.lignes_fixes && reste >= hauteur_de(g, l - 1); --l) reste -= hauteur_de(g, l - 1) + g.espace;
    return std::min(l, g.lignes - 1);
}

int Grille::premiere_apres(int pas, const Cadre& cadre) const {
    const int derniere = std::max(lignes_fixes, premiere_de_la_fin(*this, cadre));
    return std::clamp(std::max(premiere_ligne, lignes_fixes) + pas, lignes_fixes, derniere);
}

void Grille::defile_de(int pas, const Cadre& cadre) {
    premiere_ligne = premiere_apres(pas, cadre);
}

void Grille::montre_ligne(int voulue, const Cadre& cadre) {
    if (!defile || voulue < lignes_fixes) return;
    const auto premiere = [this] { return std::max(premiere_ligne, lignes_fixes); };
    if (voulue < premiere()) return defile_de(voulue - premiere(), cadre);
    while (voulue >= premiere() + lignes_visibles(cadre)) {
        const int avant = premiere_ligne;
        defile_de(1, cadre);
        if (premiere_ligne == avant) return;
    }
}

int Controle::duree_de_la_tenue() const {
    if (au_maintien) return duree_maintien_ms;
    return a_la_tenue || se_repete ? duree_tenue_ms : -1;
}

Cadre cadre_cellule(const Controle& c, int ligne, int colonne) {
    const Grille& g = c.grille;
    if (!g.existe(ligne, colonne)) return {};
    Cadre r = c.cadre;
    if (g.flots > 1 && g.colonnes == 1) {
        const int par_flot = lignes_par_flot(g);
        int x = 0, y = 0;
        partage(c.cadre.largeur, g.flots, g.espace, ligne / par_flot, x, r.largeur);
        partage(c.cadre.hauteur, par_flot, g.espace, ligne % par_flot, y, r.hauteur);
        r.gauche += x;
        r.haut += y;
        return r;
    }
    int x = 0, y = 0;
    etendue_colonne(g, c.cadre.largeur, colonne, x, r.largeur);
    etendue_ligne(c, ligne, y, r.hauteur);
    r.gauche += x;
    r.haut += y;
    r.largeur = std::min(r.largeur, c.cadre.droite() - r.gauche);
    if (r.largeur <= 0 || r.hauteur <= 0) return {};
    return r;
}

void Minuterie::demarre(int ms) {
    intervalle_ms = ms;
    actif = true;
    echeance = horloge::millisecondes() + ms;
}

void Minuterie::sonne_une_fois(int ms, std::function<void()> action) {
    au_tic = [this, action = std::move(action)] {
        arrete();
        action();
    };
    demarre(ms);
}

Controle& Forme::ajoute(const Plan& plan) {
    auto c = std::make_unique<Controle>();
    c->nom = plan.nom;
    c->index = plan.index;
    c->genre = plan.genre;
    c->cadre = plan.cadre;
    c->etiquette = plan.etiquette;
    c->aspect.texte = plan.texte;
    c->aspect.role = plan.role;
    c->aspect.police = plan.police;
    c->aspect.gras = plan.gras;
    c->aspect.alignement = plan.alignement;
    c->aspect.fond = plan.fond;
    c->aspect.encre = plan.encre;
    c->aspect.image = plan.image;
    c->aspect.place_image = plan.place_image;
    c->visible = plan.visible;
    c->laisse_passer = plan.laisse_passer;
    controles.push_back(std::move(c));
    return *controles.back();
}

void Forme::construit(std::span<const Plan> plans) {
    controles.reserve(controles.size() + plans.size());
    for (const Plan& p : plans) ajoute(p);
}

Minuterie& Forme::ajoute_minuterie(std::string_view nom_minuterie) {
    minuteries.push_back(std::make_unique<Minuterie>());
    minuteries.back()->nom = nom_minuterie;
    return *minuteries.back();
}

const Controle* Forme::cherche(std::string_view nom_controle, int index) const {
    for (const auto& c : controles) {
        if (c->index == index && c->nom == nom_controle) return c.get();
    }
    return nullptr;
}

Controle* Forme::cherche(std::string_view nom_controle, int index) {
    return const_cast<Controle*>(static_cast<const Forme*>(this)->cherche(nom_controle, index));
}

Controle& Forme::operator()(std::string_view nom_controle, int index) {
    Controle* c = cherche(nom_controle, index);
    assert(c != nullptr && "the screen's own table has no such control");
    return *c;
}

namespace {

/// The shown cell of a grid at a point of the form, fixed rows first; none: -1, -1.
Touche cellule_sous(Controle& c, int x, int y) {
    const Grille& g = c.grille;
    const auto essaie = [&](int l) {
        for (int k = 0; k < g.colonnes; ++k) {
            if (cadre_cellule(c, l, k).contient(x, y)) return k;
        }
        return -1;
    };
    const bool toutes = rangees_partagees(g) || g.flots > 1;
    const int premiere = toutes ? 0 : std::max(g.premiere_ligne, g.lignes_fixes);
    for (int l = 0; l < g.lignes; ++l) {
        if (!toutes && l >= g.lignes_fixes && l < premiere) l = premiere;
        if (l >= g.lignes) break;
        if (const int k = essaie(l); k >= 0) return {&c, l, k};
        if (!toutes && l >= premiere && cadre_cellule(c, l, 0).haut > y) break;
    }
    return {&c, -1, -1};
}

}  // namespace

Touche sous_le_doigt(const Forme& forme, int x, int y) {
    for (auto i = forme.controles.rbegin(); i != forme.controles.rend(); ++i) {
        Controle& c = **i;
        if (!c.visible || c.laisse_passer || !c.cadre.contient(x, y)) continue;
        return c.est_grille() ? cellule_sous(c, x, y) : Touche{&c, -1, -1};
    }
    return {};
}

}  // namespace ecran
