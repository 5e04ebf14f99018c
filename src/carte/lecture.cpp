#include "carte/lecture.h"

#include "carte/lecture_interne.h"
#include "data/catalogue.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace lecture {
namespace {

using namespace tableaux;
using cases::Lecteur;

constexpr int table_max = 999, impression_max = 97;

/// Notes where a number stands first; a second one is a fault.
template <typename Cle>
bool est_neuf(Lecteur& l, std::map<Cle, std::size_t>& vus, const Cle& cle, int colonne) {
    const auto [ou, neuf] = vus.emplace(cle, l.ligne());
    if (!neuf)
        l.faute(colonne, "est déjà à la ligne " + std::to_string(ou->second) + " ; changez l'une des deux lignes");
    return neuf;
}

void lis_serveurs(Lecteur& l, carte::Carte& c, Repertoire& r, Constats& constats) {
    while (l.suivante()) {
        carte::Serveur s{l.entier(serveur_numero, 0, catalogue::serveurs_max), l.nom(serveur_nom), 0};
        s.chiffre = l.chiffre(serveur_couleur);
        if (l.juste() && est_neuf(l, r.serveurs, s.numero, serveur_numero)) c.serveurs.push_back(s);
    }
    if (c.serveurs.empty() && r.serveurs.empty())
        constats.fautes.push_back(
            situe(forme(Feuille::serveurs).fichier, 0, "", "il n'y a pas de serveur ; écrivez-en un au moins"));
}

void lis_famille(Lecteur& l, carte::Carte& c, Repertoire& r) {
    carte::Famille f;
    f.numero = l.entier(famille_numero, 0, catalogue::familles_max);
    const bool numero_juste = l.juste();
    if (l.dit(famille_parent)) f.parent = l.entier(famille_parent, 0, catalogue::familles_max);
    f.nom = f.parent ? l.libelle(famille_nom) : l.nom(famille_nom);
    if (f.parent && f.nom.empty()) l.manque(famille_nom, "il manque un texte ; écrivez-le dans cette case");
    if (!f.parent && texte::contient(f.nom, "|"))
        l.faute(famille_nom, "contient le signe « | », réservé aux fichiers ; écrivez-le autrement");
    f.chiffre = l.chiffre(famille_couleur);
    const std::string n = std::to_string(catalogue::premier_sous_groupe + 1);
    if (numero_juste && f.parent && f.numero <= catalogue::premier_sous_groupe)
        l.faute(famille_numero, "n'est pas le numéro d'un sous-groupe ; écrivez-en un de " + n + " à 120");
    if (numero_juste && !f.parent && f.numero > catalogue::familles_nommees_max)
        l.faute(famille_numero,
                "est au-delà de 20 ; écrivez un numéro de 0 à 20, ou la famille dont c'est un sous-groupe");
    if (numero_juste && est_neuf(l, r.familles, f.numero, famille_numero) && f.parent) r.sous_groupes.insert(f.numero);
    if (l.juste()) c.familles.push_back(f);
}

/// A sub-group stands among the articles of a family that is there.
void verifie_parents(const Tableau& t, const Repertoire& r, Constats& constats) {
    for (Lecteur l(t, constats); l.suivante();) {
        const auto parent = l.dit(famille_parent) ? cases::nombre_entier(l.brut(famille_parent)) : std::nullopt;
        if (parent && *parent <= catalogue::familles_max && !r.familles.contains(*parent))
            l.faute(famille_parent, "n'est pas une famille de familles.csv ; écrivez le numéro d'une famille");
    }
}

carte::Menu lis_genre(Lecteur& l) {
    const std::string t = cle(l.texte(article_menu));
    if (t.empty() || t == "non") return carte::Menu::non;
    if (t == "prixfixe") return carte::Menu::prix_fixe;
    if (t == "compose") return carte::Menu::compose;
    l.faute(article_menu, "n'est pas une sorte de menu ; écrivez prix fixe ou composé, ou laissez la case vide");
    return carte::Menu::non;
}

void lis_article(Lecteur& l, carte::Carte& c, Repertoire& r) {
    carte::Article a;
    a.reference = l.reference(article_reference);
    if (!a.reference.empty()) est_neuf(l, r.references, a.reference, article_reference);
    a.libelle = l.libelle(article_libelle);
    if (!l.dit(article_libelle)) l.manque(article_libelle, "il manque un texte ; écrivez-le dans cette case");
    a.prix = l.prix(article_prix);
    a.famille = l.entier(article_famille, 0, catalogue::familles_max);
    a.chiffre = l.chiffre(article_couleur);
    a.menu = lis_genre(l);
    a.impression = l.entier(article_impression, 0, impression_max, 0);
    if (a.menu != carte::Menu::non && l.dit(article_impression))
        l.faute(article_impression, "ne vaut pas pour un menu ; laissez la case vide");
    if (!a.reference.empty()) r.libelles.emplace(a.reference, a.libelle);
    if (!a.reference.empty() && a.menu != carte::Menu::non) r.menus.emplace(a.reference, a.menu);
    if (l.juste()) c.articles.push_back(std::move(a));
}

/// The terminal keeps so many of a family, sub-groups included.
void verifie_place(Lecteur& l, carte::Carte& c, std::map<int, int>& places) {
    if (!l.juste()) return;
    const int famille = c.articles.back().famille;
    if (++places[famille] <= catalogue::places_max) return;
    l.faute(article_famille,
            "a déjà " + std::to_string(catalogue::places_max) +
                " articles, les tablettes n'en montrent pas plus ; mettez celui-ci dans une autre famille");
    c.articles.pop_back();
}

void lis_articles(Lecteur& l, carte::Carte& c, Repertoire& r) {
    std::map<int, int> places;
    for (const carte::Famille& f : c.familles) {
        if (f.parent) ++places[*f.parent];
    }
    while (l.suivante()) {
        lis_article(l, c, r);
        verifie_place(l, c, places);
        const int famille = l.juste() ? c.articles.back().famille : -1;
        if (l.juste()) r.familles_d_articles.insert(famille);
        if (l.juste() && !r.familles.contains(famille))
            l.remarque(article_famille, "la famille " + std::to_string(famille) +
                                            " n'est pas dans familles.csv ; "
                                            "seule une touche de touches.csv peut y mener");
    }
}

/// "12", or "31-42".
bool lis_suite(std::string_view t, int& de, int& a) {
    const auto tiret = t.find('-');
    const auto premiere = cases::nombre_entier(texte::rogne(t.substr(0, tiret)));
    const auto derniere =
        tiret == std::string_view::npos ? premiere : cases::nombre_entier(texte::rogne(t.substr(tiret + 1)));
    if (!premiere || !derniere) return false;
    de = *premiere;
    a = *derniere;
    return de >= 1 && de <= a && a <= table_max;
}

void lis_tables(Lecteur& l, carte::Carte& c) {
    std::map<int, std::size_t> vues;
    while (l.suivante()) {
        int de = 0, a = 0;
        if (!l.dit(table_numero)) continue;
        if (!lis_suite(l.texte(table_numero), de, a)) {
            l.faute(table_numero,
                    "n'est pas une table ; écrivez un numéro de 1 à 999, ou une suite, par exemple 31-42");
            continue;
        }
        for (int n = de; n <= a; ++n) {
            if (!l.juste()) break;
            const auto [ou, neuve] = vues.emplace(n, l.ligne());
            if (!neuve)
                l.faute(table_numero, "contient la table " + std::to_string(n) + ", qui est déjà à la ligne " +
                                          std::to_string(ou->second) + " ; gardez-la une fois");
            if (neuve) c.tables.push_back(n);
        }
    }
}

void lis_entete(Lecteur& l, carte::Carte& c) {
    c.entete.clear();
    while (l.suivante()) {
        if (!l.dit(entete_ligne)) continue;
        c.entete.push_back(l.texte(entete_ligne));
        if (c.entete.size() > catalogue::lignes_entete_gardees)
            l.faute(entete_ligne, "est de trop ; gardez 15 lignes au plus");
    }
}

/// A menu without a dish would open an empty page.
void verifie_menus(const Repertoire& r, Constats& constats) {
    for (const auto& [reference, genre] : r.menus) {
        if (r.composes.contains(reference)) continue;
        constats.fautes.push_back(situe(forme(Feuille::articles).fichier, r.references.at(reference), "Menu",
                                        "ce menu n'a aucun plat dans menus.csv ; écrivez-en, ou videz cette case"));
    }
}

/// The sheet's content; a sheet that must be there and is not is a fault.
std::optional<Tableau> ouvre(std::string_view dossier, Feuille feuille, Constats& constats) {
    constexpr std::uint64_t longueur_max = 16u << 20;
    const Forme& f = forme(feuille);
    std::string contenu;
    const auto issue = fichiers::lis_tout(fichiers::joint(dossier, f.fichier), contenu, longueur_max);
    if (issue == fichiers::Issue::fait) return tableaux::lis(feuille, contenu, constats);
    if (issue != fichiers::Issue::absent)
        constats.fautes.push_back(
            situe(f.fichier, 0, "",
                  texte::vers_utf8(fichiers::raison(issue)) + " ; fermez-le dans le tableur et recommencez"));
    else if (f.obligatoire)
        constats.fautes.push_back(
            situe(f.fichier, 0, "", "ce tableau manque ; « orvalune-carte modele » en écrit un exemple"));
    return std::nullopt;
}

}  // namespace

