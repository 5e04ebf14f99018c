#include "platform/peinture/composition.h"

#include <cmath>

#include "platform/peinture/images.h"

namespace ecran {
namespace {

using Sorte = Element::Sorte;

// Lengths of the looks, in design pixels.
constexpr int rayon_boite = 12, barre_boite = 10, flou_ombre = 16, descente_ombre = 12;
constexpr int bord_choisie = 4, bord_case = 3, bord_compte = 2, creux = 2;
constexpr int lignes_par_rangee = 2;  ///< a list's long caption is broken before it cannot be read
constexpr int largeur_curseur = 3, intervalle_marque = 6;
constexpr int cote_coche = 38, bord_coche = 50;

constexpr int opacite_voile = 115, opacite_ombre = 115, opacite_touche = 45, opacite_touche_sombre = 78;
constexpr int police_par_defaut = 12;  ///< points

Couleur nuance(Couleur c, int vers, int pourcent) {
    const auto canal = [=](int decalage) {
        const int v = (c >> decalage) & 0xFF;
        return (v + (vers - v) * pourcent / 100) << decalage;
    };
    return canal(16) | canal(8) | canal(0);
}
Couleur assombrit(Couleur c, int pourcent) {
    return nuance(c, 0, pourcent);
}
Couleur bord_de(Couleur fond) {
    if (fond == palette::blanc) return palette::trait;
    return fond == palette::encre ? fond : assombrit(fond, 12);
}

}  // namespace

Couleur enfonce(Couleur fond) {
    return contraste(fond, palette::noir) < 2 ? nuance(fond, 255, 22) : assombrit(fond, 16);
}

// --- Forms

void Composition::fond_de_forme(const Forme& f) {
    const Zone z = p_.zone({0, 0, f.cadre.largeur, f.cadre.hauteur});
    if (f.voile) {
        const Zone sous_le_bandeau = {0, p_.pixels(hauteur_bandeau), ecran_.droite, ecran_.bas};
        aplat(Part::bande, sous_le_bandeau, palette::encre, opacite_voile);
    }
    const int r = p_.px(rayon_boite);
    if (f.role == Role::boite) {
        ombre_portee(z);
        const int barre = p_.px(barre_boite);
        rond(Part::bord, {z.gauche, z.haut, z.droite, std::min(z.bas, z.haut + barre + r)}, r, palette::bleu,
             coins_hauts);
        rond(Part::fond, {z.gauche, z.haut + barre, z.droite, z.bas}, r, fond_de(f.role), coins_bas);
    } else if (f.role == Role::clavier) {
        ombre_portee(z);
        rond(Part::fond, z, r, fond_de(f.role), coins_hauts);
    } else if (fond_de(f.role) != sans_couleur) {
        aplat(Part::fond, z, fond_de(f.role));
    }
}

void Composition::ombre_portee(const Zone& z) {
    const int flou = p_.px(flou_ombre), y = p_.px(descente_ombre);
    const Zone boite = {z.gauche, z.haut + y, z.droite, z.bas + y};
    Element* e = ajoute(Part::ombre, Sorte::ombre, boite, retreci(boite, -3 * flou), palette::noir);
    if (e == nullptr) return;
    e->rayon = flou;
    e->opacite = opacite_ombre;
}

// --- Grounds

void Composition::controle(const Controle& c) {
    const Zone z = p_.zone(c.cadre);
    if (z.vide()) return;
    const bool appuye = !c.est_grille() && presse(c, -1, -1);
    if (c.grille.espace == 0) fond(z, c.aspect, appuye);  // keys side by side lie on the form itself
    if (c.est_grille()) return grille(c, z);
    if (appuye && c.au_toucher) marque_appui(c, z);
    const bool sans_fond = c.genre == Genre::etiquette && fond_montre(c.aspect) == sans_couleur;
    const int debord = sans_fond ? 1 + p_.em(c.aspect.police) / 10 : 0;
    const Sujet s = {z, c.aspect, c.aspect.police, c.aspect.gras, {}, debord};
    if (c.genre == Genre::champ) return saisie(s, c.curseur);
    if (c.genre == Genre::case_) return case_a_cocher(s, c.coche);
    contenu(s);
}

/// A touch on what has no ground to go down: a picture or the text of a banner, a number, a field.
void Composition::marque_appui(const Controle& c, const Zone& z) {
    const Role role = c.aspect.role;
    if (role != Role::bandeau && role != Role::champ && fond_montre(c.aspect) != sans_couleur) return;
    const bool sombre = c.genre == Genre::image || role == Role::bandeau;
    rond(Part::trait, z, p_.pixels(coin), sombre ? palette::gris : palette::doux);
}

void Composition::fond(const Zone& z, const Aspect& a, bool appuye) {
    const Couleur couleur = fond_montre(a);
    if (couleur == sans_couleur) return;
    switch (a.role) {
        case Role::rien:
            return aplat(Part::fond, z, appuye ? enfonce(couleur) : couleur);
        case Role::papier:
        case Role::bandeau:
        case Role::ligne:
            return aplat(Part::fond, z, couleur);
        case Role::entete:
            return rond(Part::fond, z, p_.pixels(coin), couleur, coins_hauts);
        case Role::vide:
        case Role::clavier:
            return rond(Part::fond, z, p_.pixels(coin), couleur);
        case Role::repos:
            return rond(Part::fond, z, p_.pixels(coin), appuye ? enfonce(couleur) : couleur);
        case Role::pastille:
            return pastille(z, couleur);
        case Role::compte:
            rond(Part::bord, z, (z.bas - z.haut) / 2, palette::encre);
            return rond(Part::fond, retreci(z, p_.px(bord_compte)), (z.bas - z.haut) / 2 - p_.px(bord_compte), couleur);
        case Role::champ:
            return encadre(z, couleur, palette::bleu, 1);
        case Role::choisie:
            if (!appuye) ombre_de_touche(z, couleur);
            return encadre(z, appuye ? enfonce(couleur) : couleur, palette::vert, bord_choisie);
        default:
            return panneau(z, couleur, est_touche(a.role) || a.role == Role::titre_groupe, appuye);
    }
}

void Composition::encadre(const Zone& z, Couleur couleur, Couleur bord, int epaisseur) {
    const int e = p_.px(epaisseur), r = p_.pixels(coin);
    rond(Part::bord, z, r, bord);
    rond(Part::fond, retreci(z, e), r - e, couleur);
}

/// A key or a card: border and ground. A key casts a narrow shadow; held down it has none, and its upper edge does.
void Composition::panneau(const Zone& z, Couleur couleur, bool touche, bool appuye) {
    if (!appuye) {
        if (touche) ombre_de_touche(z, couleur);
        return encadre(z, couleur, bord_de(couleur), 1);
    }
    const int r = p_.pixels(coin);
    rond(Part::bord, z, r, assombrit(couleur, 34));
    const Zone dedans = retreci(z, p_.px(1));
    rond(Part::fond, {dedans.gauche, dedans.haut + p_.px(creux), dedans.droite, dedans.bas}, r - p_.px(1),
         enfonce(couleur));
}

void Composition::ombre_de_touche(const Zone& z, Couleur couleur) {
    const int r = p_.pixels(coin), descente = p_.px(ombre_touche);
    const Zone vue = {z.gauche, std::max(z.haut, z.bas - r), z.droite, z.bas + descente};
    Element* e = ajoute(Part::ombre, Sorte::pied, z, vue, palette::encre);
    if (e == nullptr) return;
    e->rayon = r;
    e->decalage = descente;
    e->opacite = couleur == palette::encre ? opacite_touche_sombre : opacite_touche;
}

void Composition::pastille(const Zone& z, Couleur couleur) {
    const int d = std::min(z.droite - z.gauche, z.bas - z.haut);
    const int x = (z.gauche + z.droite - d) / 2, y = (z.haut + z.bas - d) / 2;
    rond(Part::fond, {x, y, x + d, y + d}, d / 2, couleur);
}

// --- Captions and pictures

void Composition::contenu(const Sujet& s) {
    const Aspect& a = s.aspect;
    PlaceContenu place = p_.contenu(s.z, a, !legende(a).empty(), s.rang);
    const ImageDeTouche& image = image_de_touche(a.image);
    if (image.glyphe != 0) {
        const Couleur encre = image.teinte != sans_couleur ? image.teinte : encre_montree(a);
        icone(Part::image, s.z, image.glyphe, place.cote, place.x, place.y, encre);
    }
    if (a.role == Role::ligne_choisie && s.rang.derniere) {
        texte(s, place.texte);
        const int cote = std::min(p_.px(cote_coche), s.z.bas - s.z.haut);
        return icone(Part::coche, s.z, image_de_touche(image_valider).glyphe, cote, s.z.droite - p_.px(bord_coche),
                     (s.z.haut + s.z.bas) / 2, encre_montree(a));
    }
    if (a.role == Role::choisie) return choisie(s, place.texte);
    texte(s, place.texte);
}

/// The mark takes some of the caption's room; the size that a page shares does not depend on it.
void Composition::choisie(const Sujet& s, Zone place) {
    const Zone sans_marque = {place.gauche, place.haut - p_.pixels(s.aspect.marge_haut), place.droite, place.bas};
    const PlaceMarque m = p_.marque(s.z, s.aspect.alignement);
    if (m.au_bout) {
        place.haut = sans_marque.haut;
        place.droite = std::min(place.droite, m.disque.gauche - p_.px(intervalle_marque));
    }
    texte(s, place, sans_marque);
    marque(m.disque);
}

void Composition::texte(const Sujet& s, const Zone& place, const Zone& mesure) {
    const std::string_view t = legende(s.aspect);
    if (t.empty() || place.vide()) return;
    const Zone visible = {s.z.gauche, s.z.haut - s.debord, s.z.droite, s.z.bas + s.debord};
    Element* e = ajoute(Part::texte, Sorte::texte, place, visible, encre_montree(s.aspect));
    if (e == nullptr) return;
    e->texte = t;
    e->police = s.gras ? Police::grasse : Police::normale;
    e->taille = p_.em(s.police > 0 ? s.police : police_par_defaut);
    e->alignement = s.aspect.alignement;
    if (s.aspect.role == Role::bandeau) e->lignes_max = 1;
    if (s.rang.liste) e->lignes_max = lignes_par_rangee;
    if (s.aspect.accord) accordees_.push_back({sortie_.size() - 1, mesure});
}

void Composition::marque(const Zone& disque) {
    const int d = disque.droite - disque.gauche;
    rond(Part::marque, disque, d / 2, palette::vert);
    icone(Part::coche, disque, image_de_touche(image_valider).glyphe, d * 4 / 5, disque.gauche + d / 2,
          disque.haut + d / 2, palette::blanc);
}

void Composition::saisie(const Sujet& s, int curseur) {
    const Zone dedans = p_.dans_le_champ(s.z);
    if (dedans.vide()) return;
    const std::string_view t = s.aspect.texte;
    const Police police = s.gras ? Police::grasse : Police::normale;
    const int taille = std::clamp(p_.em(s.police > 0 ? s.police : police_par_defaut), 1,
                                  std::max(1, (dedans.bas - dedans.haut) * 9 / 10));
    const int epaisseur = p_.px(largeur_curseur);
    int x = 0;
    if (curseur > 0) {
        x = static_cast<int>(
            std::lround(largeur_texte(police, taille, t.substr(0, static_cast<std::size_t>(curseur)))));
    }
    const int decalage = std::max(0, x + epaisseur - (dedans.droite - dedans.gauche));
    if (!t.empty()) {
        if (Element* e = ajoute(Part::texte, Sorte::saisie, dedans, dedans, encre_montree(s.aspect))) {
            e->texte = t;
            e->police = police;
            e->taille = taille;
            e->decalage = decalage;
        }
    }
    if (curseur < 0) return;
    const int milieu = (s.z.haut + s.z.bas) / 2, demi = std::min(taille * 3 / 5, (dedans.bas - dedans.haut) / 2);
    const int gauche = dedans.gauche + x - decalage;
    aplat(Part::curseur, {gauche, milieu - demi, gauche + epaisseur, milieu + demi}, palette::bleu);
}

void Composition::case_a_cocher(const Sujet& s, bool coche) {
    const Zone boite = p_.case_a_cocher(s.z, !s.aspect.texte.empty());
    const int cote = boite.droite - boite.gauche;
    if (coche) {
        rond(Part::bord, boite, p_.pixels(coin), palette::vert);
        icone(Part::coche, boite, image_de_touche(image_valider).glyphe, cote * 9 / 10, boite.gauche + cote / 2,
              boite.haut + cote / 2, palette::blanc);
    } else {
        encadre(boite, palette::blanc, palette::gris, bord_case);
    }
    ordre_ += pas_cellule;
    texte(s, {boite.droite + (boite.gauche - s.z.gauche), s.z.haut, s.z.droite, s.z.bas});
}

void compose(std::span<Forme* const> pile, const Appui& appui, int largeur, int hauteur, double echelle,
             std::vector<Element>& liste) {
    Composition c(liste, echelle, appui, {0, 0, largeur, hauteur});
    for (const Forme* f : pile) c.forme(*f);
    for (Element& e : liste) e.empreinte = empreinte(e);
}

}  // namespace ecran
