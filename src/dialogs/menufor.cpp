#include "dialogs/menufor.h"

#include <algorithm>
#include <string>
#include <vector>

#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/texte.h"

namespace menufor {
namespace {

using namespace ecran;
using formes::px;

constexpr int lignes_g1 = 8;
constexpr int police_page = 20, largeur_page = px(110);

class Composition {
  public:
    Composition() : services_(lignes::services(lignes::composition(etat::texte_travail).value_or(""))) {
        forme_.nom = "menufor";
        formes::encadre(forme_, "Menu composé"_t, formes::version);
        const Cadre carte = formes::construit_menu(forme_, lignes_g1);
        forme_("Label1").texte() = lignes::libelle(etat::texte_travail);
        const Cadre page = {carte.droite() - px(20) - largeur_page, carte.haut + px(2), largeur_page,
                            carte.hauteur - px(4)};
        forme_.ajoute({.nom = "Label3",
                       .cadre = page,
                       .police = police_page,
                       .alignement = Alignement::droite,
                       .encre = palette::gris,
                       .etiquette = 4});
        formes::ajoute_barre_de_choix(forme_, formes::touche_ferme);
        affiche_service();
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;
    std::vector<lignes::Service> services_;
    int courant_ = 0;

    int nb_services() const { return static_cast<int>(services_.size()); }

    void branche() {
        forme_.avant_image = [this] { formes::repose_aux_pages(forme_, courant_ == 0, courant_ + 1 >= nb_services()); };
        forme_("g1").a_la_cellule = [this](int ligne, int colonne) {
            const auto libelle = forme_("g1").grille.texte(ligne, colonne);
            if (libelle.empty()) return;
            complements::bascule(libelle);
            marque();
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            if (colonne == formes::case_precedent) va_service(courant_ - 1);
            if (colonne == formes::case_suivant) va_service(courant_ + 1);
            if (colonne == formes::case_fin) forme_.ferme();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void va_service(int n) {
        courant_ = std::clamp(n, 0, std::max(0, nb_services() - 1));
        affiche_service();
    }

    void affiche_service() {
        const lignes::Service aucun;
        const auto& service = services_.empty() ? aucun : services_[static_cast<std::size_t>(courant_)];
        forme_("Label2").texte() = service.nom;
        forme_("Label3").texte() =
            services_.empty() ? "" : std::to_string(courant_ + 1) + " / " + std::to_string(nb_services());
        Grille& g = forme_("g1").grille;
        for (std::size_t i = 0; i < lignes::choix_par_service; ++i) {
            const int place = static_cast<int>(i);
            formes::remplit_choix(g.cellule(place % lignes_g1, place / lignes_g1),
                                  i < service.choix.size() ? service.choix[i] : "");
        }
        marque();
        formes::colore(forme_);
    }

    void marque() { formes::marque_choix(forme_("g1").grille, complements::est_pris); }
};

}  // namespace

void montre_menufor() {
    Composition().montre();
}

}  // namespace menufor
