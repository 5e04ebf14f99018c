#include "data/lignes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace lignes {
namespace {

constexpr std::string_view marque_quantite = "##QUA:", debut_marque = "##QUA";
constexpr std::size_t longueur_marque = 14;  ///< what a new validation cuts out, whatever the marker's real length
constexpr std::size_t longueur_bloc = 15;    ///< the reference and two blanks, as the order file takes them
constexpr std::string_view debut_composants = "|¤¤"_t, fin_composant = "Ð"_t, avant_nombre = "ð"_t;
constexpr std::string_view apres_nom = "µ"_t, apres_choix = "¦"_t;
constexpr std::string_view syntaxe = "{}|", remplacants = "()/";
constexpr char cache_segment = '\x01', cache_composition = '\x02';

/// A stretch of a line between braces.
struct Plage {
    bool composition = false;
    std::size_t debut = 0, fin = 0;           ///< braces included
    std::size_t interieur = 0, longueur = 0;  ///< what stands between them
};

/// `ferme`: whether "}}" follows; asked once for a whole line, since looking for it in vain costs the line's length.
Plage plage_composition(std::string_view l, std::size_t i, bool ferme) {
    Plage p{true, i, 0, i + 2, 0};
    auto borne = ferme ? l.find("}}", i + 2) : std::min(l.find(marque_quantite, i), l.size());
    while (!ferme && l[borne - 1] == ' ') --borne;  // the blank belongs to the marker
    p.longueur = borne - p.interieur;
    p.fin = ferme ? borne + 2 : borne;
    return p;
}

Plage plage_segment(std::string_view l, std::size_t i) {
    const auto fermante = std::min(l.find('}', i + 1), l.size());
    return {false, i, std::min(fermante + 1, l.size()), i + 1, fermante - i - 1};
}

std::vector<Plage> plages(std::string_view l) {
    const auto derniere = l.rfind("}}");
    std::vector<Plage> r;
    for (std::size_t i = 0; i < l.size();) {
        i = l.find('{', i);
        if (i == std::string_view::npos) break;
        const bool ferme = derniere != std::string_view::npos && derniere >= i + 2;
        r.push_back(l.substr(i).starts_with("{{") ? plage_composition(l, i, ferme) : plage_segment(l, i));
        i = r.back().fin;
    }
    return r;
}

/// The line with all stretches between braces made unreadable; places stay.
std::string masque(std::string_view l) {
    std::string m(l);
    std::replace_if(
        m.begin(), m.end(), [](char c) { return c == cache_segment || c == cache_composition; }, '?');
    for (const Plage& p : plages(l)) {
        const char cache = p.composition ? cache_composition : cache_segment;
        std::fill_n(m.begin() + static_cast<std::ptrdiff_t>(p.debut), p.fin - p.debut, cache);
    }
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
    c.reference = texte::colonnes(t, 1, longueur_bloc);
    std::string_view reste = texte::colonnes(t, 17);
    c.libelle = reste.substr(0, reste.find(avant_nombre));
    for (double* n : {&c.premier, &c.second}) {
        const auto p = reste.find(avant_nombre);
        if (p == std::string_view::npos) break;
        reste.remove_prefix(p + avant_nombre.size());
        *n = nombres::lis(reste);
    }
    return c;
}

/// Takes the quantity marker out of a line, and what stands in its place in the line's mask.
void retire_marque(std::string& ligne, std::string& masque) {
    const auto p = masque.find(debut_marque);
    if (p == std::string::npos) return;
    ligne.erase(p, longueur_marque);
    masque.erase(p, longueur_marque);
}

/// As texte::rogne(), on a line and its mask alike; a remark's own blanks stay.
void rogne_ensemble(std::string& ligne, std::string& masque) {
    const auto debut = std::min(masque.find_first_not_of(' '), masque.size());
    const auto fin = masque.find_last_not_of(' ') + 1;  // npos + 1 is 0
    ligne = ligne.substr(debut, std::max(debut, fin) - debut);
    masque = masque.substr(debut, std::max(debut, fin) - debut);
}

/// Takes the remarks out with what stands between them; compositions stay.
std::string sans_segments(std::string_view ligne, std::string_view masque) {
    const auto premier = masque.find(cache_segment), dernier = masque.rfind(cache_segment);
    if (premier == std::string_view::npos) return std::string(ligne);
    std::string r(ligne.substr(0, premier));
    for (std::size_t i = premier; i <= dernier; ++i) {
        if (masque[i] == cache_composition) r += ligne[i];
    }
    return r += ligne.substr(dernier + 1);
}

/// Takes "reference|label"; without "|" the whole text is the label.
void prend_un_choix(Service& s, std::string_view choix) {
    const auto barre = choix.find('|');
    const bool sans = barre == std::string_view::npos;
    s.references.emplace_back(sans ? "" : texte::rogne(choix.substr(0, barre)));
    s.choix.emplace_back(texte::rogne(sans ? choix : choix.substr(barre + 1)));
}

bool a_des_choix(const Service& s) {
    return std::any_of(s.choix.begin(), s.choix.end(), [](const std::string& c) { return !c.empty(); });
}

/// Adds a choice to the last course; when that is full, to a course of the same name behind it.
void ajoute_choix(std::vector<Service>& services, std::string_view choix) {
    if (services.back().choix.size() == choix_par_service) {
        Service suite{services.back().nom, {}, {}};
        services.push_back(std::move(suite));
    }
    prend_un_choix(services.back(), choix);
}

/// Takes the choices at the beginning of a text; what stands behind the last is left.
void prend_choix(std::string_view& texte, std::vector<Service>& services) {
    for (auto p = texte.find(apres_choix); p != std::string_view::npos; p = texte.find(apres_choix)) {
        ajoute_choix(services, texte.substr(0, p));
        texte.remove_prefix(p + apres_choix.size());
    }
}

/// The value that an amount shows; hardly any has more than cents.
double au_centime(double v) {
    const double centimes = v * 100;
    return std::fabs(centimes - std::round(centimes)) < 1e-6 ? v : nombres::lis(nombres::montant(v));
}

}  // namespace