carte::Carte lis(std::string_view dossier, Constats& constats) {
    carte::Carte c;
    c.entete = carte::entete_par_defaut;
    Repertoire r;
    /// Calls `prend` with a reader of the sheet, when there is one; tells whether there was.
    const auto avec = [&](Feuille feuille, auto prend) {
        const auto t = ouvre(dossier, feuille, constats);
        if (!t) return false;
        Lecteur l(*t, constats);
        prend(l, *t);
        return true;
    };
    avec(Feuille::serveurs, [&](Lecteur& l, const Tableau&) { lis_serveurs(l, c, r, constats); });
    avec(Feuille::familles, [&](Lecteur& l, const Tableau& t) {
        while (l.suivante()) lis_famille(l, c, r);
        verifie_parents(t, r, constats);
    });
    avec(Feuille::articles, [&](Lecteur& l, const Tableau&) { lis_articles(l, c, r); });
    avec(Feuille::tables, [&](Lecteur& l, const Tableau&) { lis_tables(l, c); });
    avec(Feuille::menus, [&](Lecteur& l, const Tableau&) { lis_menus(l, c, r); });
    verifie_menus(r, constats);
    avec(Feuille::details, [&](Lecteur& l, const Tableau&) { lis_details(l, c); });
    avec(Feuille::touches, [&](Lecteur& l, const Tableau&) { lis_touches(l, c, r); });
    avec(Feuille::entete, [&](Lecteur& l, const Tableau&) { lis_entete(l, c); });
    return c;
}

}  // namespace lecture
