#include "dialogs/sai_detail.h"

#include <algorithm>
#include <vector>

#include "data/complements.h"
#include "data/etat.h"
#include "data/reglages.h"
#include "data/styles.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/texte.h"

namespace sai_detail {
namespace {

using namespace ecran;
using formes::px;

constexpr int categories_montrees = 2;
constexpr int police_vide = 16;
constexpr int flots = 2;  ///< columns in which the keys of a category flow

/// A stored colour; what a damaged file holds beyond it is cut off.
Couleur couleur(std::int32_t stockee) {
    return depuis_bgr(stockee & 0xFFFFFF);
}

class Details {
  public:
    Details() {
        static_cast<void>(styles::init_styles());  // a file that cannot be made shows empty keys
        styles_ = styles::lis();
        forme_.nom = "sai_detail";
        formes::encadre(forme_, "Saisie d'un détail"_t, formes::version);
        for (int k = 0; k < categories_montrees; ++k) construit_categorie(k);
        affiche_tableau();
        formes::ajoute_barre_de_choix(forme_, formes::touche_ferme);
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;
    std::vector<styles::Style> styles_;

    void construit_categorie(int k) {
        const Cadre zone = formes::contenu();
        const int largeur = (zone.largeur - rythme) / categories_montrees;
        const int marge = px(formes::est_etroit() ? 6 : 10);
        const Cadre carte = {zone.gauche + k * (largeur + rythme), zone.haut, largeur, zone.hauteur};
        const Cadre touches = {carte.gauche + marge, carte.haut + marge, carte.largeur - 2 * marge,
                               carte.hauteur - 2 * marge};
        const Plan plans[] = {
            {.nom = "Shape1", .index = k, .genre = Genre::forme, .cadre = carte, .role = Role::carte},
            {.nom = "g1",
             .index = k,
             .genre = Genre::grille,
             .cadre = touches,
             .police = reglages::nombre(reglages::police_complements)},
            {.nom = "Label_vide",
             .index = k,
             .cadre = touches,
             .texte = "Aucun détail"_t,
             .police = police_vide,
             .encre = palette::gris,
             .laisse_passer = true},
        };
        forme_.construit(plans);
        Grille& g = forme_("g1", k).grille;
        g.dimensionne(styles::choix_par_categorie, 1);
        g.espace = formes::est_etroit() ? marge : rythme;
        g.flots = flots;
    }

    void branche() {
        forme_.avant_image = [this] {
            formes::repose_aux_pages(forme_, etat::debut_detail <= 0,
                                     etat::debut_detail >= styles::categories - categories_montrees);
        };
        for (int k = 0; k < categories_montrees; ++k) {
            forme_("g1", k).a_la_cellule = [this, k](int ligne, int) {
                complements::bascule(forme_("g1", k).grille.texte(ligne, 0));
                recherche_detail();
            };
        }
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            if (colonne == formes::case_precedent) change_page(-categories_montrees);
            if (colonne == formes::case_suivant) change_page(categories_montrees);
            if (colonne == formes::case_fin) forme_.ferme();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void change_page(int pas) {
        etat::debut_detail = static_cast<std::int16_t>(
            std::clamp(etat::debut_detail + pas, 0, styles::categories - categories_montrees));
        affiche_tableau();
    }

    void affiche_tableau() {
        for (int k = 0; k < categories_montrees; ++k) {
            const int base = styles::premier_code(etat::debut_detail + k);
            Grille& g = forme_("g1", k).grille;
            for (int r = 0; r < styles::choix_par_categorie; ++r) remplit(g.cellule(r, 0), base + r);
            const auto sans_choix = [](const Aspect& a) { return a.texte.empty(); };
            const bool vide = std::all_of(g.cellules.begin(), g.cellules.end(), sans_choix);
            if (vide) g.cellules.assign(g.cellules.size(), {});  // no wall of empty keys
            forme_("Label_vide", k).visible = vide;
        }
        recherche_detail();
    }

    void remplit(Aspect& touche, int code) {
        const styles::Style& s = styles_[static_cast<std::size_t>(code)];
        formes::remplit_choix(touche, s.libelle);
        const bool separe = touche.texte.empty() && s.fond != styles::Style{}.fond;  // a place of a colour of its own
        if (touche.texte.empty() && !separe) return;
        if (formes::est_etroit()) touche.alignement = Alignement::centre;  // the mark stands in the corner then
        touche.fond = couleur(s.fond);
        const Couleur encre = couleur(s.texte);
        touche.encre = contraste(touche.fond, encre) >= contraste_lisible ? encre : encre_lisible(touche.fond);
    }

    /// Marks the keys whose detail has been taken.
    void recherche_detail() {
        for (int k = 0; k < categories_montrees; ++k)
            formes::marque_choix(forme_("g1", k).grille, complements::est_marque);
    }
};

}  // namespace

void montre_sai_detail() {
    Details().montre();
}

}  // namespace sai_detail
