// The catalogue: its header file, a zero byte, the catalogue proper.
#include "data/catalogue.h"

#include "data/lignes.h"
#include "essai.h"
#include "platform/systeme/texte.h"

void essaie(std::string_view entree) {
    pose("orvalune.wdo", coupe(entree));
    pose("worvalune.wdo", entree);
    catalogue::charge_catalogue();
    exige(catalogue::catalogue_charge && catalogue::courant().lu);
    for (int famille = -1; famille <= catalogue::familles_max + 1; ++famille) {
        const auto articles = catalogue::articles_de(famille);
        exige(articles.size() <= std::size_t{catalogue::places_max});
        if (articles.empty()) continue;
        exige(!texte::rogne(articles.back()).empty());
        // What the key program holds of it: the record's beginning.
        auto debut = articles.back().substr(0, 94);
        while (debut.ends_with(' ')) debut.remove_suffix(1);
        const std::string complet = catalogue::complete_article(debut);
        exige(complet.starts_with(debut));
    }
    for (const std::string& table : catalogue::tables()) exige(catalogue::table_connue(table));
    for (int n = -1; n <= catalogue::familles_nommees_max + 1; ++n) {
        catalogue::chiffre_famille(n);
        catalogue::chiffre_couleur(catalogue::courant().couleurs_serveurs, n);
    }
    catalogue::a_des_serveurs();
}
