#include "carte/parcours.h"

#include <algorithm>
#include <functional>

#include "data/catalogue.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "platform/systeme/texte.h"

namespace parcours {
namespace {

using programme_touches::Champ;
namespace marque = programme_touches::marque;

/// What a scenario says again and again. The table is the quick one; its key, like the others, is one of a bar.
constexpr std::string_view suivant = "touche g2 0 1\n", table_rapide = "touche g2 0 0\ntouche g2 0 3\ntouche g2 0 5\n",
                           ferme = "touche g2 0 5\n", efface = "touche g2 0 0\ntouche btc(2)\n";

int dans_la_grille(int record) {
    return std::clamp(reglages::nombre(record), 1, reglages::grille_max);
}

int par_page(int premier_record) {
    return reglages::disposition(premier_record, dans_la_grille(reglages::colonnes_grille),
                                 dans_la_grille(reglages::lignes_grille), programme_touches::lignes_par_page)
        .par_page;
}

std::size_t pages(std::size_t nombre, int par_page) {
    return std::max<std::size_t>(
        1, (nombre + static_cast<std::size_t>(par_page) - 1) / static_cast<std::size_t>(par_page));
}

/// A scenario in the making.
class Trace {
  public:
    explicit Trace(int& numero) : numero_(numero) {}

    void fait(std::string_view commandes) { p_.scenario += commandes; }
    void touche(int k) { fait("touche btx(" + std::to_string(k) + ")\n"); }
    void montre(const std::string& section, const std::string& titre) {
        p_.vues.push_back({section, titre, "vue" + std::to_string(++numero_) + ".png"});
        fait("capture " + p_.vues.back().fichier + "\n");
    }
    /// So many pages of a list, one after the other.
    void montre_pages(const std::string& section, const std::string& titre, std::size_t nombre) {
        for (std::size_t i = 1; i <= nombre; ++i) {
            montre(section, nombre == 1 ? titre : titre + ", " + std::to_string(i) + " sur " + std::to_string(nombre));
            if (i < nombre) fait(suivant);
        }
    }
    Partie rend(std::string touches) {
        p_.touches = std::move(touches);
        return std::move(p_);
    }

