// The sheets whose rows stand together: the courses of menus, the categories of details, the keys of a page.
#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "carte/lecture_interne.h"
#include "data/catalogue.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace lecture {
namespace {

using namespace tableaux;
using cases::Lecteur;

constexpr int quantite_max = 99, taille_max = 999, cellules_max = 9;

/// --- menus

/// The dish of the row: reference and label, both empty for an empty place.
std::pair<std::string, std::string> lis_plat(Lecteur& l, const Repertoire& r) {
    const std::string t = l.libelle(menu_plat);
    const auto article = r.libelles.find(t);
    if (article != r.libelles.end() && !t.empty()) return {t, article->second};
    const bool chiffres = !t.empty() && t.find_first_not_of("0123456789") == std::string::npos;
    if (chiffres && !r.references.contains(t))
        l.faute(menu_plat, "n'est pas dans articles.csv ; écrivez la référence d'un article, ou un texte");
    return {"", t};
}

void lis_plat_au_choix(Lecteur& l, carte::Article& menu, const Repertoire& r) {
    const std::string nom = l.libelle(menu_service);
    if (!l.dit(menu_service)) l.manque(menu_service, "il manque un texte ; écrivez le service, par exemple Entrée");
    const auto plat = lis_plat(l, r);
    for (const int colonne : {menu_quantite, menu_prix}) {
        if (l.dit(colonne)) l.faute(colonne, "ne vaut que pour un menu composé ; laissez la case vide");
    }
    if (!l.juste()) return;
    auto s = std::find_if(menu.services.begin(), menu.services.end(), [&](const auto& x) { return x.nom == nom; });
    if (s == menu.services.end() && menu.services.size() == lignes::services_par_menu)
        return l.faute(menu_service, "est un septième service ; un menu en a six au plus");
    if (s == menu.services.end()) s = menu.services.insert(s, {nom, {}, {}});
    if (s->choix.size() == lignes::choix_par_service)
        return l.faute(menu_plat, "est un dix-septième plat ; un service en a seize au plus");
    s->references.push_back(plat.first);
    s->choix.push_back(plat.second);
}

void lis_composant(Lecteur& l, carte::Article& menu, const Repertoire& r) {
    const auto plat = lis_plat(l, r);
    if (l.dit(menu_service)) l.faute(menu_service, "ne vaut pas pour un menu composé ; laissez la case vide");
    if (!l.dit(menu_plat)) l.manque(menu_plat, "il manque un plat ; écrivez la référence d'un article");
    if (plat.first.empty() && l.juste()) l.faute(menu_plat, "n'est pas une référence ; écrivez celle d'un article");
    const int quantite = l.entier(menu_quantite, 1, quantite_max, 1);
    const double prix = l.prix(menu_prix, 0);
    if (l.juste()) menu.composants.push_back({plat.first, plat.second, prix, static_cast<double>(quantite)});
}

std::string lis_reference_de_menu(Lecteur& l, const Repertoire& r) {
    std::string reference = l.reference(menu_menu);
    if (!reference.empty() && !r.menus.contains(reference))
        l.faute(menu_menu, r.references.contains(reference)
                               ? "n'est pas un menu ; écrivez prix fixe ou composé dans la colonne Menu d'articles.csv"
                               : "n'est pas dans articles.csv ; écrivez la référence d'un menu");
    return reference;
}

/// A course of empty places alone would not be shown. `lignes`: where each stands, by menu and name.
void verifie_services(Lecteur& l, const carte::Carte& c,
                      const std::map<std::pair<std::string, std::string>, std::size_t>& lignes) {
    for (const auto& a : c.articles) {
        for (const auto& s : a.services) {
            if (std::all_of(s.choix.begin(), s.choix.end(), [](const auto& plat) { return plat.empty(); }))
                l.faute_de(lignes.at({a.reference, s.nom}), menu_service,
                           "n'a pas de plat ; écrivez-en un, ou retirez ce service");
        }
    }
}

/// --- details

struct Categorie {
    std::string nom;
    int suivant = 0;  ///< code of its next row
};

class Placement {
  public:
    explicit Placement(Lecteur& l) : l_(l) {}