std::string texte_fiche(const Fiche& f) {
    std::string r = texte::complete(f.reference, longueur_bloc) + std::string(champ_libelle) + f.libelle;
    const auto ajoute = [&r](std::string_view champ, const std::string& valeur) { (r += champ) += valeur; };
    if (f.prix) ajoute(champ_prix, nombres::montant(*f.prix));
    ajoute(champ_famille, std::to_string(f.famille));
    if (f.seconde_famille) ajoute(champ_seconde_famille, std::to_string(*f.seconde_famille));
    if (f.chiffre != 0) ajoute(champ_couleur, std::to_string(f.chiffre));
    return f.suite.empty() ? r : r + "|" + f.suite;
}

std::string_view reference(std::string_view ligne) {
    return texte::colonnes(ligne, 1, longueur_bloc);
}

std::string_view libelle(std::string_view ligne) {
    const auto suite = apres(ligne, champ_libelle);
    if (!suite) return {};
    const auto barre = suite->find('|');
    if (barre != std::string_view::npos) return suite->substr(0, barre);
    return suite->substr(0, std::min(suite->find(" ##QUA:"), suite->find('{')));
}

std::optional<double> prix(std::string_view ligne) {
    const auto suite = apres(ligne, champ_prix);
    if (!suite) return std::nullopt;
    return nombres::lis(*suite);
}

std::string prix_affiche(std::string_view ligne) {
    const auto p = prix(ligne);
    return p ? nombres::montant(*p) : std::string();
}

std::optional<int> seconde_famille(std::string_view ligne) {
    const auto suite = apres(ligne, champ_seconde_famille);
    if (!suite) return std::nullopt;
    return nombres::entier_int(*suite);
}

