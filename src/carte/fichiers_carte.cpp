#include "carte/fichiers_carte.h"

#include <set>
#include <tuple>

#include "data/catalogue.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace fichiers_carte {
namespace {

using fichiers::Issue;
using programme_touches::Ligne;

constexpr std::uint64_t longueur_max = 64u << 20;

Issue ecrit_un(const std::string& chemin, const std::string& contenu,
               const std::function<void(const std::string&)>& dit) {
    std::string ancien;
    const bool meme = fichiers::lis_tout(chemin, ancien, longueur_max) == Issue::fait && ancien == contenu;
    if (!meme) {
        const Issue issue = fichiers::ecrit_tout(chemin, contenu, fichiers::Remplace::oui);
        if (issue != Issue::fait) return issue;
    }
    dit(texte::vers_utf8(chemin) + (meme ? " : inchangé" : " : écrit"));
    return Issue::fait;
}

bool dit_pareil(const Ligne& a, const Ligne& b) {
    if (a.visible() != b.visible()) return false;
    return !a.visible() || (a.libelle() == b.libelle() && a.action() == b.action() && a.image() == b.image() &&
                            a.marque() == b.marque() && a.taille() == b.taille() && a.largeur() == b.largeur() &&
                            a.hauteur() == b.hauteur() && a.couleur() == b.couleur());
}

std::string entre_guillemets(std::string_view page) {
    return "« " + texte::vers_utf8(page) + " »";
}

/// Place, family, label and colour of each sub-group's key.
using SousGroupes = std::vector<std::tuple<std::size_t, int, std::string_view, int>>;

SousGroupes sous_groupes(const std::vector<std::string_view>& records) {
    SousGroupes r;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (catalogue::est_sous_groupe(records[i]))
            r.emplace_back(i, catalogue::famille_du_sous_groupe(records[i]), texte::rogne(lignes::libelle(records[i])),
                           lignes::chiffre_couleur(records[i]));
    }
    return r;
}

void compare_familles(const catalogue::Tables& t, const catalogue::Tables& u, std::vector<std::string>& r) {
    const auto nom = [](const catalogue::Tables& de, std::size_t i) {
        return texte::rogne(catalogue::sans_couleur(de.noms_familles[i]));
    };
    for (std::size_t i = 0; i < t.noms_familles.size(); ++i) {
        const int n = static_cast<int>(i);
        const bool couleur = nom(t, i).empty() || catalogue::chiffre_famille(t, n) == catalogue::chiffre_famille(u, n);
        if (nom(t, i) != nom(u, i) || !couleur)
            r.push_back("famille " + std::to_string(n) + " : sera écrite autrement");
    }
    for (std::size_t i = 0; i < t.articles.size(); ++i) {
        if (sous_groupes(t.articles[i]) != sous_groupes(u.articles[i]))
            r.push_back("famille " + std::to_string(i) +
                        " : ses sous-groupes seront écrits autrement, ou derrière ses articles");
    }
}

void compare_catalogues(const fabrication::Fichiers& f, const fabrication::Fichiers& g, std::vector<std::string>& r) {
    const auto t = catalogue::depuis(f.entete, f.catalogue), u = catalogue::depuis(g.entete, g.catalogue);
    for (std::size_t i = 0; i < t->noms_serveurs.size(); ++i) {
        const int n = static_cast<int>(i);
        const auto nom = texte::rogne(t->noms_serveurs[i]);
        const bool couleur = nom.empty() || catalogue::chiffre_couleur(t->couleurs_serveurs, n) ==
                                                catalogue::chiffre_couleur(u->couleurs_serveurs, n);
        if (nom != texte::rogne(u->noms_serveurs[i]) || !couleur)
            r.push_back("serveur " + std::to_string(n) + " : " + entre_guillemets(nom) + " sera écrit autrement");
    }
    compare_familles(*t, *u, r);
    for (std::size_t i = 0; i < t->articles.size(); ++i) {
        const std::set<std::string_view> la(u->articles[i].begin(), u->articles[i].end());
        for (const auto record : t->articles[i]) {
            if (!la.contains(record) && !catalogue::est_sous_groupe(record))
                r.push_back("article " + entre_guillemets(lignes::libelle(record)) + ", famille " + std::to_string(i) +
                            " : sa fiche sera écrite autrement");
        }
    }
    if (t->nb_lignes_orvalune > 0 && t->lignes_orvalune != u->lignes_orvalune)
        r.push_back("en-tête : ses lignes seront écrites autrement");
    if (t->liste_tables != u->liste_tables) r.push_back("tables : leur liste sera écrite autrement");
}

