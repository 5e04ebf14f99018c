#include "config/porpay.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "data/etat.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "dialogs/clav_num.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace porpay {
namespace {

using namespace ecran;
using formes::px;

constexpr double largeur_sur_hauteur = 0.72;
constexpr int police_titre = 27, police_taille = 20;

struct Format {
    int largeur, hauteur;  ///< pixels
};

Format plein_ecran() {
    return {largeur_ecran() / twips_par_pixel, hauteur_ecran() / twips_par_pixel - reserve};
}
Format portrait() {
    const int h = plein_ecran().hauteur;
    return {static_cast<int>(std::lround(h * largeur_sur_hauteur)), h};
}

/// A drawn key of the little tablet: colour digit, or a role of the key row.
constexpr int chiffres_dessin[3][6] = {{4, 1, 6, 2, 2, 8}, {7, 1, 3, 5, 9, 3}, {0, 0, 0, 0, 0, 0}};
constexpr Couleur couleur_bandeau = 0x3A4756;
constexpr int espace_dessin = px(6);
constexpr Couleur couleurs_barre[6] = {palette::encre, palette::encre, palette::encre,
                                       palette::bleu,  palette::vert,  palette::rouge};

class Choix {
  public:
    Choix() {
        forme_.nom = "porpay";
        formes::encadre(forme_, "Résolution de l'écran"_t, formes::version);
        construit();
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    void construit() {
        const Cadre zone = formes::contenu();
        const int l = (zone.largeur - rythme) / 2;
        ajoute_format("Image1", {zone.gauche, zone.haut, l, zone.hauteur}, "Portrait", portrait(), 4);
        ajoute_format("Image2", {zone.gauche + l + rythme, zone.haut, l, zone.hauteur}, "Plein écran"_t, plein_ecran(),
                      6);
        forme_.ajoute({.nom = "bt_coul",
                       .genre = Genre::bouton,
                       .cadre = formes::cadre_barre(),
                       .texte = "Saisir la résolution"_t,
                       .role = Role::action,
                       .police = 14,
                       .gras = true,
                       .image = image_pave,
                       .etiquette = 2});
    }

    /// A key that shows a tablet of the format, with its name and its size below.
    void ajoute_format(std::string_view nom, const Cadre& touche, std::string_view titre, Format f, int colonnes) {
        forme_.ajoute({.nom = nom, .genre = Genre::image, .cadre = touche, .role = Role::touche, .etiquette = 3});
        const int bas_dessin = touche.bas() - px(130);
        dessine_tablette(
            {touche.gauche + px(24), touche.haut + px(24), touche.largeur - px(48), bas_dessin - touche.haut - px(24)},
            f, colonnes);
        const Cadre ligne_titre = {touche.gauche + px(8), bas_dessin + px(6), touche.largeur - px(16), px(54)};
        const Cadre ligne_taille = {ligne_titre.gauche, ligne_titre.bas(), ligne_titre.largeur, px(40)};
        const std::string taille = std::to_string(f.largeur) + " x " + std::to_string(f.hauteur);
        const Plan plans[] = {
            {.nom = "Label1",
             .cadre = ligne_titre,
             .texte = titre,
             .police = police_titre,
             .gras = true,
             .laisse_passer = true},
            {.nom = "Label2",
             .cadre = ligne_taille,
             .texte = taille,
             .police = police_taille,
             .encre = palette::gris,
             .laisse_passer = true},
        };
        forme_.construit(plans);
    }

    void rectangle(const Cadre& cadre, Couleur fond, Role role = Role::touche) {
        forme_.ajoute({.nom = "Shape1",
                       .genre = Genre::forme,
                       .cadre = cadre,
                       .role = role,
                       .fond = fond,
                       .laisse_passer = true});
    }

    /// A tablet of the format's proportions, as large as the place allows, with a page of keys on it.
    void dessine_tablette(const Cadre& place, Format f, int colonnes) {
        const double rapport = static_cast<double>(std::max(1, f.largeur)) / std::max(1, f.hauteur);
        const int hauteur = std::min(place.hauteur, static_cast<int>(place.largeur / rapport));
        const int largeur = static_cast<int>(hauteur * rapport);
        const Cadre boitier = {place.gauche + (place.largeur - largeur) / 2, place.haut + (place.hauteur - hauteur) / 2,
                               largeur, hauteur};
        rectangle(boitier, palette::encre);
        const int bord = px(14);
        const Cadre ecran = {boitier.gauche + bord, boitier.haut + bord, largeur - 2 * bord, hauteur - 2 * bord};
        rectangle(ecran, couleur_bandeau, Role::papier);
        const int bandeau = px(9);
        const Cadre page = {ecran.gauche, ecran.haut + bandeau, ecran.largeur, ecran.hauteur - 2 * bandeau};
        rectangle(page, palette::papier, Role::papier);
        const int pas_h = (page.hauteur - espace_dessin) / 7;
        for (int l = 0; l < 3; ++l) {
            for (int c = 0; c < colonnes; ++c) {
                rectangle(case_dessin(page, colonnes, c, l * 2 * pas_h, 2 * pas_h),
                          palette::chiffres[chiffres_dessin[l][c]]);
            }
        }
        for (int c = 0; c < 6; ++c) rectangle(case_dessin(page, 6, c, 6 * pas_h, pas_h), couleurs_barre[c]);
    }

    static Cadre case_dessin(const Cadre& page, int colonnes, int c, int haut, int hauteur) {
        const int l = (page.largeur - espace_dessin) / colonnes;
        return {page.gauche + espace_dessin + c * l, page.haut + haut + espace_dessin, l - espace_dessin,
                hauteur - espace_dessin};
    }

    void branche() {
        forme_("Image1").au_toucher = [this] { choisit(portrait()); };
        forme_("Image2").au_toucher = [this] { choisit(plein_ecran()); };
        forme_("bt_coul").au_toucher = [this] { saisit(); };
        // The first start needs an answer; afterwards the one given stands.
        if (reglages::resolution_choisie()) forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void choisit(Format f) { ecrit({f.largeur, f.hauteur}, reglages::Forme::image); }

    void ecrit(reglages::Resolution r, reglages::Forme forme) {
        if (reglages::ecrit_resolution(r, forme) != fichiers::Issue::fait) {
            mini_97::informe("La résolution n'a pas pu être enregistrée, elle reste ce qu'elle était !"_t);
        }
        forme_.ferme();
    }

    /// Pixels; nothing when the answer is empty.
    static std::optional<int> demande_cote(std::string_view invite, int courant) {
        etat::code_dialogue = mini_97::saisie;
        const auto reponse = clav_num::demande("", std::string(invite) + std::to_string(courant));
        if (!reponse || reponse->empty()) return std::nullopt;
        return nombres::entier_int(*reponse);
    }

    /// An empty answer changes nothing.
    void saisit() {
        const reglages::Resolution courante = reglages::resolution();
        const auto largeur = demande_cote("Entrez la résolution Horizontale ?|"_t, courante.largeur);
        if (!largeur) return;
        const auto hauteur = demande_cote("Entrez la résolution Verticale ?|"_t, courante.hauteur);
        if (!hauteur) return;
        ecrit({*largeur, *hauteur}, reglages::Forme::saisie);
    }
};

}  // namespace

void montre_porpay() {
    Choix().montre();
}

}  // namespace porpay
