// The way back: from the restaurant's files to the card, and from it to the rows of the sheets.
#include <algorithm>
#include <map>
#include <utility>

#include "carte/cases.h"
#include "carte/fabrication.h"
#include "data/catalogue.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace fabrication {
namespace {

using catalogue::Genre;
using programme_touches::Champ;
namespace marque = programme_touches::marque;

constexpr std::int32_t blanc = 0xFFFFFF, noir = 0;

/// Puts a named entry in the place of an earlier one of its number.
template <typename Nomme>
void pose(std::vector<Nomme>& nommes, Nomme n) {
    const auto i = std::find_if(nommes.begin(), nommes.end(), [&](const auto& x) { return x.numero == n.numero; });
    if (i == nommes.end())
        nommes.push_back(std::move(n));
    else
        *i = std::move(n);
}

std::vector<lignes::Service> services_de(std::string_view record) {
    auto r = lignes::services(lignes::composition(record).value_or(""));
    for (auto& s : r) {
        while (s.choix.back().empty()) s.choix.pop_back();
        s.references.resize(s.choix.size());
    }
    return r;
}

carte::Article article_de(std::string_view record, int famille) {
    carte::Article a;
    a.reference = texte::rogne(record.substr(0, lignes::longueur_reference));
    a.libelle = texte::rogne(lignes::libelle(record));
    a.prix = lignes::prix(record).value_or(0);
    a.famille = famille;
    a.chiffre = lignes::chiffre_couleur(record);
    if (lignes::est_menu_a_prix_fixe(record)) {
        a.menu = carte::Menu::prix_fixe;
        a.services = services_de(record);
    } else if (lignes::est_menu_compose(record)) {
        a.menu = carte::Menu::compose;
        a.composants = lignes::composants(record);
        for (auto& c : a.composants) c.reference = texte::rogne(c.reference);
    } else {
        a.impression = lignes::seconde_famille(record).value_or(0);
    }
    return a;
}

void prend_article(carte::Carte& c, const catalogue::Ligne& l) {
    const int famille = static_cast<int>(l.numero);
    if (!catalogue::est_sous_groupe(l.texte)) return c.articles.push_back(article_de(l.texte, famille));
    const int numero = catalogue::famille_du_sous_groupe(l.texte);
    pose(c.familles, carte::Famille{numero, std::string(texte::rogne(lignes::libelle(l.texte))),
                                    lignes::chiffre_couleur(l.texte), famille});
}

void prend_ligne(carte::Carte& c, const catalogue::Ligne& l, catalogue::Sort sort) {
    if (sort != catalogue::Sort::prise && sort != catalogue::Sort::remplace) return;
    const int numero = static_cast<int>(l.numero);
    if (l.genre == Genre::article) prend_article(c, l);
    if (l.genre == Genre::table) c.tables.push_back(numero);
    if (l.genre == Genre::serveur) pose(c.serveurs, carte::Serveur{numero, std::string(texte::rogne(l.texte)), 0});
    if (l.genre != Genre::famille) return;
    const auto champ = l.texte.find(lignes::champ_couleur);
    pose(c.familles, carte::Famille{numero, std::string(texte::rogne(l.texte.substr(0, champ))), 0, std::nullopt});
}

void prend_catalogue(carte::Carte& c, const Fichiers& f) {
    const auto t = catalogue::depuis(
        f.entete, f.catalogue,
        [&c](std::string_view, const catalogue::Ligne& l, catalogue::Sort sort) { prend_ligne(c, l, sort); });
    for (int i = 1; i <= std::min<int>(t->nb_lignes_orvalune, catalogue::lignes_entete_gardees); ++i)
        c.entete.push_back(t->lignes_orvalune[static_cast<std::size_t>(i)]);
    for (auto& s : c.serveurs) s.chiffre = catalogue::chiffre_couleur(t->couleurs_serveurs, s.numero);
    for (auto& x : c.familles) {
        if (!x.parent) x.chiffre = catalogue::chiffre_famille(*t, x.numero);
    }
    std::erase_if(c.serveurs, [](const auto& s) { return s.nom.empty(); });
    std::erase_if(c.familles, [](const auto& x) { return x.nom.empty(); });
}

/// A category begins at the top of its column, or, behind a gap, at a row with a ground of its own.
std::vector<carte::Detail> details_de(std::string_view contenu) {
    const auto choix = styles::depuis(contenu);
    std::vector<carte::Detail> r;
    std::string categorie;
    for (int colonne = 0; colonne < styles::categories; ++colonne) {
        bool vide = true, trou = false;
        for (int i = 0; i < styles::choix_par_categorie; ++i) {
            const int code = styles::premier_code(colonne) + i;
            const styles::Style& s = choix[static_cast<std::size_t>(code)];
            if (!s.libelle.empty() && (vide || (trou && s.fond != blanc))) categorie = s.libelle;
            trou = s.libelle.empty();
            if (trou) continue;
            vide = false;
            r.push_back({code, categorie, s});
        }
    }
    return r;
}

bool que_des_chiffres(std::string_view t) {
    return cases::nombre_entier(t).has_value();
}

/// What the key does, in the sheets' words where these say the same.
void lis_action(carte::Touche& t, std::string_view action, const carte::Carte& c) {
    const std::string_view genre = action.substr(0, marque::longueur),
                           argument = texte::rogne(texte::colonnes(action, marque::longueur + 1));
    const auto famille = [&c](int n, bool groupe) {
        return std::any_of(c.familles.begin(), c.familles.end(),
                           [&](const auto& f) { return f.numero == n && (!groupe || f.parent); });
    };
    t.texte = action.starts_with('#') && action.size() >= marque::longueur ? action : marque::inerte;
    if (genre == marque::page && que_des_chiffres(argument)) {
        t.nombre = nombres::entier_int(argument);
        if (t.nombre < programme_touches::nb_pages) t.acte = carte::Acte::page;
    } else if (genre == marque::famille && que_des_chiffres(argument)) {
        t.nombre = nombres::entier_int(argument);
        if (famille(t.nombre, false)) t.acte = carte::Acte::famille;
    } else if (genre == marque::article && catalogue::est_sous_groupe(argument)) {
        t.nombre = catalogue::famille_du_sous_groupe(argument);
        if (famille(t.nombre, true)) t.acte = carte::Acte::sous_groupe;
    } else if (genre == marque::article) {
        const std::string reference(argument.substr(0, lignes::longueur_reference));
        if (std::none_of(c.articles.begin(), c.articles.end(), [&](const auto& a) { return a.reference == reference; }))
            return;
        t.acte = carte::Acte::article;
        t.texte = reference;
    }
}

carte::Touche touche_de(int page, int numero, const programme_touches::Ligne& l, const carte::Carte& c) {
    carte::Touche t;
    t.page = page;
    t.numero = numero;
    t.libelle = l.libelle();
    if (numero == programme_touches::ligne_des_titres) {
        t.texte = l.action();
        return t;
    }
    lis_action(t, l.action(), c);
    t.image = l.image();
    t.marque = l.marque();
    t.taille = l.taille();
    if (!l.champ(Champ::lh).empty()) t.largeur = l.largeur(), t.hauteur = l.hauteur();
    t.couleur = l.couleur();
    return t;
}

std::vector<carte::Touche> touches_de(std::string_view contenu, const carte::Carte& c) {
    std::vector<carte::Touche> r;
    for (int page = 0; page < programme_touches::nb_pages; ++page) {
        const auto titres = programme_touches::lis_dans(contenu, page, programme_touches::ligne_des_titres);
        if (!titres.libelle().empty() || !titres.action().empty())
            r.push_back(touche_de(page, programme_touches::ligne_des_titres, titres, c));
        for (int i = 1; i <= programme_touches::lignes_par_page; ++i) {
            const auto l = programme_touches::lis_dans(contenu, page, i);
            if (l.visible()) r.push_back(touche_de(page, i, l, c));
        }
    }
    return r;
}

// The rows.

using tableaux::Feuille;
using Rangee = std::vector<std::string>;
using Rangees = std::vector<Rangee>;

constexpr int suite_min = 3;  ///< so many tables in a row are written as one

/// Nothing for 0.
std::string nombre(int n) {
    return n == 0 ? std::string() : std::to_string(n);
}

Rangees serveurs(const carte::Carte& c) {
    Rangees r;
    for (const auto& s : c.serveurs) r.push_back({std::to_string(s.numero), s.nom, cases::chiffre_ecrit(s.chiffre)});
    return r;
}

Rangees familles(const carte::Carte& c) {
    Rangees r;
    for (const bool groupes : {false, true}) {
        for (const auto& f : c.familles) {
            if (f.parent.has_value() != groupes) continue;
            r.push_back({std::to_string(f.numero), f.nom, cases::chiffre_ecrit(f.chiffre),
                         f.parent ? std::to_string(*f.parent) : ""});
        }
    }
    return r;
}

Rangees articles(const carte::Carte& c) {
    Rangees r;
    for (const auto& a : c.articles) {
        const std::string_view menu = a.menu == carte::Menu::prix_fixe ? "prix fixe"
                                      : a.menu == carte::Menu::compose ? "composé"_t
                                                                       : "";
        r.push_back({a.reference, a.libelle, cases::prix_ecrit(a.prix), std::to_string(a.famille),
                     cases::chiffre_ecrit(a.chiffre), std::string(menu), nombre(a.impression)});
    }
    return r;
}

Rangees tables(const carte::Carte& c) {
    Rangees r;
    for (std::size_t i = 0; i < c.tables.size();) {
        std::size_t fin = i + 1;
        while (fin < c.tables.size() && c.tables[fin] == c.tables[fin - 1] + 1) ++fin;
        if (fin - i < suite_min) fin = i + 1;
        const std::string premiere = std::to_string(c.tables[i]);
        r.push_back({fin - i == 1 ? premiere : premiere + "-" + std::to_string(c.tables[fin - 1])});
        i = fin;
    }
    return r;
}

Rangees menus(const carte::Carte& c) {
    Rangees r;
    for (const auto& a : c.articles) {
        for (const auto& s : a.services) {
            for (std::size_t i = 0; i < s.choix.size(); ++i)
                r.push_back({a.reference, s.nom, s.references[i].empty() ? s.choix[i] : s.references[i]});
        }
        for (const auto& k : a.composants)
            r.push_back({a.reference, "", k.reference, k.second == 1 ? "" : nombres::general(k.second),
                         k.premier == 0 ? "" : cases::prix_ecrit(k.premier)});
    }
    return r;
}

/// The code is written only where a row does not follow from the one before.
Rangees details(const carte::Carte& c) {
    Rangees r;
    std::map<std::string, int> suivants;
    int colonne_libre = 0;
    for (const auto& d : c.details.value_or(std::vector<carte::Detail>())) {
        const int attendu = suivants.try_emplace(d.categorie, styles::premier_code(colonne_libre)).first->second;
        r.push_back({d.categorie, d.style.libelle, d.style.fond == blanc ? "" : cases::couleur_ecrite(d.style.fond),
                     d.style.texte == noir ? "" : cases::couleur_ecrite(d.style.texte),
                     d.code == attendu ? "" : std::to_string(d.code)});
        suivants[d.categorie] = d.code + 1;
        colonne_libre = std::max(colonne_libre, d.code / styles::records_par_categorie);
    }
    return r;
}

std::string action(const carte::Touche& t) {
    switch (t.acte) {
        case carte::Acte::famille:
            return "famille " + std::to_string(t.nombre);
        case carte::Acte::page:
            return "page " + std::to_string(t.nombre);
        case carte::Acte::sous_groupe:
            return "sous-groupe " + std::to_string(t.nombre);
        case carte::Acte::article:
            return "article " + t.texte;
        case carte::Acte::code:
            break;
    }
    return t.texte;
}

Rangees touches(const carte::Carte& c) {
    Rangees r;
    for (const auto& t : c.touches.value_or(std::vector<carte::Touche>())) {
        if (t.numero == programme_touches::ligne_des_titres) {
            r.push_back({std::to_string(t.page), "titre", t.libelle, t.texte});
            continue;
        }
        r.push_back({std::to_string(t.page), std::to_string(t.numero), t.libelle, action(t),
                     cases::image_ecrite(t.image, t.marque), nombre(t.taille), nombre(t.largeur), nombre(t.hauteur),
                     t.couleur < 0 ? "" : cases::couleur_ecrite(t.couleur)});
    }
    return r;
}

Rangees entete(const carte::Carte& c) {
    Rangees r;
    if (c.entete == carte::entete_par_defaut) return r;
    for (const std::string& l : c.entete) r.push_back({l});
    return r;
}

}  // namespace

carte::Carte relis(const Fichiers& f) {
    carte::Carte c;
    prend_catalogue(c, f);
    if (f.styles && styles::est_initialise(*f.styles)) c.details = details_de(*f.styles);
    if (f.touches && f.touches->size() > programme_touches::longueur_vide) c.touches = touches_de(*f.touches, c);
    return c;
}

Rangees rangees(const carte::Carte& c, Feuille feuille) {
    constexpr Rangees (*ecrivains[tableaux::nb_feuilles])(const carte::Carte&) = {serveurs, familles, articles, tables,
                                                                                  menus,    details,  touches,  entete};
    return ecrivains[static_cast<std::size_t>(feuille)](c);
}

}  // namespace fabrication