void compare_styles(const std::string& f, const std::string& g, std::vector<std::string>& r) {
    const auto a = styles::depuis(f), b = styles::depuis(g);
    for (std::size_t code = 2; code < a.size(); ++code) {
        const bool pareil =
            a[code].libelle == b[code].libelle &&
            (a[code].libelle.empty() || (a[code].texte == b[code].texte && a[code].fond == b[code].fond));
        if (!pareil)
            r.push_back("détail " + std::to_string(code) + " : " + entre_guillemets(a[code].libelle) +
                        " sera écrit autrement");
    }
}

void compare_touches(const std::string& f, const std::string& g, std::vector<std::string>& r) {
    for (int page = 0; page < programme_touches::nb_pages; ++page) {
        for (int i = 1; i <= programme_touches::lignes_par_page; ++i) {
            const Ligne a = programme_touches::lis_dans(f, page, i), b = programme_touches::lis_dans(g, page, i);
            if (!dit_pareil(a, b))
                r.push_back("page " + std::to_string(page) + ", case " + std::to_string(i) + " : " +
                            entre_guillemets(a.libelle()) + " sera écrite autrement");
        }
    }
}

}  // namespace

std::pair<std::string, Issue> ecrit(std::string_view repertoire, const fabrication::Fichiers& f,
                                    const std::function<void(const std::string&)>& dit) {
    const struct {
        std::string_view nom;
        const std::string* contenu;
    } tous[] = {{styles::nom_fichier, f.styles ? &*f.styles : nullptr},
                {programme_touches::nom_fichier, f.touches ? &*f.touches : nullptr},
                {catalogue::fichier_entete, &f.entete},
                {catalogue::fichier_catalogue, &f.catalogue}};
    for (const auto& [nom, contenu] : tous) {
        const std::string chemin = fichiers::joint(repertoire, nom);
        const Issue issue = contenu == nullptr ? Issue::fait : ecrit_un(chemin, *contenu, dit);
        if (issue != Issue::fait) return {chemin, issue};
    }
    return {"", Issue::fait};
}

std::pair<std::string, Issue> lis(std::string_view repertoire, fabrication::Fichiers& vers) {
    const auto prend = [&](std::string_view nom, std::string& contenu) {
        return fichiers::lis_tout(fichiers::joint(repertoire, nom), contenu, longueur_max);
    };
    const auto peut_manquer = [&](std::string_view nom, std::optional<std::string>& contenu) {
        std::string t;
        const Issue issue = prend(nom, t);
        if (issue == Issue::fait) contenu = std::move(t);
        return issue == Issue::absent ? Issue::fait : issue;
    };
    std::optional<std::string> entete;
    const std::pair<std::string_view, Issue> issues[] = {
        {catalogue::fichier_catalogue, prend(catalogue::fichier_catalogue, vers.catalogue)},
        {catalogue::fichier_entete, peut_manquer(catalogue::fichier_entete, entete)},
        {styles::nom_fichier, peut_manquer(styles::nom_fichier, vers.styles)},
        {programme_touches::nom_fichier, peut_manquer(programme_touches::nom_fichier, vers.touches)}};
    vers.entete = entete.value_or("");
    for (const auto& [nom, issue] : issues) {
        if (issue != Issue::fait) return {fichiers::joint(repertoire, nom), issue};
    }
    return {"", Issue::fait};
}

std::vector<std::string> differences(const fabrication::Fichiers& f, const fabrication::Fichiers& g) {
    std::vector<std::string> r;
    compare_catalogues(f, g, r);
    if (f.styles && g.styles) compare_styles(*f.styles, *g.styles, r);
    if (f.touches && g.touches) compare_touches(*f.touches, *g.touches, r);
    return r;
}

}  // namespace fichiers_carte
