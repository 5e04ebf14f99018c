#include "config/w_prog_coul.h"

#include <array>

#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/texte.h"

namespace w_prog_coul {
namespace {

using namespace ecran;

struct Teinte {
    std::string_view nom;
    Couleur couleur;
};
/// The keypad's colours first, then lighter and darker ones; the names are also what the keys say.
constexpr std::array<Teinte, 28> teintes_offertes = {{
    {"Aucune", sans_couleur},
    {"Rouge", palette::chiffres[1]},
    {"Orange", palette::chiffres[2]},
    {"Jaune", palette::chiffres[3]},
    {"Vert", palette::chiffres[4]},
    {"Canard", palette::chiffres[5]},
    {"Bleu", palette::chiffres[6]},
    {"Violet", palette::chiffres[7]},
    {"Rose", palette::chiffres[8]},
    {"Taupe", palette::chiffres[9]},
    {"Brique", palette::rouge},
    {"Ambre", palette::ambre},
    {"Sapin", palette::vert},
    {"Marine", palette::bleu},
    {"Blanc", palette::blanc},
    {"Rouge pâle"_t, 0xF3C9C6},
    {"Pêche"_t, 0xF8D9BE},
    {"Crème"_t, 0xFBEFC4},
    {"Vert pâle"_t, 0xCFE5D3},
    {"Eau"_t, 0xC6E2E0},
    {"Ciel"_t, 0xCBDDF0},
    {"Lilas", 0xDCD2EA},
    {"Dragée"_t, 0xF0D3DF},
    {"Lin", palette::doux},
    {"Gris", palette::gris},
    {"Encre", palette::encre},
    {"Chocolat", 0x5A3A29},
    {"Noir", palette::noir},
}};
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