    /// The code of the present row; nothing when there is no place, which is then noted.
    std::optional<int> code(const std::string& categorie, bool& premiere) {
        auto c = std::find_if(vues_.begin(), vues_.end(), [&](const Categorie& x) { return x.nom == categorie; });
        premiere = c == vues_.end();
        if (premiere) c = vues_.insert(c, {categorie, styles::premier_code(colonne_libre_)});
        const bool donne = l_.dit(detail_code);
        const int dernier = styles::premier_code(styles::categories - 1) + styles::choix_par_categorie - 1;
        const int code = donne ? l_.entier(detail_code, styles::premier_code(0), dernier) : c->suivant;
        if (!l_.juste() || !est_une_place(code, donne, premiere)) return std::nullopt;
        c->suivant = code + 1;
        colonne_libre_ = std::max(colonne_libre_, code / styles::records_par_categorie);
        const auto [ou, libre] = prises_.emplace(code, l_.ligne());
        if (libre) return code;
        l_.faute(donne ? detail_code : qui(), "n'a pas de place : le code " + std::to_string(code) +
                                                  " est déjà à la ligne " + std::to_string(ou->second) +
                                                  " ; écrivez un autre code dans la colonne Code");
        return std::nullopt;
    }

  private:
    Lecteur& l_;
    std::vector<Categorie> vues_;
    std::map<int, std::size_t> prises_;
    int colonne_libre_ = 0;

    /// The cell that names the row: a row that leaves a place empty has its category alone.
    int qui() const { return l_.dit(detail_libelle) ? detail_libelle : detail_categorie; }

    bool est_une_place(int code, bool donne, bool premiere) {
        if (code % styles::records_par_categorie < styles::choix_par_categorie &&
            code / styles::records_par_categorie <= styles::categories)
            return true;
        if (donne)
            l_.faute(detail_code,
                     "n'est le code d'aucune catégorie ; écrivez un code de 20 à 34, de 40 à 54… ou de 400 à 414");
        else if (premiere)
            l_.faute(detail_categorie, "est une vingt et unième catégorie ; gardez-en vingt au plus");
        else
            l_.faute(qui(), "est de trop : une catégorie a quinze lignes, son titre compris ; commencez-en une autre");
        return false;
    }
};

constexpr std::int32_t blanc = 0xFFFFFF, noir = 0;

/// --- keys

struct GenreDActe {
    std::string_view mot;
    carte::Acte acte;
};
constexpr GenreDActe genres[] = {{"famille", carte::Acte::famille},
                                 {"article", carte::Acte::article},
                                 {"page", carte::Acte::page},
                                 {"sousgroupe", carte::Acte::sous_groupe}};

class Actions {
  public:
    Actions(Lecteur& l, const Repertoire& r) : l_(l), r_(r) {}

    void lis(carte::Touche& t) {
        const std::string brut = l_.texte(touche_action);
        const auto blanc = std::min(brut.find(' '), brut.size());
        const std::string mot = cle(brut.substr(0, blanc)), argument(texte::rogne(brut.substr(blanc)));
        const auto* g = std::find_if(std::begin(genres), std::end(genres), [&](const auto& x) { return x.mot == mot; });
        if (brut.empty()) return l_.manque(touche_action, "il manque une action ; écrivez par exemple famille 2");
        if (g != std::end(genres)) return lis_acte(t, g->acte, argument);
        const auto longueur = programme_touches::longueur(programme_touches::Champ::action);
        if (!brut.starts_with('#') || brut.size() < programme_touches::marque::longueur || brut.size() > longueur)
            l_.faute(touche_action,
                     "n'est pas une action ; écrivez par exemple famille 2, article 8880000000024 ou page 1");
        t.texte = brut;
    }

    /// Pages that keys lead to must have keys.
    void verifie_pages(const std::set<int>& pages) {
        for (const auto& [ligne, page] : menees_) {
            if (!pages.contains(page))
                l_.faute_de(ligne, touche_action,
                            "mène à une page qui n'a pas de touche ; écrivez-en, ou changez l'action");
        }
    }

  private:
    Lecteur& l_;
    const Repertoire& r_;
    std::vector<std::pair<std::size_t, int>> menees_;

