#include "config/w_prog_acte.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "data/catalogue.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace w_prog_acte {
namespace {

using namespace ecran;
using formes::px;
namespace marque = programme_touches::marque;

constexpr int colonnes_large = 4, colonnes_etroit = 2, hauteur_touche = px(76);
constexpr int police_large = 17, police_etroite = 13;

/// One key of a list; with a family it leads to the family's articles and is no action yet.
struct Entree {
    Acte acte = {};
    int famille = -1;
    int chiffre = 0;  ///< colour digit
};
using Liste = std::vector<Entree>;

Entree entree_famille(int n, std::string_view nom, int chiffre) {
    return {
        .acte = {.code = std::string(marque::famille) + nombres::entier_complete(n, 2), .libelle = std::string(nom)},
        .chiffre = chiffre};
}

/// The named families, and the sub-groups below the articles of each.
Liste familles() {
    Liste r;
    const auto& noms = catalogue::courant().noms_familles;
    for (int n = 0; n <= catalogue::familles_nommees_max; ++n) {
        const std::string_view nom = texte::rogne(catalogue::sans_couleur(noms[static_cast<std::size_t>(n)]));
        if (!nom.empty()) r.push_back(entree_famille(n, nom, catalogue::chiffre_famille(n)));
    }
    for (int n = 0; n <= catalogue::familles_max; ++n) {
        for (const std::string_view a : catalogue::articles_de(n)) {
            if (!catalogue::est_sous_groupe(a)) continue;
            r.push_back(
                entree_famille(catalogue::famille_du_sous_groupe(a), lignes::libelle(a), lignes::chiffre_couleur(a)));
        }
    }
    return r;
}

Liste familles_d_articles() {
    Liste r = familles();
    for (Entree& e : r) e.famille = nombres::entier_int(std::string_view(e.acte.code).substr(marque::longueur));
    return r;
}

Liste articles(int famille) {
    Liste r;
    for (const std::string_view a : catalogue::articles_de(famille)) {
        const std::string libelle(lignes::libelle(a));
        const int chiffre = lignes::chiffre_couleur(a);
        if (catalogue::est_sous_groupe(a)) {
            r.push_back(
                {.acte = {.libelle = libelle}, .famille = catalogue::famille_du_sous_groupe(a), .chiffre = chiffre});
            continue;
        }
        const std::string reference(texte::rogne(lignes::reference(a)));
        const std::string code = std::string(marque::article) + std::string(a);
        r.push_back({.acte = {.code = code, .libelle = libelle, .reference = reference}, .chiffre = chiffre});
    }
    return r;
}

Liste pages() {
    Liste r;
    for (int p = 0; p < programme_touches::nb_pages; ++p) {
        std::string libelle(programme_touches::lis_titres(p).libelle());
        if (libelle.empty()) libelle = p == 0 ? "Accueil" : "Page " + std::to_string(p);
        r.push_back({.acte = {.code = std::string(marque::page) + std::to_string(p), .libelle = std::move(libelle)}});
    }
    return r;
}

Liste fonctions() {
    constexpr struct {
        std::string_view marque, suite, libelle;
        int image;
    } table[] = {
        {marque::accueil, "", "Accueil", 24},     {marque::familles, "", "Familles", 13},
        {marque::fonction, "TABLE", "Table", 11}, {marque::fonction, "SERVEUR", "Serveurs", 15},
        {marque::fonction, "NOTE", "Note", 22},   {marque::fonction, "FIN", "Quitter", 12},
        {marque::outils, "", "Outils", 0},        {marque::fonction, "GRILLE", "Programme des touches", 0},
        {marque::inerte, "", "Touche inerte", 0},
    };
    Liste r;
    for (const auto& f : table) {
        const std::string code = std::string(f.marque) + std::string(f.suite);
        r.push_back({.acte = {.code = code, .libelle = std::string(f.libelle), .image = f.image}});
    }
    return r;
}

/// The lists on offer, each behind a key of the bar.
constexpr struct {
    std::string_view titre;
    int image;
    Liste (*liste)();
} listes[] = {{"Familles", 13, familles},
              {"Articles", 1, familles_d_articles},
              {"Pages", image_page, pages},
              {"Fonctions", image_outils, fonctions}};
constexpr int nb_listes = 4, case_ferme = 5;

/// Where the last choice was made: keys of one kind are mostly made in a row.
struct Endroit {
    int liste = 0;
    int famille = -1;  ///< whose articles were shown, -1: none
    std::string titre;
};
Endroit dernier;

class Choix {
  public:
    Choix() {
        forme_.nom = "w_prog_acte";
        formes::encadre(forme_, "Action de la touche", formes::version);
        forme_.ajoute({.nom = "g1", .genre = Genre::grille, .cadre = formes::contenu(), .gras = true});
        formes::ajoute_barre(forme_, {});
        branche();
        const Endroit ici = dernier;
        montre_liste(ici.liste);
        if (!catalogue::articles_de(ici.famille).empty()) montre_articles(ici.famille, ici.titre);
    }

