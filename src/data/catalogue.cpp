#include "data/catalogue.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "data/lignes.h"
#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace catalogue {
namespace {

constexpr std::string_view marque_sous_groupe = "#SG#";
constexpr std::size_t chiffres_sous_groupe = 4;
constexpr std::size_t longueur_marque = colonne_numero - 1;

/// How the lines of a kind are laid out: behind the marker so many digits of number, and the text from a column on.
struct Forme {
    Genre genre;
    std::string_view marque;
    std::size_t chiffres, colonne_texte;
};
/// Articles first: nearly all lines are. Their digits, the place in the file, are never read.
constexpr Forme formes[] = {
    {Genre::article, "#ARTI#", 5, 12},          {Genre::serveur, "#SERV#", 2, 10},
    {Genre::famille, "#FAMI#", 2, 10},          {Genre::table, "#TABL#", 3, 10},
    {Genre::couleurs_familles, "#CCOF#", 0, 7}, {Genre::couleurs_serveurs, "#CCOU#", 0, 7},
};

std::unique_ptr<Tables> tables_courantes = std::make_unique<Tables>();

/// Calls `prend` for each line: everything up to CR LF, LF or the end.
template <typename Prend>
void pour_chaque_ligne(std::string_view contenu, Prend prend) {
    while (!contenu.empty()) {
        const auto fin = std::min(contenu.find('\n'), contenu.size());
        std::string_view ligne = contenu.substr(0, fin);
        if (ligne.ends_with('\r')) ligne.remove_suffix(1);
        prend(ligne);
        contenu.remove_prefix(std::min(fin + 1, contenu.size()));
    }
}

void augmente(std::int16_t& n) {
    if (n < std::numeric_limits<std::int16_t>::max()) ++n;
}

void prend_entete(Tables& t, std::string_view contenu) {
    pour_chaque_ligne(contenu, [&t](std::string_view ligne) {
        if (texte::rogne(ligne).empty()) return;
        augmente(t.nb_lignes_orvalune);
        const auto rang = static_cast<std::size_t>(t.nb_lignes_orvalune);
        if (rang <= lignes_entete_gardees) t.lignes_orvalune[rang] = ligne;
        if (ligne.starts_with("#DIR#")) t.rep_catalogue = texte::colonnes(ligne, 6);
    });
}

template <std::size_t N>
Sort pose_nom(std::array<std::string, N>& noms, const Ligne& l) {
    if (l.numero < 0 || l.numero >= static_cast<double>(N)) return Sort::hors_bornes;
    std::string& nom = noms[static_cast<std::size_t>(l.numero)];
    const bool pris = !nom.empty();
    nom = l.texte;
    return pris ? Sort::remplace : Sort::prise;
}

Sort pose_famille(Tables& t, const Ligne& l) {
    const Sort sort = pose_nom(t.noms_familles, l);
    const auto n = sort == Sort::prise ? static_cast<int>(l.numero) : -1;
    auto& ordre = t.ordre_familles;
    if (n >= 0 && std::find(ordre.begin(), ordre.end(), n) == ordre.end()) ordre.push_back(n);
    return sort;
}

Sort pose_article(Tables& t, const Ligne& l) {
    if (l.numero < 0 || l.numero > familles_max) return Sort::hors_bornes;
    const auto famille = static_cast<std::size_t>(l.numero);
    augmente(t.nb_articles[famille]);
    if (t.nb_articles[famille] > places_max) return Sort::en_trop;
    t.articles[famille].push_back(l.texte);
    return Sort::prise;
}

Sort pose_table(Tables& t, const Ligne& l) {
    t.liste_tables += nombres::entier_complete(l.numero, 3) + "|";
    return Sort::prise;
}

Sort pose_couleurs(std::string& couleurs, const Ligne& l) {
    const bool prises = !texte::rogne(couleurs).empty();
    couleurs = std::string(l.texte) + std::string(20, ' ');
    return prises ? Sort::remplace : Sort::prise;
}

Sort range(Tables& t, const Ligne& l) {
    switch (l.genre) {
        case Genre::article:
            return pose_article(t, l);
        case Genre::serveur:
            return pose_nom(t.noms_serveurs, l);
        case Genre::famille:
            return pose_famille(t, l);
        case Genre::table:
            return pose_table(t, l);
        case Genre::couleurs_familles:
            return pose_couleurs(t.couleurs_familles, l);
        case Genre::couleurs_serveurs:
            return pose_couleurs(t.couleurs_serveurs, l);
        case Genre::autre:
            break;
    }
    return Sort::ignoree;
}

}  // namespace

std::size_t chiffres_du_numero(Genre genre) {
    const auto* const f =
        std::find_if(std::begin(formes), std::end(formes), [=](const Forme& x) { return x.genre == genre; });
    return f == std::end(formes) ? 0 : f->chiffres;
}

Ligne lis_ligne(std::string_view ligne) {
    const std::string_view marque = ligne.substr(0, longueur_marque);
    for (const Forme& f : formes) {
        if (f.marque != marque) continue;
        const auto p = f.genre == Genre::article ? ligne.find(lignes::champ_famille) : std::string_view::npos;
        const std::string_view numero = f.genre != Genre::article ? texte::colonnes(ligne, colonne_numero, f.chiffres)
                                        : p == std::string_view::npos ? ""
                                                                      : ligne.substr(p + lignes::champ_famille.size());
        return {f.genre, nombres::entier(numero), texte::colonnes(ligne, f.colonne_texte)};
    }
    return {Genre::autre, 0, ligne};
}

