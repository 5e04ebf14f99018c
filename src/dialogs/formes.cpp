#include "dialogs/formes.h"

#include <algorithm>

#include "data/reglages.h"
#include "dialogs/mini_97.h"

namespace formes {
namespace {

using namespace ecran;

constexpr int marge = px(10);
constexpr int haut_contenu = px(36), bas_contenu = px(142);  ///< from the form's top and bottom edge
constexpr int haut_barre = px(132), hauteur_barre = px(98);  ///< the bar's top, from the bottom edge
constexpr int espace_barre = px(8);
constexpr int police_barre = 14, police_barre_etroite = 11;
constexpr int etiquette_barre = 2;
constexpr std::string_view minuterie_geste = "Timer_geste";
constexpr int duree_geste_ms = 1500, police_geste = 12;

constexpr int touche_min = px(54);  ///< what a finger does not miss
constexpr int espace_serre = px(5);
constexpr int sous_la_marque = px(24);  ///< where the label of a narrow key begins, its mark being in the corner
constexpr int carte_min = px(50), carte_max = px(80), marge_carte = px(20), bord_carte = px(2);
constexpr int police_titre = 27, police_titre_etroite = 18;

/// The places of a screen of courses.
struct PlacesDuMenu {
    Cadre carte, article, service, touches;
    int espace;  ///< between two keys: tight where the rows would else be too low, or the card
};

PlacesDuMenu places_du_menu(int lignes) {
    const Cadre zone = contenu();
    PlacesDuMenu p;
    p.espace = zone.hauteur >= lignes * (touche_min + rythme) + carte_min ? rythme : espace_serre;
    p.carte = zone;
    p.carte.hauteur = std::clamp(zone.hauteur - lignes * (touche_min + p.espace), carte_min, carte_max);
    const int haut = p.carte.bas() + p.espace;
    p.touches = {zone.gauche, haut, zone.largeur, zone.bas() - haut};
    const int gauche = p.carte.gauche + marge_carte, l = p.carte.largeur;
    const int dessus = p.carte.haut + bord_carte, dedans = p.carte.hauteur - 2 * bord_carte;
    if (est_etroit()) {
        p.article = {gauche, dessus, l * 7 / 10, dedans / 2};
        p.service = {gauche, p.article.bas(), l * 7 / 10, dedans / 2};
    } else {
        p.article = {gauche, dessus, l * 3 / 8, dedans};
        p.service = {p.carte.gauche + l * 2 / 5 - px(4), dessus, l * 2 / 5, dedans};
    }
    return p;
}

Aspect aspect_de(const ToucheDeBarre& touche) {
    const int police = est_etroit() ? police_barre_etroite : police_barre;
    return {.texte = std::string(touche.texte),
            .image = touche.image,
            .role = touche.role,
            .police = touche.police != 0 ? touche.police : police,
            .gras = true};
}

}  // namespace

void place(Forme& forme) {
    forme.cadre = {0, 0, largeur(), hauteur()};
}

void encadre(Forme& forme, std::string_view haut, std::string_view bas) {
    place(forme);
    moduclav::bandeaux(forme, haut, bas);
    forme("label_bas").au_toucher = demande_reinitialisation;
}

void ajoute_geste(Forme& forme, const Cadre& cadre) {
    forme.ajoute({.nom = "label_geste",
                  .cadre = cadre,
                  .police = police_geste,
                  .gras = true,
                  .alignement = Alignement::droite,
                  .encre = palette::jaune,
                  .laisse_passer = true});
    forme.ajoute_minuterie(minuterie_geste);
}

void annonce_geste(Forme& forme, std::string_view texte) {
    const Couleur fond = forme("label_haut").aspect.fond;
    Controle& geste = forme("label_geste");
    geste.texte() = texte;
    geste.aspect.encre = fond != sans_couleur ? encre_lisible(fond) : palette::jaune;
    for (const auto& m : forme.minuteries)
        if (m->nom == minuterie_geste) m->sonne_une_fois(duree_geste_ms, [&geste] { geste.texte().clear(); });
}

Cadre contenu() {
    return {marge, haut_contenu, std::max(px(60), largeur() - 2 * marge),
            std::max(px(60), hauteur() - haut_contenu - bas_contenu)};
}

Cadre cadre_barre() {
    return {marge, hauteur() - haut_barre, std::max(px(60), largeur() - 2 * marge), hauteur_barre};
}

void remplit_barre(Controle& barre, std::span<const ToucheDeBarre> touches) {
    Grille& g = barre.grille;
    g.dimensionne(1, static_cast<int>(touches.size()));
    g.espace = espace_barre;
    std::transform(touches.begin(), touches.end(), g.cellules.begin(), aspect_de);
}

Controle& ajoute_barre(Forme& forme, std::span<const ToucheDeBarre> touches) {
    const Cadre cadre = cadre_barre();
    Controle& barre = forme.ajoute({.nom = "g2", .genre = Genre::grille, .cadre = cadre, .etiquette = etiquette_barre});
    remplit_barre(barre, touches);
    return barre;
}

void defile_par_page(Forme& forme, int touche) {
    Controle& g1 = forme("g1");
    const int page = g1.grille.lignes_visibles(g1.cadre);
    if (touche == case_bas) g1.grille.defile_de(page, g1.cadre);
    if (touche == case_haut) g1.grille.defile_de(-page, g1.cadre);
}

void repose(Controle& barre, int touche, bool repos) {
    Aspect& a = barre.grille.cellule(0, touche);
    if (a.role == Role::action || a.role == Role::repos) a.role = repos ? Role::repos : Role::action;
}

void repose_aux_bouts(Forme& forme, int touche_bas, int touche_haut) {
    forme.avant_image = [&forme, touche_bas, touche_haut] {
        const Controle& g1 = forme("g1");
        repose(forme("g2"), touche_bas, !g1.grille.peut_defiler(+1, g1.cadre));
        repose(forme("g2"), touche_haut, !g1.grille.peut_defiler(-1, g1.cadre));
    };
}

void ajoute_touche(Forme& forme, std::string_view nom, const ToucheDeBarre& touche, const Cadre& cadre) {
    Controle& c = forme.ajoute({.nom = nom, .genre = Genre::bouton, .cadre = cadre});
    c.aspect = aspect_de(touche);
    c.etiquette = moduclav::etiquette_de(touche.role, etiquette_barre);
}

void ajoute_carte(Forme& forme, const Carte& carte, const PlanCarte& plan) {
    const Plan plans[] = {
        {.nom = carte.carte, .genre = Genre::forme, .cadre = plan.carte, .role = Role::carte, .etiquette = 4},
        {.nom = carte.titre,
         .cadre = plan.titre,
         .texte = carte.legende,
         .police = plan.police_titre,
         .alignement = plan.alignement_titre,
         .encre = palette::gris,
         .laisse_passer = true},
        {.nom = carte.valeur,
         .cadre = plan.valeur,
         .police = plan.police_valeur,
         .gras = true,
         .alignement = plan.alignement_valeur},
    };
    forme.construit(plans);
}

Plan liste(std::string_view nom, const Cadre& cadre, int police) {
    return {.nom = nom, .genre = Genre::grille, .cadre = cadre, .role = Role::carte, .police = police, .etiquette = 9};
}

void remplit_touches(Controle& grille, int lignes, int colonnes, std::span<const std::string_view> faces, int police) {
    Grille& g = grille.grille;
    g.dimensionne(lignes, colonnes);
    g.espace = rythme;
    for (std::size_t i = 0; i < g.cellules.size() && i < faces.size(); ++i) {
        g.cellules[i] = {.texte = std::string(faces[i]), .role = Role::touche, .police = police, .gras = true};
    }
}

void ajoute_barre_de_choix(Forme& forme, const ToucheDeBarre& fin) {
    const ToucheDeBarre barre[6] = {touche_precedent, touche_suivant, {}, {}, {}, fin};
    ajoute_barre(forme, barre);
}

void repose_aux_pages(Forme& forme, bool premiere, bool derniere) {
    repose(forme("g2"), case_precedent, premiere);
    repose(forme("g2"), case_suivant, derniere);
}

void remplit_choix(Aspect& touche, std::string_view libelle) {
    const std::string texte(texte::rogne(libelle));
    touche = {.texte = texte,
              .role = texte.empty() ? Role::vide : Role::touche,
              .gras = true,
              .accord = true,
              .alignement = Alignement::gauche};
}

void marque_choix(Grille& grille, bool (*est_pris)(std::string_view)) {
    for (Aspect& a : grille.cellules) {
        if (a.texte.empty()) continue;
        const bool pris = est_pris(a.texte);
        a.role = pris ? Role::choisie : Role::touche;
        a.marge_haut = pris && a.alignement == Alignement::centre ? sous_la_marque : 0;
    }
}

Cadre construit_menu(Forme& forme, int lignes) {
    const PlacesDuMenu p = places_du_menu(lignes);
    const int police = est_etroit() ? police_titre_etroite : police_titre;
    const Plan plans[] = {
        {.nom = "Shape1", .genre = Genre::forme, .cadre = p.carte, .role = Role::carte, .etiquette = 4},
        {.nom = "Label1",
         .cadre = p.article,
         .police = police,
         .gras = true,
         .alignement = Alignement::gauche,
         .etiquette = 4},
        {.nom = "Label2",
         .cadre = p.service,
         .police = police,
         .gras = true,
         .alignement = Alignement::gauche,
         .encre = palette::bleu,
         .etiquette = 4},
        {.nom = "g1",
         .genre = Genre::grille,
         .cadre = p.touches,
         .police = reglages::nombre(reglages::police_complements),
         .etiquette = 9},
    };
    forme.construit(plans);
    forme("g1").grille.dimensionne(lignes, 2);
    forme("g1").grille.espace = p.espace;
    return p.carte;
}

void demande_reinitialisation() {
    if (mini_97::demande("Confirmez la réinitialisation du logiciel, les données saisies seront perdues ?"_t)) {
        moduclav::quitte();
    }
}

}  // namespace formes