    std::optional<Acte> montre() {
        montre_modal(forme_);
        return choisi_;
    }

  private:
    Forme forme_;
    Liste liste_;
    std::optional<Acte> choisi_;

    void montre_liste(int numero) {
        formes::ToucheDeBarre barre[6];
        for (int i = 0; i < nb_listes; ++i) {
            barre[i] = {listes[i].titre, listes[i].image, i == numero ? Role::attendre : Role::action};
        }
        barre[case_ferme] = formes::touche_ferme;
        formes::remplit_barre(forme_("g2"), barre);
        remplit(listes[numero].titre, listes[numero].liste());
        dernier = {numero, -1, ""};
    }

    void montre_articles(int famille, const std::string& titre) {
        remplit(titre, articles(famille));
        dernier.famille = famille;
        dernier.titre = titre;
    }

    void remplit(std::string_view titre, Liste liste) {
        liste_ = std::move(liste);
        forme_("label_haut").texte() = std::string("Action de la touche · "_t) + std::string(titre);
        const bool etroit = formes::est_etroit();
        const int colonnes = etroit ? colonnes_etroit : colonnes_large;
        const int lignes = (static_cast<int>(liste_.size()) + colonnes - 1) / colonnes;
        Controle& g1 = forme_("g1");
        Grille& g = g1.grille;
        g = {};
        std::vector<std::string_view> faces(liste_.size());
        std::transform(liste_.begin(), liste_.end(), faces.begin(),
                       [](const Entree& e) { return std::string_view(e.acte.libelle); });
        formes::remplit_touches(g1, lignes, colonnes, faces, etroit ? police_etroite : police_large);
        g.hauteur_ligne = hauteur_touche;
        g.defile = true;
        formes::colore(forme_);
        for (std::size_t i = 0; i < liste_.size(); ++i) {
            Aspect& a = g.cellules[i];
            formes::colore_chiffre(a, liste_[i].chiffre);
            liste_[i].acte.couleur = a.fond;
            a.image = liste_[i].acte.image;
            a.place_image = PlaceImage::gauche;
        }
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int l, int c) { touche(forme_("g1").grille.rang(l, c)); };
        forme_("g2").a_la_cellule = [this](int, int c) {
            if (c < nb_listes) montre_liste(c);
            if (c == case_ferme) forme_.ferme();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void touche(std::size_t i) {
        if (i >= liste_.size()) return;
        const Entree e = liste_[i];
        if (e.famille >= 0) return montre_articles(e.famille, e.acte.libelle);
        choisi_ = e.acte;
        forme_.ferme();
    }
};

}  // namespace

std::optional<Acte> demande() {
    return Choix().montre();
}

}  // namespace w_prog_acte
