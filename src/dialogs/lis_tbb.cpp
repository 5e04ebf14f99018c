#include "dialogs/lis_tbb.h"

#include <algorithm>
#include <string>
#include <vector>

#include "data/catalogue.h"
#include "data/etat.h"
#include "data/reglages.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/texte.h"

namespace lis_tbb {
namespace {

using namespace ecran;
using formes::px;

constexpr int police_rien = 16;
constexpr int touche_min = px(34);  ///< a smaller one could neither be read nor hit

/// How many keys find room side by side.
int combien(int place) {
    return std::max(1, (place + rythme) / (touche_min + rythme));
}

const formes::ToucheDeBarre barre[6] = {formes::touche_bas, formes::touche_haut, {}, {}, {}, formes::touche_ferme};

class Liste {
  public:
    Liste() {
        forme_.nom = "lis_tbb";
        formes::encadre(forme_, "Liste des Tables", formes::version);
        const Plan plans[] = {
            {.nom = "g1",
             .genre = Genre::grille,
             .cadre = formes::contenu(),
             .police = reglages::nombre(reglages::police_liste_tables),
             .gras = true,
             .etiquette = 3},
            {.nom = "Label_rien",
             .cadre = formes::contenu(),
             .texte = "Aucune table dans le catalogue : fermez, et tapez le numéro"_t,
             .police = police_rien,
             .encre = palette::gris,
             .laisse_passer = true},
        };
        forme_.construit(plans);
        remplit();
        formes::ajoute_barre(forme_, barre);
        formes::repose_aux_bouts(forme_);
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    void remplit() {
        const std::vector<std::string> tables = catalogue::tables();
        Controle& g1 = forme_("g1");
        const int colonnes =
            std::clamp(reglages::nombre(reglages::colonnes_liste_tables), 1, combien(g1.cadre.largeur));
        const int visibles = std::clamp(reglages::nombre(reglages::lignes_liste_tables), 1, combien(g1.cadre.hauteur));
        forme_("Label_rien").visible = tables.empty();
        const int lignes = (static_cast<int>(tables.size()) + colonnes - 1) / colonnes;
        const std::vector<std::string_view> faces(tables.begin(), tables.end());
        formes::remplit_touches(g1, lignes, colonnes, faces, g1.aspect.police);
        g1.grille.hauteur_ligne = std::max(1, (g1.cadre.hauteur + rythme) / visibles - rythme);
        g1.grille.defile = true;
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int l, int c) {
            const std::string table(forme_("g1").grille.texte(l, c));
            if (!table.empty()) rend(table);
        };
        forme_("g2").a_la_cellule = [this](int, int c) {
            formes::defile_par_page(forme_, c);
            if (c == formes::case_ferme) rend("");
        };
        forme_.a_l_echappement = [this] { rend(""); };
    }

    void rend(const std::string& table) {
        etat::texte_dialogue = table;
        forme_.ferme();
    }
};

}  // namespace

void montre_lis_tbb() {
    Liste().montre();
}

}  // namespace lis_tbb
