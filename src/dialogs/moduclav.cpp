#include "dialogs/moduclav.h"

#include <utility>
#include <vector>

#include "data/etat.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "platform/ecran/boucle.h"

namespace moduclav {
namespace {

using namespace ecran;

constexpr int police_haut = 12, police_bas = 11;
constexpr int largeur_etroite = 900;  ///< working widths below this get the narrow layouts
constexpr int etiquette_action = 2;

Controle& bandeau(Forme& forme, const Plan& plan) {
    Controle* c = forme.cherche(plan.nom);
    return c != nullptr ? *c : forme.ajoute(plan);
}

/// What a text of this aspect is seen on; where it has no ground of its own, that is a card.
Couleur fond_vu(const Aspect& a) {
    if (a.fond != sans_couleur) return a.fond;
    return fond_de(a.role) != sans_couleur ? fond_de(a.role) : fond_de(Role::carte);
}

/// What lies upon a card, a list or a field that the manager has coloured takes its ink.
void accorde_aux_cartes(Forme& forme) {
    std::vector<const Controle*> cartes;
    for (const auto& c : forme.controles) {
        const bool est_une_carte = c->aspect.role == Role::carte || c->aspect.role == Role::champ;
        if (est_une_carte && c->aspect.fond != sans_couleur) cartes.push_back(c.get());
    }
    if (cartes.empty()) return;
    for (const auto& c : forme.controles) {
        if (c->genre != Genre::etiquette || c->etiquette != 0 || c->aspect.fond != sans_couleur) continue;
        for (const Controle* carte : cartes) {
            const Cadre &dehors = carte->cadre, &dedans = c->cadre;
            const bool dessus = dehors.contient(dedans.gauche, dedans.haut) && dedans.droite() <= dehors.droite() &&
                                dedans.bas() <= dehors.bas();
            if (dessus) c->aspect.encre = carte->aspect.encre;
        }
    }
}

/// The colours that the manager has set under a number, 1 to 9.
void met_couleurs_du_numero(Aspect& aspect, int numero) {
    if (numero < 1 || numero > 9) return;
    const auto n = static_cast<std::size_t>(numero);
    met_couleurs(aspect, depuis_bgr(etat::fonds_regles[n]), depuis_bgr(etat::encres_regles[n]));
}

}  // namespace

int largeur() {
    return etat::largeur_ecran * twips_par_pixel;
}
int hauteur() {
    return etat::hauteur_ecran * twips_par_pixel;
}
bool est_etroit() {
    return etat::largeur_ecran < largeur_etroite || etat::largeur_ecran < etat::hauteur_ecran;
}

void bandeaux(Forme& forme, std::string_view haut, std::string_view bas) {
    Controle& label_haut = bandeau(forme, {.nom = "label_haut",
                                           .role = Role::bandeau,
                                           .police = police_haut,
                                           .gras = true,
                                           .alignement = Alignement::gauche,
                                           .etiquette = 1});
    label_haut.cadre = {0, 0, largeur(), hauteur_bandeau};
    label_haut.texte() = haut;
    label_haut.aspect.fond = label_haut.aspect.encre = sans_couleur;
    Controle& label_bas =
        bandeau(forme, {.nom = "label_bas", .role = Role::bandeau, .police = police_bas, .etiquette = 1});
    label_bas.cadre = {0, hauteur() - hauteur_bandeau, largeur(), hauteur_bandeau};
    label_bas.texte() = bas;
    label_bas.aspect.fond = sans_couleur;
    label_bas.aspect.encre = palette::pale;
}

std::string separe_initial() {
    std::string& t = etat::texte_dialogue;
    const auto p = t.find('|');
    if (p == std::string::npos) return {};
    std::string initial = t.substr(p + 1);
    t.resize(p);
    return initial;
}

void met_couleurs(Aspect& aspect, Couleur fond, Couleur encre) {
    if (fond != sans_couleur) {
        aspect.fond = fond;
        aspect.encre = encre_lisible(fond);
    }
    if (encre != sans_couleur && contraste(encre, fond_vu(aspect)) >= contraste_min) aspect.encre = encre;
}

void colore(Forme& forme) {
    for (int n = 1; n <= 9; ++n) {
        const auto i = static_cast<std::size_t>(n);
        etat::fonds_regles[i] = reglages::couleur(reglages::fonds + n);
        etat::encres_regles[i] = reglages::couleur(reglages::encres + n);
    }
    for (auto i = forme.controles.rbegin(); i != forme.controles.rend(); ++i) {
        Controle& c = **i;
        if (c.etiquette == 0) continue;
        met_couleurs_du_numero(c.aspect, c.etiquette);
        for (Aspect& a : c.grille.cellules) met_couleurs_du_numero(a, etiquette_de(a.role, c.etiquette));
    }
    accorde_aux_cartes(forme);
}

int etiquette_de(Role role, int sinon) {
    switch (role) {
        case Role::aller:
            return 5;
        case Role::detruire:
            return 6;
        case Role::entete:
            return 7;
        case Role::titre_groupe:
        case Role::vide:
        case Role::ligne_touchee:
        case Role::ligne_choisie:
        case Role::puce:
        case Role::compte:
            return 0;
        default:
            return sinon;
    }
}

Plan touche_de_boite(Plan plan) {
    plan.genre = Genre::bouton;
    plan.gras = true;
    plan.place_image = PlaceImage::gauche;
    plan.etiquette = etiquette_de(plan.role, etiquette_action);
    return plan;
}

Plan champ_de_saisie(const Cadre& cadre, int police) {
    return {.nom = "Text1",
            .genre = Genre::champ,
            .cadre = cadre,
            .role = Role::champ,
            .police = police,
            .alignement = Alignement::gauche,
            .etiquette = 4};
}

void pose_texte(Controle& champ, std::string texte) {
    champ.curseur = static_cast<int>(texte.size());
    champ.texte() = std::move(texte);
}

void colore_chiffre(Aspect& aspect, int chiffre) {
    aspect.role = Role::touche;
    aspect.fond = aspect.encre = sans_couleur;
    if (chiffre < 1 || chiffre > 9) return;
    aspect.fond = palette::chiffres[chiffre];
    aspect.encre = encre_lisible(aspect.fond);
    met_couleurs_du_numero(aspect, chiffre);
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
