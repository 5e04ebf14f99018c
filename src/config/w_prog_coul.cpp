#include "config/w_prog_coul.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/texte.h"

namespace w_prog_coul {
namespace {

using namespace ecran;

using palette::Teinte;
/// The plain key, then the colours that have a name; the names are also what the keys say.
constexpr auto teintes_offertes = [] {
    std::array<Teinte, std::size(palette::teintes) + 1> r{Teinte{"Aucune", sans_couleur}};
    std::copy(std::begin(palette::teintes), std::end(palette::teintes), r.begin() + 1);
    return r;
}();
constexpr int colonnes_large = 7, colonnes_etroit = 4, police_large = 17, police_etroite = 12;

enum CaseBarre { ferme = 5 };
const formes::ToucheDeBarre barre[6] = {{}, {}, {}, {}, {}, formes::touche_ferme};

class Palette {
  public:
    Palette() {
        forme_.nom = "w_prog_coul";
        formes::encadre(forme_, "Couleur de la touche", formes::version);
        construit();
        branche();
        formes::colore(forme_);
    }

    std::optional<std::string> montre() {
        montre_modal(forme_);
        return choisie_;
    }

  private:
    Forme forme_;
    std::optional<std::string> choisie_;

    void construit() {
        std::array<std::string_view, teintes_offertes.size()> noms;
        for (std::size_t i = 0; i < noms.size(); ++i) noms[i] = teintes_offertes[i].nom;
        const bool etroit = formes::est_etroit();
        const int colonnes = etroit ? colonnes_etroit : colonnes_large;
        Controle& g1 = forme_.ajoute({.nom = "g1", .genre = Genre::grille, .cadre = formes::contenu(), .gras = true});
        formes::remplit_touches(g1, static_cast<int>(noms.size()) / colonnes, colonnes, noms,
                                etroit ? police_etroite : police_large);
        for (std::size_t i = 0; i < noms.size(); ++i) g1.grille.cellules[i].fond = teintes_offertes[i].couleur;
        formes::ajoute_barre(forme_, barre);
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int l, int c) {
            choisie_ = valeur_de(teintes_offertes[forme_("g1").grille.rang(l, c)].couleur);
            forme_.ferme();
        };
        forme_("g2").a_la_cellule = [this](int, int c) {
            if (c == ferme) forme_.ferme();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }
};

}  // namespace

std::string valeur_de(Couleur couleur) {
    return couleur == sans_couleur ? "" : std::to_string(vers_bgr(couleur));
}

std::optional<std::string> demande() {
    return Palette().montre();
}

}  // namespace w_prog_coul