std::string ecrit_ligne(const Ligne& ligne) {
    std::string r;
    for (const Forme& f : formes) {
        if (f.genre != ligne.genre) continue;
        r = f.marque;
        if (f.chiffres > 0) r += nombres::entier_complete(ligne.numero, static_cast<int>(f.chiffres));
        r = texte::complete(r, f.colonne_texte - 1);
    }
    return r + std::string(ligne.texte) + "\r\n";
}

std::unique_ptr<Tables> depuis(std::string entete, std::string catalogue, const Temoin& temoin) {
    auto t = std::make_unique<Tables>();
    t->couleurs_familles = t->couleurs_serveurs = std::string(20, ' ');
    t->entete = std::make_shared<const std::string>(std::move(entete));
    t->contenu = std::make_shared<const std::string>(std::move(catalogue));
    prend_entete(*t, *t->entete);
    pour_chaque_ligne(*t->contenu, [&](std::string_view brute) {
        const Ligne l = lis_ligne(brute);
        const Sort sort = range(*t, l);
        if (temoin) temoin(brute, l, sort);
    });
    return t;
}

std::unique_ptr<Tables> lis() {
    const auto prend = [](std::string_view nom, std::string& contenu) {
        return tenus::note(nom, fichiers::lis_tout(nom, contenu)) == fichiers::Issue::fait;
    };
    std::string entete, contenu;
    prend(fichier_entete, entete);
    const bool lu = prend(fichier_catalogue, contenu);
    auto t = depuis(std::move(entete), std::move(contenu));
    t->lu = lu;
    return t;
}

void charge_catalogue() {
    if (tenus::attend(fichier_entete) || tenus::attend(fichier_catalogue)) return;
    auto neuves = lis();
    if (neuves->lu || !tables_courantes->lu) tables_courantes = std::move(neuves);
    catalogue_charge = !tenus::est_tenu(fichier_entete) && !tenus::est_tenu(fichier_catalogue);
}

const Tables& courant() {
    return *tables_courantes;
}

std::span<const std::string_view> articles_de(int famille) {
    return articles_de(courant(), famille);
}

std::span<const std::string_view> articles_de(const Tables& tables, int famille) {
    if (famille < 0 || famille > familles_max) return {};
    const auto& articles = tables.articles[static_cast<std::size_t>(famille)];
    const auto fin =
        std::find_if(articles.begin(), articles.end(), [](std::string_view a) { return texte::rogne(a).empty(); });
    return {articles.begin(), fin};
}

bool a_des_serveurs() {
    const auto& noms = courant().noms_serveurs;
    return std::any_of(noms.begin(), noms.end(), [](const std::string& nom) { return !texte::rogne(nom).empty(); });
}

int chiffre_couleur(std::string_view couleurs, int n) {
    return n < 0 ? 0 : nombres::entier_int(texte::colonnes(couleurs, static_cast<std::size_t>(n) + 1, 1));
}

int chiffre_famille(int n) {
    return chiffre_famille(courant(), n);
}

int chiffre_famille(const Tables& tables, int n) {
    if (n < 0 || n > familles_nommees_max) return 0;
    const std::string_view nom = tables.noms_familles[static_cast<std::size_t>(n)];
    const auto p = nom.find(lignes::champ_couleur);
    return p == std::string_view::npos ? chiffre_couleur(tables.couleurs_familles, n)
                                       : nombres::entier_int(nom.substr(p + lignes::champ_couleur.size()));
}

bool table_connue(std::string_view numero) {
    return texte::contient(courant().liste_tables, std::string(numero) + "|");
}

std::vector<std::string> tables() {
    return tables(courant());
}

std::vector<std::string> tables(const Tables& t) {
    std::vector<std::string> r;
    std::string_view reste = std::string_view(t.liste_tables).substr(3);
    for (auto p = reste.find('|'); p != std::string_view::npos; p = reste.find('|')) {
        r.emplace_back(reste.substr(0, p));
        reste.remove_prefix(p + 1);
    }
    return r;
}

bool est_sous_groupe(std::string_view record) {
    return record.starts_with(marque_sous_groupe);
}

int famille_du_sous_groupe(std::string_view record) {
    const auto numero = texte::colonnes(record, marque_sous_groupe.size() + 1, chiffres_sous_groupe);
    return premier_sous_groupe + static_cast<int>(std::clamp(nombres::entier(numero), -30000.0, 30000.0));
}

std::string debut_de_sous_groupe(int famille) {
    return std::string(marque_sous_groupe) +
           nombres::entier_complete(famille - premier_sous_groupe, static_cast<int>(chiffres_sous_groupe));
}

std::string_view sans_couleur(std::string_view nom_de_famille) {
    return nom_de_famille.substr(0, nom_de_famille.find(lignes::champ_couleur));
}

std::string complete_article(std::string_view debut) {
    return complete_article(courant(), debut);
}

std::string complete_article(const Tables& tables, std::string_view debut) {
    while (debut.ends_with(' ')) debut.remove_suffix(1);
    if (debut.size() < lignes::longueur_reference) return std::string(debut);
    std::string_view complet = debut;
    for (const auto& famille : tables.articles) {
        for (const std::string_view article : famille) {
            if (!article.starts_with(debut)) continue;
            if (article == debut) return std::string(debut);
            if (complet == debut) complet = article;
        }
    }
    return std::string(complet);
}

}  // namespace catalogue
