#include "dialogs/sai_menu.h"

#include <array>
#include <string_view>

#include "data/complements.h"
#include "data/etat.h"
#include "dialogs/formes.h"
#include "dialogs/moduclav.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace sai_menu {
namespace {

using namespace ecran;

constexpr std::string_view debut_composition = "{{", apres_nom = "µ"_t, apres_code = "|", apres_libelle = "¦"_t;
constexpr std::size_t services = 6, choix_par_service = 16;
constexpr std::size_t dernier_montre = 4;  ///< the sixth course is never shown
constexpr int lignes_g1 = 9, decalage_colonne = 8;

struct Choix {
    std::string code, libelle;
};
struct Service {
    std::string nom;
    std::array<Choix, choix_par_service + 1> choix;  ///< one more than is ever filled: the last cell shows it
};

/// Takes the text before a separator and the separator; without one the text stays as it is and nothing is taken.
std::string prend(std::string_view& texte, std::string_view separateur) {
    const auto p = texte.find(separateur);
    if (p == std::string_view::npos) return {};
    const std::string pris(texte.substr(0, p));
    texte.remove_prefix(p + separateur.size());
    return pris;
}

std::array<Service, services> decode_men(std::string_view texte) {
    std::array<Service, services> r;
    const auto debut = texte.find(debut_composition);
    texte.remove_prefix(debut == std::string_view::npos ? texte.size() : debut + debut_composition.size());
    for (Service& s : r) {
        s.nom = prend(texte, apres_nom);
        for (std::size_t i = 0; i < choix_par_service; ++i) {
            s.choix[i].code = prend(texte, apres_code);
            s.choix[i].libelle = prend(texte, apres_libelle);
        }
    }
    return r;
}

/// The article's field behind the reference, with its name.
std::string description(std::string_view texte) {
    prend(texte, apres_code);
    return prend(texte, apres_code);
}

class Saisie {
  public:
    Saisie() : services_(decode_men(etat::texte_travail)) {
        forme_.nom = "sai_menu";
        formes::encadre(forme_, "Menu composé"_t, formes::version);
        formes::construit_menu(forme_, lignes_g1);
        forme_("Label1").texte() = description(etat::texte_travail);
        affiche_tableau();
        formes::ajoute_barre_de_choix(forme_, formes::touche_valide);
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;
    std::array<Service, services> services_;
    std::size_t courant_ = 0;

    void branche() {
        forme_.avant_image = [this] { formes::repose_aux_pages(forme_, courant_ == 0, courant_ == dernier_montre); };
        forme_("g1").a_la_cellule = [this](int ligne, int colonne) {
            complements::bascule(forme_("g1").grille.texte(ligne, colonne));
            marque();
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            if (colonne == formes::case_precedent && courant_ > 0) va_service(courant_ - 1);
            if (colonne == formes::case_suivant && courant_ < dernier_montre) va_service(courant_ + 1);
            if (colonne == formes::case_fin) moduclav::quitte();
        };
    }

    void va_service(std::size_t n) {
        courant_ = n;
        affiche_tableau();
    }

    /// The second column begins one place before the first one ends: that choice shows twice.
    void affiche_tableau() {
        const Service& service = services_[courant_];
        forme_("Label2").texte() = service.nom;
        Grille& g = forme_("g1").grille;
        for (int l = 0; l < lignes_g1; ++l) {
            for (int c = 0; c < g.colonnes; ++c) {
                formes::remplit_choix(g.cellule(l, c),
                                      service.choix[static_cast<std::size_t>(l + c * decalage_colonne)].libelle);
            }
        }
        marque();
    }

    /// A place without a dish counts as taken: its empty text is found among the rows, which are never too few.
    void marque() {
        Grille& g = forme_("g1").grille;
        formes::marque_choix(g, complements::est_marque);
        for (Aspect& a : g.cellules) {
            if (a.texte.empty()) a.image = image_valider;
        }
    }
};

/// The courses of the example, a dish a line.
constexpr std::string_view plats_exemple[services - 2][choix_par_service] = {
    {"8880000000284|Salade de tomates", "8880000001021|Oeuf Mimosa", "8880000001038|Assiette Charcuterie",
     "8880000001045|Salade de Saison", "8880000001052|Soupe à l'oignon"_t, "8880000001069|Terrine maison",
     "8880000001076|Poireaux vinaigrette", "8880000001083|Carottes râpées"_t, "8880000001090|Buffet d'entrées"_t,
     "8880000001106|Velouté de potiron"_t, "8880000001113|Rillettes de saumon", "8880000001137|Foie gras",
     "8880000001144|Escargots", "8880000001151|Os à moelle"_t, "8880000001168|Chèvre chaud"_t, "8880000001120|Harengs"},
    {"8880000000307|Entrecote", "8880000002110|Steak Poivre", "8880000002158|Lasagnes", "8880000003018|Raie aux Capres",
     "8880000002080|Poulet rôti"_t, "8880000002103|Andouillette", "8880000002028|Bavette", "8880000003063|Moules",
     "8880000000123|Plat du jour", "8880000002042|Magret de canard", "8880000002073|Souris d'agneau",
     "8880000003025|Dos de cabillaud", "8880000003032|Pavé de saumon"_t, "8880000002127|Tartare",
     "8880000002134|Blanquette de veau", "8880000002141|Confit de canard"},
    {"8880000006095|Fromage", "8880000006125|Buffet Dessert", "8880000006026|Mousse au chocolat",
     "8880000006040|Île flottante"_t, "8880000006019|Crème brûlée"_t, "8880000006132|Glace 2 boules",
     "8880000006033|Tarte Tatin", "8880000006057|Profiteroles", "8880000006064|Fondant au chocolat",
     "8880000006101|Café gourmand"_t, "8880000006088|Salade de fruits", "|", "|", "|", "|", "|"},
    {"8880000035019|Verre de rouge", "8880000035026|Verre de blanc", "8880000035033|Verre de rosé"_t,
     "8880000009010|Demi", "|", "|", "|", "|", "8880000014014|Eau plate 50 cl", "8880000014038|Eau gazeuse 50 cl",
     "8880000011013|Expresso", "|", "|", "|", "|", "|"},
};

}  // namespace

std::string menu_exemple() {
    std::string r = "8880000000574  |DES:Menu 15 Euros|PVE:15.00|FA1:10|FA2:98|{{";
    r += "Entrée"_t;
    for (std::size_t s = 0; s < services; ++s) {
        r += apres_nom;
        for (std::size_t i = 0; i < choix_par_service; ++i) {
            r += s < std::size(plats_exemple) ? plats_exemple[s][i] : apres_code;
            r += apres_libelle;
        }
    }
    return r + "}}  sai_menu.Show 1";
}

void montre_sai_menu() {
    Saisie().montre();
}

}  // namespace sai_menu
