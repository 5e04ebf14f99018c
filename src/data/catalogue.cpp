#include "data/catalogue.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace catalogue {
namespace {

constexpr std::string_view marque_sous_groupe = "#SG#", avant_couleur = "|COU:";
constexpr std::size_t chiffres_sous_groupe = 4;
constexpr std::size_t longueur_marque = 6, longueur_reference = 13;
constexpr int lignes_entete_gardees = 15;

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
        if (t.nb_lignes_orvalune <= lignes_entete_gardees) {
            t.lignes_orvalune[static_cast<std::size_t>(t.nb_lignes_orvalune)] = ligne;
        }
        if (ligne.starts_with("#DIR#")) t.rep_catalogue = texte::colonnes(ligne, 6);
    });
}

/// The number that was named; nothing when it is beyond those that may be.
template <std::size_t N>
std::optional<int> pose_nom(std::array<std::string, N>& noms, std::string_view ligne) {
    const double n = nombres::entier(texte::colonnes(ligne, 7, 2));
    if (n < 0 || n >= static_cast<double>(N)) return std::nullopt;
    noms[static_cast<std::size_t>(n)] = texte::colonnes(ligne, 10);
    return static_cast<int>(n);
}

void prend_serveur(Tables& t, std::string_view ligne) {
    pose_nom(t.noms_serveurs, ligne);
}
void prend_famille(Tables& t, std::string_view ligne) {
    const auto n = pose_nom(t.noms_familles, ligne);
    if (n && std::find(t.ordre_familles.begin(), t.ordre_familles.end(), *n) == t.ordre_familles.end())
        t.ordre_familles.push_back(*n);
}

void prend_article(Tables& t, std::string_view ligne) {
    const auto p = ligne.find("|FA1:");
    const double f = p == std::string_view::npos ? 0 : nombres::entier(ligne.substr(p + 5));
    if (f < 0 || f > familles_max) return;
    const auto famille = static_cast<std::size_t>(f);
    augmente(t.nb_articles[famille]);
    if (t.nb_articles[famille] <= places_max) t.articles[famille].push_back(texte::colonnes(ligne, 12));
}

void prend_table(Tables& t, std::string_view ligne) {
    t.liste_tables += nombres::entier_complete(nombres::entier(texte::colonnes(ligne, 7, 3)), 3) + "|";
}

std::string couleurs(std::string_view ligne) {
    return std::string(texte::colonnes(ligne, 7)) + std::string(20, ' ');
}
void prend_couleurs_familles(Tables& t, std::string_view ligne) {
    t.couleurs_familles = couleurs(ligne);
}
void prend_couleurs_serveurs(Tables& t, std::string_view ligne) {
    t.couleurs_serveurs = couleurs(ligne);
}

struct Genre {
    std::string_view marque;
    void (*prend)(Tables&, std::string_view);
};
/// Articles first: nearly all lines are.
constexpr Genre genres[] = {
    {"#ARTI#", prend_article}, {"#SERV#", prend_serveur},           {"#FAMI#", prend_famille},
    {"#TABL#", prend_table},   {"#CCOF#", prend_couleurs_familles}, {"#CCOU#", prend_couleurs_serveurs},
};

}  // namespace

std::unique_ptr<Tables> depuis(std::string_view entete, std::string catalogue) {
    auto t = std::make_unique<Tables>();
    t->couleurs_familles = t->couleurs_serveurs = std::string(20, ' ');
    prend_entete(*t, entete);
    const auto contenu = std::make_shared<const std::string>(std::move(catalogue));
    t->contenu = contenu;
    pour_chaque_ligne(*contenu, [&t](std::string_view ligne) {
        const std::string_view marque = ligne.substr(0, longueur_marque);
        for (const Genre& g : genres) {
            if (g.marque == marque) return g.prend(*t, ligne);
        }
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
    auto t = depuis(entete, std::move(contenu));
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
    if (famille < 0 || famille > familles_max) return {};
    const auto& articles = courant().articles[static_cast<std::size_t>(famille)];
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
    if (n < 0 || n > familles_nommees_max) return 0;
    const std::string_view nom = courant().noms_familles[static_cast<std::size_t>(n)];
    const auto p = nom.find(avant_couleur);
    return p == std::string_view::npos ? chiffre_couleur(courant().couleurs_familles, n)
                                       : nombres::entier_int(nom.substr(p + avant_couleur.size()));
}

bool table_connue(std::string_view numero) {
    return texte::contient(courant().liste_tables, std::string(numero) + "|");
}

std::vector<std::string> tables() {
    std::vector<std::string> r;
    std::string_view reste = std::string_view(courant().liste_tables).substr(3);
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
    const auto n = texte::colonnes(record, marque_sous_groupe.size() + 1, chiffres_sous_groupe);
    return std::clamp(premier_sous_groupe + nombres::entier_int(n), 0, familles_max);
}

std::string_view sans_couleur(std::string_view nom_de_famille) {
    return nom_de_famille.substr(0, nom_de_famille.find(avant_couleur));
}

std::string complete_article(std::string_view debut) {
    while (debut.ends_with(' ')) debut.remove_suffix(1);
    if (debut.size() < longueur_reference) return std::string(debut);
    std::string_view complet = debut;
    for (const auto& famille : courant().articles) {
        for (const std::string_view article : famille) {
            if (!article.starts_with(debut)) continue;
            if (article == debut) return std::string(debut);
            if (complet == debut) complet = article;
        }
    }
    return std::string(complet);
}

}  // namespace catalogue
