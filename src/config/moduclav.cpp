#include "config/moduclav.h"

#include "config/reglages.h"
#include "data/etat.h"
#include "data/programme_touches.h"
#include "platform/ecran/boucle.h"

namespace moduclav {
namespace {

using namespace ecran;

constexpr int police_haut = 12, police_bas = 11;

Controle& bandeau(Forme& forme, std::string_view nom) {
    if (Controle* c = forme.cherche(nom); c != nullptr) return *c;
    const bool haut = nom == "label_haut";
    Controle& c = forme.ajoute({nom,
                                -1,
                                Genre::etiquette,
                                {},
                                "",
                                Role::bandeau,
                                haut ? police_haut : police_bas,
                                haut,
                                haut ? Alignement::gauche : Alignement::centre,
                                1});
    return c;
}

}  // namespace

void bandeaux(Forme& forme, std::string_view haut, std::string_view bas) {
    const int largeur = etat::largeur_ecran * twips_par_pixel;
    const int hauteur = etat::hauteur_ecran * twips_par_pixel;
    Controle& label_haut = bandeau(forme, "label_haut");
    label_haut.cadre = {0, 0, largeur, hauteur_bandeau};
    label_haut.texte() = haut;
    label_haut.aspect.fond = label_haut.aspect.encre = sans_couleur;
    Controle& label_bas = bandeau(forme, "label_bas");
    label_bas.cadre = {0, hauteur - hauteur_bandeau, largeur, hauteur_bandeau};
    label_bas.texte() = bas;
    label_bas.aspect.fond = sans_couleur;
    label_bas.aspect.encre = palette::pale;
}

void quitte() {
    termine();
}

void passe_la_main(std::string_view commande, processus::Fenetre fenetre) {
    reglages::ferme();
    programme_touches::ferme();
    if (processus::lance(commande, fenetre)) quitte();
    static_cast<void>(reglages::ouvre());
    static_cast<void>(programme_touches::prepare());
}

}  // namespace moduclav
