#include "platform/rejeu/cible.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/peinture/placement.h"
#include "platform/systeme/texte.h"

namespace rejeu {
namespace {

using ecran::Cadre;
using ecran::Controle;
using ecran::Forme;
using ecran::Genre;

bool sur_l_ecran(const Forme& f, int x, int y) {
    const int sx = f.cadre.gauche + x, sy = f.cadre.haut + y;
    const Cadre vue = ecran::vue();
    return sx >= 0 && sy >= 0 && sx < vue.largeur && sy < vue.hauteur;
}

bool se_touche(const Forme& f, const ecran::Touche& voulue, int x, int y) {
    return sur_l_ecran(f, x, y) && ecran::sous_le_doigt(f, x, y) == voulue;
}

/// Whether a caption is that text: trimmed, or (the space key) just as it stands.
bool porte(std::string_view legende, std::string_view texte) {
    const std::string lue = texte_lu(legende);
    return !texte.empty() && (lue == texte || texte::rogne(lue) == texte);
}

struct Candidat {
    Cible cible;
    Cadre cadre;
};

void ajoute_cellules(std::vector<Candidat>& liste, Forme& f, Controle& c, std::string_view texte) {
    for (int l = 0; l < c.grille.lignes; ++l) {
        for (int k = 0; k < c.grille.colonnes; ++k) {
            if (!porte(c.grille.texte(l, k), texte)) continue;
            const Cadre cadre = ecran::cadre_cellule(c, l, k);
            if (cadre.largeur > 0) liste.push_back({{&f, &c, l, k}, cadre});
        }
    }
}

}  // namespace

const ecran::Aspect& Cible::aspect() const {
    return est_cellule() ? controle->grille.cellule(ligne, colonne) : controle->aspect;
}

int Cible::image() const {
    const ecran::Aspect& a = aspect();
    return a.image == 0 && a.role == ecran::Role::choisie ? ecran::image_valider : a.image;
}

int Cible::police() const {
    return aspect().police != 0 ? aspect().police : controle->aspect.police;
}

ecran::Couleur Cible::fond() const {
    for (const ecran::Aspect* a : {&aspect(), &std::as_const(controle->aspect)}) {
        if (const auto f = ecran::fond_montre(*a); f != ecran::sans_couleur) return f;
    }
    return ecran::fond_de(forme->role);
}

std::string texte_lu(std::string_view t) {
    std::string r;
    for (std::size_t i = 0; i < t.size(); ++i) {
        if (t[i] == '\r' && i + 1 < t.size() && t[i + 1] == '\n') continue;
        r += t[i] == '\n' || t[i] == '\r' ? ' ' : t[i];
    }
    return r;
}

std::optional<Cible> cherche(const Nom& nom, std::optional<int> ligne, std::optional<int> colonne, std::string& faute) {
    Cible c;
    c.forme = nom.forme.empty() ? ecran::forme_du_dessus() : ecran::forme_chargee(nom.forme);
    if (c.forme == nullptr) return faute = "écran absent : " + nom.forme, std::nullopt;
    c.controle = c.forme->cherche(nom.controle, nom.index);
    if (c.controle == nullptr) return faute = "contrôle inconnu sur " + c.forme->nom, std::nullopt;
    if (!ligne) return c;
    c.ligne = *ligne;
    c.colonne = colonne.value_or(0);
    if (!c.controle->est_grille() || !c.controle->grille.existe(c.ligne, c.colonne)) {
        return faute = "cellule inexistante", std::nullopt;
    }
    return c;
}

std::optional<Cible> cherche_texte(std::string_view texte) {
    Forme* f = ecran::forme_du_dessus();
    if (f == nullptr) return std::nullopt;
    std::vector<Candidat> candidats;
    for (const auto& c : f->controles) {
        if (!c->visible || c->laisse_passer) continue;
        if (c->est_grille()) {
            ajoute_cellules(candidats, *f, *c, texte);
        } else if (c->genre == Genre::bouton && porte(c->aspect.texte, texte)) {
            candidats.push_back({{f, c.get(), -1, -1}, c->cadre});
        }
    }
    std::erase_if(candidats, [&](const Candidat& c) {
        return !se_touche(*f, {c.cible.controle, c.cible.ligne, c.cible.colonne}, c.cadre.gauche + c.cadre.largeur / 2,
                          c.cadre.haut + c.cadre.hauteur / 2);
    });
    if (candidats.empty()) return std::nullopt;
    return std::min_element(candidats.begin(), candidats.end(),
                            [](const Candidat& a, const Candidat& b) {
                                return std::pair(a.cadre.haut, a.cadre.gauche) <
                                       std::pair(b.cadre.haut, b.cadre.gauche);
                            })
        ->cible;
}

bool point_a_toucher(const Cible& cible, int& x, int& y, std::string& faute) {
    Controle& c = *cible.controle;
    if (cible.forme != ecran::forme_du_dessus()) return faute = "l'écran n'est pas au-dessus", false;
    if (!c.visible) return faute = "contrôle caché", false;
    if (cible.est_cellule()) c.grille.montre_ligne(cible.ligne, c.cadre);
    const Cadre cadre = cible.est_cellule() ? ecran::cadre_cellule(c, cible.ligne, cible.colonne) : c.cadre;
    if (cadre.largeur <= 0 || cadre.hauteur <= 0) return faute = "cellule cachée", false;
    x = cadre.gauche + cadre.largeur / 2;
    y = cadre.haut + cadre.hauteur / 2;
    if (!sur_l_ecran(*cible.forme, x, y)) return faute = "hors de l'écran", false;
    const ecran::Touche dessous = ecran::sous_le_doigt(*cible.forme, x, y);
    const bool atteint = dessous.controle == &c &&
                         (!cible.est_cellule() || (dessous.ligne == cible.ligne && dessous.colonne == cible.colonne));
    if (!atteint) faute = "contrôle couvert";
    return atteint;
}

}  // namespace rejeu
