#include "data/styles.h"

#include <algorithm>

#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace styles {
namespace {

constexpr std::size_t longueur_record = 128, nb_records = 501;
constexpr std::size_t longueur_tete = 15, longueur_libelle = 40, longueur_reste = 61;
constexpr std::size_t place_texte = 116, place_fond = 120;
constexpr std::int32_t blanc = 16777215;

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
    if (record.size() < longueur_record) return s;
    s.texte = lis_entier(record, place_texte);
    s.fond = lis_entier(record, place_fond);
    return s;
}

/// The records of the built-in choices; `ancien` is what the file held, of which what lies beyond them stays.
std::string contenu_initial(std::string_view ancien) {
    std::string fichier = record("#INIT#" + horloge::jour(horloge::maintenant()), {"", 0, blanc});
    for (std::size_t i = 2; i <= nb_records; ++i) fichier += record("", {"", 0, blanc});
    std::string_view reste = choix_par_defaut;
    for (auto p = reste.find('/'); p != std::string_view::npos; p = reste.find('/')) {
        const std::string_view entree = reste.substr(0, p);
        const auto nombre = [entree](std::size_t debut, std::size_t n) {
            return nombres::entier_int(texte::colonnes(entree, debut, n));
        };
        const Style s{std::string(texte::colonnes(entree, 24)), nombre(14, 9), nombre(4, 9)};
        fichier.replace(static_cast<std::size_t>(nombre(1, 2) - 1) * longueur_record, longueur_record, record("", s));
        reste.remove_prefix(p + 1);
    }
    if (ancien.size() > fichier.size()) fichier += ancien.substr(fichier.size());
    return fichier;
}

}  // namespace

bool init_styles() {
    if (tenus::attend(nom_fichier)) return false;
    std::string contenu;
    const fichiers::Issue lecture = tenus::note(nom_fichier, fichiers::lis_tout(nom_fichier, contenu));
    if (lecture == fichiers::Issue::fait && contenu.starts_with("#INIT#")) return true;
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

}  // namespace styles
