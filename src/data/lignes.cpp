#include "data/lignes.h"

#include <algorithm>

#include "data/nombres.h"
#include "platform/texte.h"

namespace lignes {
namespace {

constexpr std::string_view marque_quantite = "##QUA:", debut_marque = "##QUA";
constexpr std::size_t longueur_marque = 14;  ///< what a new validation cuts out, whatever the marker's real length
constexpr std::string_view debut_composants = "|¤¤"_t, fin_composant = "Ð"_t, avant_nombre = "ð"_t;
constexpr char cache = '\x01';

/// A stretch of a line between braces.
struct Plage {
    bool composition = false;
    std::size_t debut = 0, fin = 0;           ///< braces included
    std::size_t interieur = 0, longueur = 0;  ///< what stands between them
};

Plage plage_composition(std::string_view l, std::size_t i) {
    Plage p{true, i, 0, i + 2, 0};
    const auto fermante = l.find("}}", i + 2);
    const auto borne = fermante != std::string_view::npos ? fermante : std::min(l.find(marque_quantite, i), l.size());
    p.longueur = borne - p.interieur;
    p.fin = fermante != std::string_view::npos ? fermante + 2 : borne;
    return p;
}

Plage plage_segment(std::string_view l, std::size_t i) {
    const auto fermante = std::min(l.find('}', i + 1), l.size());
    return {false, i, std::min(fermante + 1, l.size()), i + 1, fermante - i - 1};
}

std::vector<Plage> plages(std::string_view l) {
    std::vector<Plage> r;
    for (std::size_t i = 0; i < l.size();) {
        i = l.find('{', i);
        if (i == std::string_view::npos) break;
        r.push_back(l.substr(i).starts_with("{{") ? plage_composition(l, i) : plage_segment(l, i));
        i = r.back().fin;
    }
    return r;
}

/// The line with all stretches between braces made unreadable; places stay.
std::string masque(std::string_view l) {
    std::string m(l);
    for (const Plage& p : plages(l))
        std::fill_n(m.begin() + static_cast<std::ptrdiff_t>(p.debut), p.fin - p.debut, cache);
    return m;
}

/// What follows a marker, nothing when the line has none.
std::optional<std::string_view> apres(std::string_view ligne, std::string_view marque) {
    // Most markers stand before the first brace: only then is the mask needed.
    const auto p = ligne.find(marque);
    if (p == std::string_view::npos) return std::nullopt;
    if (ligne.substr(0, p).find('{') == std::string_view::npos) return ligne.substr(p + marque.size());
    const auto q = masque(ligne).find(marque);
    if (q == std::string::npos) return std::nullopt;
    return ligne.substr(q + marque.size());
}

Composant lis_composant(std::string_view t) {
    Composant c;
    c.reference = texte::colonnes(t, 1, 15);
    std::string_view reste = texte::colonnes(t, 17);
    for (double* n : {&c.premier, &c.second}) {
        const auto p = reste.find(avant_nombre);
        if (p == std::string_view::npos) break;
        reste.remove_prefix(p + avant_nombre.size());
        *n = nombres::lis(reste);
    }
    return c;
}

std::string sans_marque(std::string_view ligne) {
    const auto p = masque(ligne).find(debut_marque);
    if (p == std::string::npos) return std::string(ligne);
    std::string r(ligne.substr(0, p));
    return r += ligne.substr(std::min(p + longueur_marque, ligne.size()));
}

/// Takes the remarks out: what precedes the first, and what follows the last. A composition between them stays.
std::string sans_segments(std::string_view ligne) {
    const auto toutes = plages(ligne);
    const auto est_segment = [](const Plage& p) { return !p.composition; };
    const auto premier = std::find_if(toutes.begin(), toutes.end(), est_segment);
    if (premier == toutes.end()) return std::string(ligne);
    const auto dernier = std::find_if(toutes.rbegin(), toutes.rend(), est_segment);
    std::string r(ligne.substr(0, premier->debut));
    for (auto p = premier; p->debut != dernier->debut; ++p) {
        if (p->composition) r += ligne.substr(p->debut, p->fin - p->debut);
    }
    return r += ligne.substr(dernier->fin);
}

}  // namespace

std::string_view reference(std::string_view ligne) {
    return texte::colonnes(ligne, 1, 15);
}

std::string_view libelle(std::string_view ligne) {
    const auto suite = apres(ligne, "|DES:");
    if (!suite) return {};
    const auto fin = std::min({suite->find('|'), suite->find(" ##QUA:"), suite->find('{'), suite->size()});
    return suite->substr(0, fin);
}

std::optional<double> prix(std::string_view ligne) {
    const auto suite = apres(ligne, "|PVE:");
    if (!suite) return std::nullopt;
    return nombres::lis(*suite);
}

std::string prix_affiche(std::string_view ligne) {
    const auto p = prix(ligne);
    return p ? nombres::montant(*p) : std::string();
}

int chiffre_couleur(std::string_view ligne) {
    const auto suite = apres(ligne, "|COU:");
    return suite ? nombres::entier_int(suite->substr(0, 1)) : 0;
}

std::optional<double> quantite(std::string_view ligne) {
    const auto suite = apres(ligne, marque_quantite);
    if (!suite) return std::nullopt;
    return nombres::lis(*suite);
}

std::optional<double> quantite_courte(std::string_view ligne) {
    const auto suite = apres(ligne, marque_quantite);
    if (!suite) return std::nullopt;
    return nombres::lis(suite->substr(0, 6));
}

std::vector<std::string> segments(std::string_view ligne) {
    std::vector<std::string> r;
    for (const Plage& p : plages(ligne)) {
        if (!p.composition) r.emplace_back(ligne.substr(p.interieur, p.longueur));
    }
    return r;
}

bool est_menu_compose(std::string_view ligne) {
    return apres(ligne, "FA2:99").has_value();
}
bool est_menu_a_prix_fixe(std::string_view ligne) {
    return apres(ligne, "FA2:98").has_value();
}

std::vector<Composant> composants(std::string_view ligne) {
    std::string m = masque(ligne);
    const auto debut = m.find(debut_composants);
    if (debut == std::string::npos) return {};
    std::erase(m, cache);
    std::string_view reste = std::string_view(m).substr(m.find(debut_composants) + debut_composants.size());
    std::vector<Composant> r;
    for (auto p = reste.find(fin_composant); p != std::string_view::npos; p = reste.find(fin_composant)) {
        r.push_back(lis_composant(reste.substr(0, p)));
        reste.remove_prefix(p + fin_composant.size());
    }
    return r;
}

std::optional<std::string_view> composition(std::string_view ligne) {
    for (const Plage& p : plages(ligne)) {
        if (p.composition) return ligne.substr(p.interieur, p.longueur);
    }
    return std::nullopt;
}

std::string validee(std::string_view ligne, double quantite, std::span<const std::string> remarques) {
    std::string r(texte::rogne(sans_marque(ligne)));
    r += " " + std::string(marque_quantite) + nombres::quantite(quantite) + "##";
    r = sans_segments(r);
    for (const std::string& remarque : remarques) {
        const auto t = texte::rogne(remarque);
        if (!t.empty()) r += "{" + std::string(t) + "}";
    }
    return r;
}

std::string neutralise(std::string_view remarque) {
    std::string r(remarque);
    std::replace(r.begin(), r.end(), '{', '(');
    std::replace(r.begin(), r.end(), '}', ')');
    std::replace(r.begin(), r.end(), '|', '/');
    return r;
}

}  // namespace lignes
