#include "carte/tableaux.h"

#include <algorithm>

#include "platform/systeme/texte.h"
#include "platform/tableur/tableur.h"

namespace tableaux {
namespace {

constexpr Colonne colonnes_serveurs[] = {{"Numéro"}, {"Nom"}, {"Couleur", true}};
constexpr Colonne colonnes_familles[] = {{"Numéro"}, {"Nom"}, {"Couleur", true}, {"Sous-groupe de", true}};
constexpr Colonne colonnes_articles[] = {
    {"Référence"}, {"Libellé"}, {"Prix"}, {"Famille"}, {"Couleur", true}, {"Menu", true}, {"Impression", true, true}};
constexpr Colonne colonnes_tables[] = {{"Table"}};
constexpr Colonne colonnes_menus[] = {{"Menu"}, {"Service"}, {"Plat"}, {"Quantité", true, true}, {"Prix", true, true}};
constexpr Colonne colonnes_details[] = {
    {"Catégorie"}, {"Libellé"}, {"Fond", true}, {"Encre", true}, {"Code", true, true}};
constexpr Colonne colonnes_touches[] = {{"Page"},          {"Case"},          {"Libellé"},
                                        {"Action"},        {"Image", true},   {"Taille", true},
                                        {"Largeur", true}, {"Hauteur", true}, {"Couleur", true}};
constexpr Colonne colonnes_entete[] = {{"Ligne"}};

/// In the order of Feuille.
constexpr Forme formes[nb_feuilles] = {
    {"serveurs.csv", true, colonnes_serveurs}, {"familles.csv", true, colonnes_familles},
    {"articles.csv", true, colonnes_articles}, {"tables.csv", false, colonnes_tables},
    {"menus.csv", false, colonnes_menus},      {"details.csv", false, colonnes_details},
    {"touches.csv", false, colonnes_touches},  {"entete.csv", false, colonnes_entete}};

constexpr std::string_view marque_utf8 = "\xEF\xBB\xBF";

using tableur::Rangees;

/// The first line that is not the UTF-8 that the mark of its file promises; 0: there is none.
std::size_t ligne_abimee(std::string_view contenu) {
    if (!contenu.starts_with(marque_utf8)) return 0;
    const auto lignes = texte::lignes(contenu);
    const auto abimee = std::find_if_not(lignes.begin(), lignes.end(), texte::est_utf8);
    return abimee == lignes.end() ? 0 : static_cast<std::size_t>(abimee - lignes.begin()) + 1;
}

/// UTF-8 without mark and with "\n" alone; a file of the page 1252 is known by what UTF-8 cannot be.
std::string en_utf8(std::string_view contenu) {
    if (contenu.starts_with(marque_utf8)) contenu.remove_prefix(marque_utf8.size());
    std::string r;
    for (std::size_t i = 0; i < contenu.size(); ++i) {
        const bool fin = contenu[i] == '\r';
        if (fin && i + 1 < contenu.size() && contenu[i + 1] == '\n') continue;
        r += fin ? '\n' : contenu[i];
    }
    if (!r.ends_with('\n')) r += '\n';
    return texte::est_utf8(r) ? r : texte::vers_utf8(r);
}

std::string cle_utf8(std::string_view utf8) {
    return cle(texte::depuis_utf8_tolerant(utf8));
}

/// The first word of a heading.
std::string cle_d_entete(std::string_view utf8) {
    const auto debut = std::min(utf8.find_first_not_of(" \t\n["), utf8.size());
    return cle_utf8(utf8.substr(debut, utf8.find_first_of(" \t\n(:,]", debut) - debut));
}

/// Where the form's columns stand in a heading row.
std::vector<int> places_de(const Forme& forme, const std::vector<std::string>& entetes) {
    std::vector<int> places;
    for (const Colonne& c : forme.colonnes) {
        const auto i = std::find_if(entetes.begin(), entetes.end(),
                                    [&](const std::string& e) { return cle_d_entete(e) == cle_d_entete(c.nom); });
        places.push_back(i == entetes.end() ? -1 : static_cast<int>(i - entetes.begin()));
    }
    return places;
}

std::size_t connues(const std::vector<int>& places) {
    return static_cast<std::size_t>(std::count_if(places.begin(), places.end(), [](int p) { return p >= 0; }));
}

std::string entre_guillemets(std::string_view t) {
    return "« " + std::string(t) + " »";
}

/// The columns that must be there, and the headings that say nothing or the same twice.
void verifie_entetes(const Tableau& t, const Forme& forme, Constats& constats) {
    for (std::size_t c = 0; c < forme.colonnes.size(); ++c) {
        if (t.places[c] >= 0 || forme.colonnes[c].facultative) continue;
        constats.fautes.push_back(situe(forme.fichier, 1, "",
                                        "il manque la colonne " + entre_guillemets(forme.colonnes[c].nom) +
                                            " ; écrivez ce titre dans la première ligne"));
    }
    const auto& entetes = t.rangees[0];
    for (std::size_t i = 0; i < entetes.size(); ++i) {
        const std::string c = cle_d_entete(entetes[i]);
        if (c.empty()) continue;
        const auto egale = [&c](const std::string& e) { return cle_d_entete(e) == c; };
        if (std::find(t.places.begin(), t.places.end(), static_cast<int>(i)) != t.places.end()) continue;
        const bool double_titre = std::any_of(entetes.begin(), entetes.begin() + static_cast<std::ptrdiff_t>(i), egale);
        if (double_titre)
            constats.fautes.push_back(
                situe(forme.fichier, 1, "",
                      "la colonne " + entre_guillemets(entetes[i]) + " est là deux fois ; gardez-en une seule"));
        else
            constats.remarques.push_back(
                situe(forme.fichier, 1, "", "la colonne " + entre_guillemets(entetes[i]) + " n'est pas lue"));
    }
}

bool est_vide(const std::vector<std::string>& rangee) {
    return std::all_of(rangee.begin(), rangee.end(), [](const std::string& c) { return c.empty(); });
}

/// A cell behind the last heading: mostly a text that holds the separator.
void verifie_largeurs(const Tableau& t, const Forme& forme, Constats& constats) {
    for (std::size_t i = 1; i < t.rangees.size(); ++i) {
        const auto& r = t.rangees[i];
        const auto trop = std::find_if(r.begin() + static_cast<std::ptrdiff_t>(std::min(r.size(), t.rangees[0].size())),
                                       r.end(), [](const std::string& c) { return !c.empty(); });
        if (trop == r.end()) continue;
        constats.fautes.push_back(situe(forme.fichier, i + 1, "",
                                        entre_guillemets(*trop) +
                                            " est dans une colonne sans titre ; mettez entre guillemets le texte qui "
                                            "contient le séparateur"));
    }
}

}  // namespace

const Forme& forme(Feuille feuille) {
    return formes[static_cast<std::size_t>(feuille)];
}

std::string situe(std::string_view fichier, std::size_t ligne, std::string_view colonne, std::string_view message) {
    std::string r(fichier);
    if (ligne > 0) r += ", ligne " + std::to_string(ligne);
    if (!colonne.empty()) r += ", colonne " + std::string(colonne);
    return r + " : " + std::string(message);
}

std::optional<Tableau> lis(Feuille feuille, std::string_view contenu, Constats& constats) {
    const Forme& f = forme(feuille);
    const auto refuse = [&](std::size_t ligne, std::string_view message) {
        constats.fautes.push_back(situe(f.fichier, ligne, "", message));
        return std::nullopt;
    };
    if (contenu.find('\0') != std::string_view::npos)
        return refuse(0, "ce n'est pas un fichier CSV ; enregistrez-le au format « CSV UTF-8 »");
    if (const std::size_t ligne = ligne_abimee(contenu); ligne > 0)
        return refuse(ligne, "un caractère est abîmé ; enregistrez de nouveau ce tableau au format « CSV UTF-8 »");
    const std::string utf8 = en_utf8(contenu);
    Tableau t{feuille, {}, {}};
    bool ferme = true;
    for (const char separateur : {';', ',', '\t'}) {
        bool celui_ci = true;
        Rangees rangees = tableur::decoupe(utf8, separateur, celui_ci);
        auto places = places_de(f, rangees[0]);
        if (!t.places.empty() && connues(places) <= connues(t.places)) continue;
        t.rangees = std::move(rangees);
        t.places = std::move(places);
        ferme = celui_ci;
    }
    if (!ferme) return refuse(t.rangees.size(), "un guillemet n'est pas fermé ; ajoutez celui qui manque");
    if (est_vide(t.rangees[0])) return refuse(1, "la ligne des titres est vide ; écrivez-y les titres des colonnes");
    const std::size_t avant = constats.fautes.size();
    verifie_entetes(t, f, constats);
    if (constats.fautes.size() > avant) return std::nullopt;
    verifie_largeurs(t, f, constats);
    return t;
}

std::string ecrit(Feuille feuille, const Rangees& rangees) {
    const Forme& f = forme(feuille);
    std::vector<std::size_t> ecrites;
    std::vector<std::string> cases;
    for (std::size_t c = 0; c < f.colonnes.size(); ++c) {
        const auto la = [c](const std::vector<std::string>& r) { return c < r.size() && !r[c].empty(); };
        if (f.colonnes[c].rare && std::none_of(rangees.begin(), rangees.end(), la)) continue;
        ecrites.push_back(c);
        const std::string nom(f.colonnes[c].nom);
        cases.push_back(f.colonnes[c].facultative ? "[" + nom + "]" : nom);
    }
    std::string r = std::string(marque_utf8) + tableur::rangee(cases, ';');
    for (const auto& rangee : rangees) {
        cases.clear();
        for (const std::size_t c : ecrites) cases.push_back(c < rangee.size() ? texte::vers_utf8(rangee[c]) : "");
        r += tableur::rangee(cases, ';');
    }
    return r;
}

std::string cle(std::string_view t) {
    // By the small letters E0 to FF of the page.
    constexpr std::string_view sans_accent = "aaaaaaaceeeeiiiidnooooo ouuuuyty";
    std::string r;
    for (const char c : texte::minuscules(t)) {
        const auto o = static_cast<unsigned char>(c);
        if (o == 0x9C || o == 0xE6) {
            r += o == 0x9C ? "oe" : "ae";
        } else if (o >= 0xE0) {
            r += sans_accent[o - 0xE0U];
        } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            r += c;
        }
    }
    return r;
}

}  // namespace tableaux
