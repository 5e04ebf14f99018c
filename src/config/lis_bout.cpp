#include "config/lis_bout.h"

#include <algorithm>
#include <string>

#include "data/etat.h"
#include "data/nombres.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace lis_bout {
namespace {

using namespace ecran;
using formes::px;

constexpr int nb_lignes = decalage_grand;  ///< the pictures of the set, 0 (none) first
constexpr int hauteur_ligne = px(70), reserve_ascenseur = 280;
constexpr int hauteur_marque = px(200), largeur_case = px(100);
constexpr int police_touches = 14;
constexpr std::size_t chiffres = 3;

class Liste {
  public:
    Liste() {
        forme_.nom = "lis_bout";
        formes::encadre(forme_, "Liste des images", formes::version);
        construit();
        ouvre_valeur();
        branche();
        affiche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    std::string& nombre() { return forme_("Label2").texte(); }
    bool marquee() { return forme_("Check1").coche; }

    /// The list at the left; beside it what is chosen, the mark, and the two keys.
    void construit() {
        const bool etroit = formes::est_etroit() && formes::largeur() < formes::hauteur();
        const Cadre barre = formes::cadre_barre();
        const int haut = formes::contenu().haut;
        const int largeur = etroit ? barre.largeur * 2 / 5 : (barre.largeur - rythme) / 2;
        const Cadre liste = {barre.gauche, haut, largeur, barre.bas() - haut};
        const int gauche = liste.droite() + rythme, reste = barre.droite() - gauche;
        const Cadre marque = {gauche, barre.haut - rythme - hauteur_marque, reste, hauteur_marque};
        construit_liste(liste);
        construit_choix({gauche, haut, reste, marque.haut - rythme - haut});
        construit_marque(marque);
        construit_touches({gauche, barre.haut, reste, barre.hauteur});
    }

    void construit_touches(const Cadre& c) {
        const int largeur = (c.largeur - rythme) / 2;
        const Cadre gauche = {c.gauche, c.haut, largeur, c.hauteur};
        const Cadre droite = {gauche.droite() + rythme, c.haut, largeur, c.hauteur};
        formes::ajoute_touche(forme_, "bt_no", {"Aucune", image_aucune, Role::detruire, police_touches}, gauche);
        formes::ajoute_touche(forme_, "bt_valide", {"Valider", image_valider, Role::aller, police_touches}, droite);
    }

    void construit_liste(const Cadre& cadre) {
        Grille& g = forme_.ajoute(formes::liste("g3", cadre, 19)).grille;
        g.dimensionne(nb_lignes, 2);
        g.largeurs = {0, cadre.largeur - reserve_ascenseur};
        g.hauteur_ligne = hauteur_ligne;
        g.defile = true;
        for (int i = 0; i < nb_lignes; ++i) {
            g.cellule(i, 1) = {.texte = nombres::entier_complete(i, chiffres),
                               .image = i,
                               .alignement = Alignement::gauche,
                               .place_image = PlaceImage::milieu,
                               .marge_gauche = px(12)};
        }
    }

    void construit_choix(const Cadre& c) {
        const int haut_dessin = c.haut + px(56), hauteur_numero = std::min(px(110), c.hauteur / 4);
        const Cadre titre = {c.gauche, c.haut, c.largeur, haut_dessin - c.haut};
        const Cadre numero = {c.gauche, c.bas() - px(10) - hauteur_numero, c.largeur, hauteur_numero};
        const Cadre dessin = {c.gauche, haut_dessin, c.largeur, numero.haut - haut_dessin};
        const Plan plans[] = {
            {.nom = "Shape1", .genre = Genre::forme, .cadre = c, .role = Role::carte, .etiquette = 4},
            {.nom = "Label1", .cadre = titre, .texte = "Image choisie", .police = 16, .encre = palette::gris},
            {.nom = "Image1", .genre = Genre::image, .cadre = dessin},
            {.nom = "Label2", .cadre = numero, .police = 58, .gras = true},
        };
        forme_.construit(plans);
    }

    /// The picture of the mark's state; beside it what it means. A touch anywhere in it counts.
    void construit_marque(const Cadre& c) {
        const int bord = c.largeur / 8, gauche = c.gauche + bord + largeur_case + px(24);
        const int largeur = c.droite() - px(12) - gauche;
        const Cadre coche = {c.gauche + bord, c.haut + (c.hauteur - largeur_case) / 2, largeur_case, largeur_case};
        const Cadre lettre = {gauche, c.haut + px(24), largeur, px(88)};
        const Cadre sens = {gauche, lettre.bas(), largeur, px(60)};
        const Plan plans[] = {
            {.nom = "oui", .genre = Genre::image, .cadre = c, .role = Role::touche},
            {.nom = "Check1", .genre = Genre::case_, .cadre = coche, .laisse_passer = true},
            {.nom = "Label3",
             .cadre = lettre,
             .texte = "N",
             .police = 56,
             .gras = true,
             .alignement = Alignement::gauche,
             .laisse_passer = true},
            {.nom = "Label4",
             .cadre = sens,
             .texte = "Marque posée sur la touche"_t,
             .police = 17,
             .alignement = Alignement::gauche,
             .encre = palette::gris,
             .laisse_passer = true},
        };
        forme_.construit(plans);
    }

    void ouvre_valeur() {
        std::string v = etat::texte_travail;
        if (texte::rogne(v) == "N") v = "   N";  // a mark without a picture, from a cell that holds no blanks in front
        nombre() = texte::rogne(v.substr(0, chiffres));
        forme_("Check1").coche = texte::colonnes(v, chiffres + 1, 1) == "N";
        Controle& g3 = forme_("g3");
        if (!nombre().empty()) {
            const int visibles = g3.grille.lignes_visibles(g3.cadre);
            g3.grille.defile_de(std::clamp(nombres::entier_int(nombre()), 0, nb_lignes) - visibles / 2, g3.cadre);
        }
    }

    void branche() {
        forme_("g3").a_la_cellule = [this](int ligne, int) {
            nombre() = nombres::entier_complete(ligne, chiffres);
            affiche();
        };
        forme_("oui").au_toucher = [this] {
            forme_("Check1").coche = !marquee();
            affiche_oui();
        };
        forme_("bt_valide").au_toucher =
            forme_.a_l_entree = [this] { rend(texte::complete(nombre(), chiffres) + (marquee() ? "N" : " ")); };
        forme_("bt_no").au_toucher = [this] { rend("    "); };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void rend(std::string valeur) {
        etat::texte_travail = std::move(valeur);
        forme_.ferme();
    }

    /// Shows what is chosen, in the list and beside it.
    void affiche() {
        const int choisie = nombre().empty() ? -1 : nombres::entier_int(nombre());
        Grille& g = forme_("g3").grille;
        for (int i = 0; i < nb_lignes; ++i) {
            Aspect& a = g.cellule(i, 1);
            a.role = i == choisie ? Role::ligne_choisie : Role::ligne;
            a.gras = i == choisie;
            a.trait = i != choisie;
            a.fond = a.encre = sans_couleur;
        }
        forme_("Image1").aspect.image = std::max(0, choisie);
        affiche_oui();
        formes::colore(forme_);
    }

    void affiche_oui() { forme_("Label3").aspect.encre = marquee() ? palette::encre : palette::gris; }
};

}  // namespace

void montre_lis_bout() {
    Liste().montre();
}

}  // namespace lis_bout
