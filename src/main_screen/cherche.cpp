#include "main_screen/cherche.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "data/catalogue.h"
#include "data/commande.h"
#include "data/lignes.h"
#include "data/reglages.h"
#include "dialogs/clavv.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace cherche {
namespace {

using namespace ecran;
using formes::px;

constexpr int hauteur_champ = px(54), hauteur_lettre_max = px(54), hauteur_ligne_min = px(54);
constexpr int hauteur_lettre_min = px(36), lignes_min = 2;  ///< the keys of a low screen leave room for two articles
constexpr int espace_large = px(8), espace_etroit = px(5);
constexpr int police_champ = 22, police_lettre = 20, police_rien = 16;
constexpr std::size_t lettres_max = 40;

constexpr std::string_view recule = "<";
/// The letters of the keyboard, row by row, then a blank and a way back.
constexpr std::array<std::string_view, 30> lettres = {"a", "z", "e", "r", "t", "y", "u", "i", "o", "p",
                                                      "q", "s", "d", "f", "g", "h", "j", "k", "l", "m",
                                                      "w", "x", "c", "v", "b", "n", "'", "-", " ", recule};
constexpr int rangees = 3, lettres_par_rangee = 10;

enum CaseBarre { vide = 0, ferme = 5 };
const formes::ToucheDeBarre barre[6] = {
    {"Effacer", image_corbeille, Role::detruire}, {}, {}, {}, {}, formes::touche_ferme};

/// An article of the catalogue, and what the search compares.
struct Article {
    std::string_view record;
    std::string mots;    ///< its label's words, each behind a blank
    double envoyes = 0;  ///< pieces of today
    int debuts = 0;      ///< words looked for that a word of the label begins with
};

std::vector<std::string> mots(std::string_view texte) {
    std::vector<std::string> r;
    std::string mot;
    for (const char c : texte::pour_chercher(texte) + " ") {
        if (c != ' ') {
            mot += c;
        } else if (!mot.empty()) {
            r.push_back(std::exchange(mot, ""));
        }
    }
    return r;
}

/// All articles, in the catalogue's order; one that stands in two families, once.
std::vector<Article> tous() {
    std::vector<Article> r;
    std::set<std::string_view> vus;
    for (int famille = 0; famille <= catalogue::familles_max; ++famille) {
        for (const std::string_view record : catalogue::articles_de(famille)) {
            if (catalogue::est_sous_groupe(record) || lignes::libelle(record).empty() || !vus.insert(record).second)
                continue;
            r.push_back({record, "", commande::envoyes_ce_jour(lignes::reference(record))});
            for (const std::string& mot : mots(lignes::libelle(record))) r.back().mots += " " + mot;
        }
    }
    return r;
}

/// The articles whose label has all the words, most ordered today first; then those of which a word begins so.
std::vector<Article> trouves(const std::vector<Article>& articles, const std::vector<std::string>& cherches) {
    std::vector<Article> r;
    for (const Article& a : articles) {
        const auto contient = [&](const std::string& mot) { return texte::contient(a.mots, mot); };
        if (!std::all_of(cherches.begin(), cherches.end(), contient)) continue;
        r.push_back(a);
        r.back().debuts = static_cast<int>(std::count_if(cherches.begin(), cherches.end(), [&](const std::string& mot) {
            return texte::contient(a.mots, " " + mot);
        }));
    }
    std::stable_sort(r.begin(), r.end(), [](const Article& a, const Article& b) {
        return a.envoyes != b.envoyes ? a.envoyes > b.envoyes : a.debuts > b.debuts;
    });
    return r;
}

class Recherche {
  public:
    explicit Recherche(const std::string& lettres_tapees) : articles_(tous()) {
        forme_.nom = "cherche";
        formes::encadre(forme_, "Recherche d'un article", formes::version);
        construit();
        tape(lettres_tapees);
        branche();
    }

    std::optional<std::string> montre() {
        montre_modal(forme_);
        return choisi_;
    }

  private:
    Forme forme_;
    std::vector<Article> articles_, trouves_;
    std::optional<std::string> choisi_;

    Controle& champ() { return forme_("Text1"); }

