// From the restaurant's files back to the card.
#include <algorithm>
#include <array>
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

constexpr std::int32_t blanc = 0xFFFFFF;

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

}  // namespace

carte::Carte relis(const Fichiers& f) {
    carte::Carte c;
    prend_catalogue(c, f);
    if (f.styles && styles::est_initialise(*f.styles)) c.details = details_de(*f.styles);
    if (f.touches && f.touches->size() > programme_touches::longueur_vide) c.touches = touches_de(*f.touches, c);
    return c;
}

}  // namespace fabrication
