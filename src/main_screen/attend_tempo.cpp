#include "main_screen/attend_tempo.h"

#include <algorithm>
#include <string>

#include "data/nombres.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace attend_tempo {
namespace {

using namespace ecran;
using formes::px;

constexpr int tic_ms = 1000;
constexpr int dernier_compte = -2;  ///< below it the screen closes
constexpr int largeur_boite = px(620), hauteur_boite = px(420), marge = px(24);
constexpr int hauteur_message = px(110), hauteur_compte = px(120), hauteur_tentative = px(40), hauteur_touche = px(84);
/// What the parts need one below the other; a lower box makes all of them lower.
constexpr int hauteur_pleine =
    marge + hauteur_message + hauteur_compte + hauteur_tentative + rythme + hauteur_touche + marge;
constexpr int police_message = 18, police_compte = 64, police_tentative = 16, police_touche = 20;

/// A form may be higher than a small screen: the box lies in what is seen.
Cadre cadre_boite() {
    const int vue = std::min(formes::hauteur(), hauteur_ecran());
    const int l = std::min(largeur_boite, formes::largeur() - 2 * rythme);
    const int h = std::min(hauteur_boite, vue - 2 * hauteur_bandeau);
    return {(formes::largeur() - l) / 2, (vue - h) / 2, l, h};
}

/// Places of the controls within the box, from the bottom up.
struct Places {
    Cadre message, compte, tentative, touche;
};

Places places(int largeur, int hauteur) {
    const double part = std::min(1.0, static_cast<double>(hauteur) / hauteur_pleine);
    const auto y = [part](int h) { return static_cast<int>(h * part); };
    const int utile = largeur - 2 * marge;
    Places p;
    p.message = {marge, y(marge), utile, y(hauteur_message)};
    p.touche = {marge, hauteur - y(marge + hauteur_touche), utile, y(hauteur_touche)};
    p.tentative = {marge, p.touche.haut - y(hauteur_tentative + rythme), utile, y(hauteur_tentative)};
    p.compte = {marge, p.tentative.haut - y(hauteur_compte), utile, y(hauteur_compte)};
    return p;
}

class Attente {
  public:
    Attente() {
        abandon = false;
        forme_.nom = "attend_tempo";
        forme_.role = Role::boite;
        forme_.voile = true;
        forme_.cadre = cadre_boite();
        construit();
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    void construit() {
        const Places p = places(forme_.cadre.largeur, forme_.cadre.hauteur);
        const Plan plans[] = {
            {.nom = "Label1",
             .cadre = p.message,
             .texte = "Impossible de se connecter au réseau, un nouvel essai sera fait dans         secondes..."_t,
             .police = police_message},
            {.nom = "Label2", .texte = "5", .visible = false},
            {.nom = "Label4",
             .cadre = p.compte,
             .texte = "5",
             .police = police_compte,
             .gras = true,
             .encre = palette::bleu},
            {.nom = "Label3",
             .cadre = p.tentative,
             .texte = "Nouvelle tentative de connexion",
             .police = police_tentative,
             .gras = true,
             .encre = palette::vert,
             .visible = false},
            formes::touche_de_boite({.nom = "p11",
                                     .cadre = p.touche,
                                     .texte = "Abandonner",
                                     .role = Role::detruire,
                                     .police = police_touche,
                                     .image = image_fermer}),
        };
        forme_.construit(plans);
    }

    void branche() {
        forme_("p11").au_toucher = [this] { abandonne(); };
        forme_.a_l_echappement = [this] { abandonne(); };
        Minuterie& m = forme_.ajoute_minuterie("Timer1");
        m.au_tic = [this] { tic(); };
        m.demarre(tic_ms);
    }

    void abandonne() {
        abandon = true;
        forme_.ferme();
    }

    void tic() {
        const int compte = nombres::entier_int(forme_("Label2").texte()) - 1;
        forme_("Label2").texte() = std::to_string(compte);
        if (compte > -1) forme_("Label4").texte() = forme_("Label2").texte();
        if (compte == 0) {
            forme_("Label3").visible = true;
            forme_("Label4").texte() = "-";
        }
        if (compte < dernier_compte) forme_.ferme();
    }
};

}  // namespace

void montre_attend_tempo() {
    Attente().montre();
}

}  // namespace attend_tempo