    void construit() {
        const Cadre zone = formes::contenu();
        const int espace = formes::est_etroit() ? espace_etroit : espace_large;
        const int libre = zone.hauteur - hauteur_champ - 2 * rythme - lignes_min * hauteur_ligne_min;
        const int hauteur_lettre =
            std::clamp((libre + espace) / rangees - espace, hauteur_lettre_min, hauteur_lettre_max);
        const int haut_lettres = rangees * (hauteur_lettre + espace) - espace;
        const Cadre pave = {zone.gauche, zone.bas() - haut_lettres, zone.largeur, haut_lettres};
        const int haut = zone.haut + hauteur_champ + rythme;
        const Cadre liste = {zone.gauche, haut, zone.largeur, std::max(hauteur_ligne_min, pave.haut - rythme - haut)};
        const Plan plans[] = {
            formes::champ_de_saisie({zone.gauche, zone.haut, zone.largeur, hauteur_champ}, police_champ),
            {.nom = "Label_invite",
             .cadre = {zone.gauche + px(24), zone.haut, zone.largeur - px(48), hauteur_champ},
             .texte = "Tapez quelques lettres du nom",
             .police = police_rien,
             .alignement = Alignement::gauche,
             .encre = palette::gris,
             .laisse_passer = true},
            formes::liste("g1", liste, std::max(1, reglages::nombre(reglages::police_note))),
            {.nom = "Label_rien",
             .cadre = liste,
             .texte = "Aucun article : effacez des lettres"_t,
             .police = police_rien,
             .encre = palette::gris,
             .laisse_passer = true},
            {.nom = "g3", .genre = Genre::grille, .cadre = pave, .etiquette = 3},
        };
        forme_.construit(plans);
        construit_touches(espace);
        Grille& g = forme_("g1").grille;
        g.hauteur_ligne = std::max(hauteur_ligne_min, forme_("g1").aspect.police * twips_par_point * 2);
        g.defile = true;
    }

    void construit_touches(int espace) {
        formes::remplit_touches(forme_("g3"), rangees, lettres_par_rangee, lettres, police_lettre);
        forme_("g3").grille.espace = espace;
        Aspect& retour = forme_("g3").grille.cellules.back();
        retour = {.image = image_retour_arriere, .role = Role::touche_douce};
        formes::ajoute_barre(forme_, barre);
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int ligne, int) { choisit(ligne); };
        forme_("g3").a_la_cellule = [this](int ligne, int colonne) {
            const std::string_view lettre = lettres[static_cast<std::size_t>(ligne * lettres_par_rangee + colonne)];
            lettre == recule ? efface_une_lettre() : tape(champ().texte() + std::string(lettre));
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            if (colonne == vide) tape("");
            if (colonne == ferme) forme_.ferme();
        };
        champ().au_toucher = [this] {
            tape(clavv::demande(etat::saisie, "Recherche d'un article|" + champ().texte()).value_or(champ().texte()));
        };
        forme_.a_la_frappe = [this](int c) {
            if (c >= ' ') tape(champ().texte() + static_cast<char>(c));
        };
        forme_.au_retour_arriere = [this] { efface_une_lettre(); };
        forme_.a_l_entree = [this] { choisit(0); };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void efface_une_lettre() {
        const std::string& t = champ().texte();
        tape(t.substr(0, t.size() - std::min<std::size_t>(1, t.size())));
    }

    void tape(std::string lettres_tapees) {
        lettres_tapees.resize(std::min(lettres_tapees.size(), lettres_max));
        formes::pose_texte(champ(), std::move(lettres_tapees));
        trouves_ = trouves(articles_, mots(champ().texte()));
        Grille& g = forme_("g1").grille;
        g.dimensionne(static_cast<int>(trouves_.size()), 1);
        g.premiere_ligne = 0;
        for (std::size_t i = 0; i < trouves_.size(); ++i) {
            g.cellules[i] = {.texte = std::string(lignes::libelle(trouves_[i].record)),
                             .role = Role::ligne,
                             .alignement = Alignement::gauche,
                             .trait = true};
        }
        forme_("Label_invite").visible = champ().texte().empty();
        forme_("Label_rien").visible = trouves_.empty();
        formes::colore(forme_);
    }

    void choisit(int ligne) {
        if (ligne < 0 || static_cast<std::size_t>(ligne) >= trouves_.size()) return;
        choisi_ = trouves_[static_cast<std::size_t>(ligne)].record;
        forme_.ferme();
    }
};

}  // namespace

std::optional<std::string> demande(const std::string& lettres_tapees) {
    return Recherche(lettres_tapees).montre();
}

}  // namespace cherche
