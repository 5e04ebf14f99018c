#include "data/styles.h"

#include <algorithm>

#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace styles {
namespace {

constexpr std::string_view marque_initialise = "#INIT#";
constexpr std::size_t nb_records = code_max;
constexpr std::size_t longueur_tete = 15, longueur_reste = 61;
constexpr std::size_t place_texte = 116, place_fond = 120;

/// Code, ground, text colour and label of the built-in choices.
constexpr std::string_view choix_par_defaut =
    "20|000419837|006685957|Viandes/21|016777215|000000000|Saignante/22|016777215|000263172|Bleu/"
    "23|016777215|000000000|A point/28|016567555|000000000|Sauces/29|016777215|000000000|Béarnaise/"
    "30|016777215|000000000|Mayonnaise/31|016777215|000000000|Sauce Poivre/40|000457475|006685957|Garnitures/"
    "41|016777215|000000000|Frites/42|016777215|000000000|Haricots Verts/43|016777215|000000000|Purée/"
    "44|016777215|000000000|Riz/45|016777215|000000000|Salade/80|002418174|000000000|Menus/"
    "81|016777215|000000000|Assiette Charcuterie/82|016777215|000000000|Oeuf Mimosa/"
    "83|016777215|000000000|Salade de Saison/84|016777215|000000000|Buffet/86|016777215|000000000|Steak Poivre/"
    "87|016777215|000000000|Lasagnes/88|016777215|000000000|Raie aux Capres/90|016777215|000000000|Fromage/"
    "91|016777215|000000000|Buffet Dessert/"_t;

void ajoute_entier(std::string& r, std::int32_t v) {
    for (int i = 0; i < 4; ++i) r += static_cast<char>((static_cast<std::uint32_t>(v) >> (8 * i)) & 0xFF);
}

std::int32_t lis_entier(std::string_view r, std::size_t place) {
    std::uint32_t v = 0;
    for (std::size_t i = 0; i < 4; ++i)
        v |= static_cast<std::uint32_t>(static_cast<unsigned char>(r[place + i])) << (8 * i);
    return static_cast<std::int32_t>(v);
}

std::string record(std::string_view tete, const Style& s) {
    std::string r = texte::complete(tete, longueur_tete) + texte::complete(s.libelle, longueur_libelle) +
                    std::string(longueur_reste, ' ');
    ajoute_entier(r, s.texte);
    ajoute_entier(r, s.fond);
    ajoute_entier(r, 0);
    return r;
}

Style style(std::string_view record) {
    Style s;
    std::string libelle(texte::colonnes(record, longueur_tete + 1, longueur_libelle));
    std::replace_if(
        libelle.begin(), libelle.end(), [](unsigned char c) { return c < ' '; }, ' ');
    s.libelle = texte::rogne(libelle);
    const bool ecrit = record.find_first_not_of(std::string_view(" \0", 2)) != std::string_view::npos;
    if (!ecrit || record.size() < longueur_record) return s;
    s.texte = lis_entier(record, place_texte);
    s.fond = lis_entier(record, place_fond);
    return s;
}

/// The records of the built-in choices; `ancien` is what the file held, of which what lies beyond them stays.
std::string contenu_initial(std::string_view ancien) {
    std::vector<Style> choix(nb_records + 1);
    std::string_view reste = choix_par_defaut;
    for (auto p = reste.find('/'); p != std::string_view::npos; p = reste.find('/')) {
        const std::string_view entree = reste.substr(0, p);
        const auto nombre = [entree](std::size_t debut, std::size_t n) {
            return nombres::entier_int(texte::colonnes(entree, debut, n));
        };
        choix[static_cast<std::size_t>(nombre(1, 2))] = {std::string(texte::colonnes(entree, 24)), nombre(14, 9),
                                                         nombre(4, 9)};
        reste.remove_prefix(p + 1);
    }
    std::string fichier = contenu(choix, horloge::jour(horloge::maintenant()));
    if (ancien.size() > fichier.size()) fichier += ancien.substr(fichier.size());
    return fichier;
}

}  // namespace

std::string contenu(std::span<const Style> choix, std::string_view jour) {
    std::string r = record(std::string(marque_initialise) + std::string(jour), {});
    for (std::size_t code = 2; code <= nb_records; ++code) r += record("", code < choix.size() ? choix[code] : Style{});
    return r;
}

bool est_initialise(std::string_view contenu) {
    return contenu.starts_with(marque_initialise);
}

std::vector<Style> depuis(std::string_view contenu) {
    std::vector<Style> styles(nb_records + 1);
    for (std::size_t code = 2; code <= nb_records; ++code)
        styles[code] = style(texte::colonnes(contenu, (code - 1) * longueur_record + 1, longueur_record));
    return styles;
}

bool init_styles() {
    if (tenus::attend(nom_fichier)) return false;
    std::string contenu;
    fichiers::Issue lecture =
        tenus::note(nom_fichier, fichiers::lis_debut(nom_fichier, marque_initialise.size(), contenu));
    if (lecture == fichiers::Issue::fait && est_initialise(contenu)) return true;
    if (lecture == fichiers::Issue::fait) lecture = fichiers::lis_tout(nom_fichier, contenu);
    if (lecture != fichiers::Issue::fait && lecture != fichiers::Issue::absent) return false;
    // All at once: a file that stopped behind its first record would count as initialised for ever.
    return fichiers::ecrit_tout(nom_fichier, contenu_initial(contenu), fichiers::Remplace::oui) ==
           fichiers::Issue::fait;
}

std::vector<Style> lis() {
    std::vector<Style> styles(nb_records + 1);
    const auto f = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record);
    const std::string lus = f ? f->lis_suite(1, nb_records).value_or("") : "";
    for (std::size_t code = 2; f && code <= nb_records; ++code)
        styles[code] = style(texte::colonnes(lus, (code - 1) * longueur_record + 1, longueur_record));
    return styles;
}

std::vector<std::string> titres(int nombre) {
    std::vector<std::string> r;
    auto f = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record);
    if (f && !est_initialise(f->lis(1).value_or(""))) {
        f = nullptr;
        static_cast<void>(init_styles());
        f = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record);
    }
    for (int c = 0; c < nombre; ++c) {
        const auto code = static_cast<std::size_t>(premier_code(c));
        r.push_back(f ? style(f->lis(code).value_or("")).libelle : "");
    }
    return r;
}

}  // namespace styles