int chiffre_couleur(std::string_view ligne) {
    const auto suite = apres(ligne, champ_couleur);
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

double montant(std::string_view ligne) {
    return au_centime(au_centime(prix(ligne).value_or(0)) * quantite(ligne).value_or(1));
}

std::string total(std::span<const std::string> note) {
    double somme = 0;
    for (const std::string& ligne : note) somme += montant(ligne);
    return nombres::montant(somme);
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
    const auto liste = apres(ligne, debut_composants);
    if (!liste) return {};
    std::string visibles = masque(ligne).substr(static_cast<std::size_t>(liste->data() - ligne.data()));
    std::erase_if(visibles, [](char c) { return c == cache_segment || c == cache_composition; });
    std::string_view reste = visibles;
    std::vector<Composant> r;
    for (auto p = reste.find(fin_composant); p != std::string_view::npos; p = reste.find(fin_composant)) {
        r.push_back(lis_composant(reste.substr(0, p)));
        reste.remove_prefix(p + fin_composant.size());
    }
    return r;
}

std::string texte_composants(std::span<const Composant> composants) {
    std::string r(debut_composants.substr(1));
    for (const Composant& c : composants) {
        r += texte::complete(c.reference, longueur_bloc + 1) + c.libelle;
        for (const double n : {c.premier, c.second}) (r += avant_nombre) += nombres::general(n);
        r += fin_composant;
    }
    return r;
}

std::optional<std::string_view> composition(std::string_view ligne) {
    for (const Plage& p : plages(ligne)) {
        if (p.composition) return ligne.substr(p.interieur, p.longueur);
    }
    return std::nullopt;
}

std::vector<Service> services(std::string_view composition) {
    std::vector<Service> r(1);
    for (bool fini = false; !fini;) {
        const auto p = composition.find(apres_nom);
        fini = p == std::string_view::npos;
        std::string_view reste = composition.substr(0, p);
        prend_choix(reste, r);
        if (fini && texte::contient(reste, "|")) ajoute_choix(r, reste);  // the text breaks off within a choice
        if (!fini) {
            r.push_back({std::string(texte::rogne(reste)), {}, {}});
            composition.remove_prefix(p + apres_nom.size());
        }
    }
    std::erase_if(r, [](const Service& s) { return !a_des_choix(s); });
    return r;
}

std::string texte_composition(std::span<const Service> services) {
    const auto place = [](const std::vector<std::string>& v, std::size_t i) {
        return i < v.size() ? v[i] : std::string();
    };
    std::string r = "{{";
    for (std::size_t s = 0; s < services_par_menu; ++s) {
        const Service service = s < services.size() ? services[s] : Service{};
        (r += service.nom) += apres_nom;
        for (std::size_t i = 0; i < choix_par_service; ++i)
            (r += place(service.references, i) + "|" + place(service.choix, i)) += apres_choix;
    }
    return r + "}}";
}

std::string validee(std::string_view ligne, double quantite, std::span<const std::string> remarques) {
    // The stretches are those of the line as it came: without its marker an open brace would reach further.
    std::string article(ligne), m = masque(ligne);
    retire_marque(article, m);
    rogne_ensemble(article, m);
    const std::string marque = " " + std::string(marque_quantite) + nombres::quantite(quantite) + "##";
    std::string r = sans_segments(article + marque, m + marque);
    for (const std::string& remarque : remarques) {
        const auto t = texte::rogne(remarque);
        if (!t.empty()) r += "{" + neutralise(t) + "}";
    }
    return r;
}

std::string neutralise(std::string_view remarque) {
    std::string r(remarque);
    for (char& c : r) {
        const auto i = syntaxe.find(c);
        if (i != std::string_view::npos) c = remplacants[i];
        if (static_cast<unsigned char>(c) < 32) c = ' ';
    }
    return r;
}

}  // namespace lignes