  private:
    Partie p_;
    int& numero_;
};

/// The list of servers: its pages, and a key that is on the last one.
struct Serveurs {
    std::size_t pages = 1;
    int touche = 1;
};

Serveurs serveurs_de(const carte::Carte& c) {
    const auto plus_petit = [](const auto& a, const auto& b) { return a.numero < b.numero; };
    const int premier = std::min_element(c.serveurs.begin(), c.serveurs.end(), plus_petit)->numero == 0 ? 0 : 1;
    const int rang = std::max_element(c.serveurs.begin(), c.serveurs.end(), plus_petit)->numero - premier;
    const int n = par_page(reglages::touches_serveurs);
    return {pages(static_cast<std::size_t>(rang) + 1, n), rang % n + 1};
}

/// What a key of a page made for this purpose leads to.
struct Etape {
    std::string code;
    std::string libelle;
    std::function<void(Trace&)> montre;
};

std::size_t nombre_d_articles(const carte::Carte& c, int famille) {
    const auto a =
        std::count_if(c.articles.begin(), c.articles.end(), [=](const auto& x) { return x.famille == famille; });
    const auto g =
        std::count_if(c.familles.begin(), c.familles.end(), [=](const auto& x) { return x.parent == famille; });
    return static_cast<std::size_t>(a + g);
}

void ajoute_pages(const carte::Carte& c, std::vector<Etape>& etapes) {
    std::vector<bool> vues(programme_touches::nb_pages);
    if (!c.touches) return;
    for (const auto& t : *c.touches) {
        if (t.page == 0 || vues[static_cast<std::size_t>(t.page)] || t.numero == programme_touches::ligne_des_titres)
            continue;
        vues[static_cast<std::size_t>(t.page)] = true;
        etapes.push_back({std::string(marque::page) + std::to_string(t.page), "", [page = t.page](Trace& s) {
                              s.montre("Pages de touches", "Page " + std::to_string(page));
                              s.fait(suivant);  // the list of families, whose last key leads home
                              s.fait(ferme);
                          }});
    }
}

void ajoute_familles(const carte::Carte& c, std::vector<Etape>& etapes) {
    const int n = par_page(reglages::touches_articles);
    for (const bool groupes : {false, true}) {
        for (const auto& f : c.familles) {
            const std::size_t articles = nombre_d_articles(c, f.numero);
            if (f.parent.has_value() != groupes || articles == 0) continue;
            const std::string code = f.parent ? std::string(marque::article) + catalogue::debut_de_sous_groupe(f.numero)
                                              : std::string(marque::famille) + std::to_string(f.numero);
            etapes.push_back({code, f.nom, [nom = texte::vers_utf8(f.nom), nombre = pages(articles, n)](Trace& s) {
                                  s.montre_pages("Familles", nom, nombre);
                                  s.fait(ferme);
                                  s.fait(ferme);
                              }});
        }
    }
}

void ajoute_menus(const fabrication::Fichiers& f, std::vector<Etape>& etapes) {
    const auto t = catalogue::depuis("", f.catalogue);
    for (const auto& famille : t->articles) {
        for (const auto record : famille) {
            if (!lignes::est_menu_a_prix_fixe(record)) continue;
            const std::string nom = texte::vers_utf8(lignes::libelle(record));
            const std::size_t services = lignes::services(lignes::composition(record).value_or("")).size();
            etapes.push_back({std::string(marque::article) + std::string(programme_touches::abrege(record)), "",
                              [nom, services](Trace& s) {
                                  s.montre_pages("Menus", nom, std::max<std::size_t>(1, services));
                                  s.fait(ferme);
                                  s.fait(efface);
                              }});
        }
    }
}

void ajoute_details(const carte::Carte& c, std::vector<Etape>& etapes) {
    if (!c.details || c.details->empty()) return;
    const auto dernier = std::max_element(c.details->begin(), c.details->end(),
                                          [](const auto& a, const auto& b) { return a.code < b.code; });
    const auto paires = static_cast<std::size_t>((dernier->code / styles::records_par_categorie + 1) / 2);
    etapes.push_back({std::string(marque::article) + lignes::texte_fiche({"0000000000000", "Article", 0, 0, 0, 0, ""}),
                      "", [paires](Trace& s) {
                          s.fait(suivant);  // the key "A"
                          s.montre_pages("Détails", "Touches A et suivantes", paires);
                          s.fait(ferme);
                          s.fait(efface);
                      }});
}

/// The key program with a home page of these keys, one cell each.
std::string touches_vers(std::string contenu, const Etape* etapes, std::size_t nombre) {
    for (int i = 1; i <= programme_touches::lignes_par_page; ++i) {
        programme_touches::Ligne l;
        if (static_cast<std::size_t>(i) <= nombre) {
            l.pose(Champ::libelle, etapes[i - 1].libelle);
            l.pose(Champ::action, etapes[i - 1].code);
            l.pose(Champ::visible, "1");
        }
        l.pose(Champ::lh, "11");
        programme_touches::pose_dans(contenu, 0, i, l);
    }
    return contenu;
}

/// Servers, the home page as it is, and the list of families.
Partie compose_accueil(const carte::Carte& c, const Serveurs& serveurs, const std::string& programme, int& numero) {
    Trace s(numero);
    s.montre_pages("Serveurs", "Serveurs", serveurs.pages);
    s.touche(serveurs.touche);
    if (c.touches) s.montre("Accueil", "L'accueil");
    int derniere = 0;
    for (const auto& f : c.familles) derniere = f.parent ? derniere : std::max(derniere, f.numero);
    s.fait(table_rapide);
    s.fait(suivant);
    s.montre_pages("Liste des familles", "Familles",
                   pages(static_cast<std::size_t>(derniere), par_page(reglages::touches_familles)));
    return s.rend(programme);
}

/// What waiters are not shown, since they choose nothing there.
Partie compose_menus(const carte::Carte& c) {
    Partie p;
    for (const auto& a : c.articles) {
        std::string plats;
        for (const auto& k : a.composants)
            plats += (plats.empty() ? "" : ", ") + nombres::general(k.second) + " " + texte::vers_utf8(k.libelle);
        if (!plats.empty()) p.vues.push_back({"Menus composés", texte::vers_utf8(a.libelle) + " : " + plats, ""});
    }
    return p;
}

std::vector<Etape> etapes_de(const carte::Carte& c, const fabrication::Fichiers& f) {
    std::vector<Etape> r;
    ajoute_pages(c, r);
    ajoute_familles(c, r);
    ajoute_menus(f, r);
    ajoute_details(c, r);
    return r;
}

}  // namespace

std::vector<Partie> compose(const carte::Carte& c, const fabrication::Fichiers& f) {
    const std::string programme = f.touches.value_or(programme_touches::contenu_vide());
    const Serveurs serveurs = serveurs_de(c);
    int numero = 0;
    std::vector<Partie> r = {compose_accueil(c, serveurs, programme, numero)};
    const auto etapes = etapes_de(c, f);
    const auto par_partie = static_cast<std::size_t>(
        std::min(programme_touches::lignes_par_page,
                 dans_la_grille(reglages::colonnes_grille) * dans_la_grille(reglages::lignes_grille)));
    for (std::size_t debut = 0; debut < etapes.size(); debut += par_partie) {
        const std::size_t nombre = std::min(par_partie, etapes.size() - debut);
        Trace s(numero);
        for (std::size_t i = 1; i < serveurs.pages; ++i) s.fait(suivant);
        s.touche(serveurs.touche);
        s.fait(table_rapide);
        for (std::size_t i = 0; i < nombre; ++i) {
            s.touche(static_cast<int>(i) + 1);
            etapes[debut + i].montre(s);
        }
        r.push_back(s.rend(touches_vers(programme, &etapes[debut], nombre)));
    }
    r.push_back(compose_menus(c));
    return r;
}

}  // namespace parcours