    void lis_acte(carte::Touche& t, carte::Acte acte, const std::string& argument) {
        t.acte = acte;
        t.texte = acte == carte::Acte::article ? argument : "";
        t.nombre = cases::nombre_entier(argument).value_or(-1);
        if (acte == carte::Acte::page && (t.nombre < 0 || t.nombre >= programme_touches::nb_pages))
            l_.faute(touche_action, "mène à une page qui n'existe pas ; écrivez un numéro de 0 à 49");
        else if (acte == carte::Acte::page)
            menees_.emplace_back(l_.ligne(), t.nombre);
        if (acte == carte::Acte::famille && !r_.familles.contains(t.nombre) &&
            !r_.familles_d_articles.contains(t.nombre))
            l_.faute(touche_action, "mène à une famille sans nom et sans article ; écrivez un numéro de familles.csv");
        if (acte == carte::Acte::article && !r_.references.contains(argument))
            l_.faute(touche_action, "n'est pas dans articles.csv ; écrivez la référence d'un article");
        if (acte == carte::Acte::sous_groupe && !r_.sous_groupes.contains(t.nombre))
            l_.faute(touche_action,
                     "n'est pas un sous-groupe de familles.csv ; écrivez son numéro, par exemple sous-groupe 35");
    }
};

void lis_aspect(Lecteur& l, carte::Touche& t) {
    t.image = l.image(touche_image, t.marque);
    t.taille = l.entier(touche_taille, 1, taille_max, 0);
    t.largeur = l.entier(touche_largeur, 1, cellules_max, 0);
    t.hauteur = l.entier(touche_hauteur, 1, cellules_max, 0);
    t.couleur = l.couleur(touche_couleur, -1);
}

/// A page has one key in a cell.
void verifie_case(Lecteur& l, std::map<std::pair<int, int>, std::size_t>& vues, const carte::Touche& t) {
    const auto [ou, neuve] = vues.emplace(std::pair(t.page, t.numero), l.ligne());
    if (!neuve)
        l.faute(touche_case, "est déjà à la ligne " + std::to_string(ou->second) +
                                 " pour cette page ; changez l'une des deux lignes");
}

}  // namespace

void lis_menus(Lecteur& l, carte::Carte& c, Repertoire& r) {
    std::map<std::pair<std::string, std::string>, std::size_t> services;
    while (l.suivante()) {
        const std::string reference = lis_reference_de_menu(l, r);
        const auto genre = r.menus.find(reference);
        r.composes.insert(reference);
        if (genre == r.menus.end()) continue;
        const auto article =
            std::find_if(c.articles.begin(), c.articles.end(), [&](const auto& a) { return a.reference == reference; });
        carte::Article sans;  // its row has a fault: this one is read all the same
        carte::Article& menu = article == c.articles.end() ? sans : *article;
        if (genre->second == carte::Menu::compose) lis_composant(l, menu, r);
        if (genre->second != carte::Menu::prix_fixe) continue;
        lis_plat_au_choix(l, menu, r);
        if (l.juste()) services.emplace(std::pair(reference, l.texte(menu_service)), l.ligne());
    }
    verifie_services(l, c, services);
}

void lis_details(Lecteur& l, carte::Carte& c) {
    c.details.emplace();
    Placement placement(l);
    while (l.suivante()) {
        const std::string categorie = l.nom(detail_categorie);
        std::string libelle = l.texte(detail_libelle, styles::longueur_libelle);
        const std::int32_t fond = l.couleur(detail_fond, blanc), encre = l.couleur(detail_encre, noir);
        bool premiere = false;
        const auto code = placement.code(categorie, premiere);
        if (premiere && libelle.empty()) libelle = categorie;
        if (l.juste() && code && !libelle.empty()) c.details->push_back({*code, categorie, {libelle, encre, fond}});
    }
}

void lis_touches(Lecteur& l, carte::Carte& c, const Repertoire& r) {
    c.touches.emplace();
    Actions actions(l, r);
    std::map<std::pair<int, int>, std::size_t> vues;
    std::set<int> pages;
    while (l.suivante()) {
        carte::Touche t;
        t.page = l.entier(touche_page, 0, programme_touches::nb_pages - 1);
        const bool page_juste = l.juste(), titre = cle(l.brut(touche_case)) == "titre";
        t.numero =
            titre ? programme_touches::ligne_des_titres : l.entier(touche_case, 1, programme_touches::lignes_par_page);
        if (l.juste()) verifie_case(l, vues, t);
        if (page_juste && !titre) pages.insert(t.page);
        t.libelle = l.texte(touche_libelle, programme_touches::longueur(programme_touches::Champ::libelle));
        if (titre) t.texte = l.texte(touche_action, programme_touches::longueur(programme_touches::Champ::action));
        if (!titre) actions.lis(t);
        if (!titre) lis_aspect(l, t);
        if (l.juste()) c.touches->push_back(t);
    }
    actions.verifie_pages(pages);
}

}  // namespace lecture
