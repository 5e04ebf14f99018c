// What a waiter sees of the restaurant's files, as text.
#include <algorithm>

#include "carte/cases.h"
#include "carte/verification.h"
#include "carte/verification_interne.h"
#include "data/catalogue.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace verification {
namespace {

using Lignes = std::vector<std::string>;

std::string utf8(std::string_view page) {
    return texte::vers_utf8(page);
}

/// "un", "deux, trois": the texts that are not empty.
std::string enumere(const Lignes& textes) {
    std::string r;
    for (const std::string& t : textes) {
        if (!t.empty()) r += (r.empty() ? "" : ", ") + t;
    }
    return r.empty() ? "aucun" : r;
}

void vue_menu(std::string_view record, Lignes& r) {
    for (const auto& s : lignes::services(lignes::composition(record).value_or(""))) {
        Lignes plats;
        for (const auto& plat : s.choix) plats.push_back(utf8(plat));
        r.push_back("      " + utf8(s.nom) + " : " + enumere(plats));
    }
    for (const auto& c : lignes::composants(record))
        r.push_back("      " + nombres::general(c.second) + " " + utf8(c.libelle));
}

void vue_famille(const catalogue::Tables& t, int famille, const std::string& nom, Lignes& r) {
    const auto articles = catalogue::articles_de(t, famille);
    r.push_back("  " + std::to_string(famille) + " " + nom + (articles.empty() ? " : aucun article" : ""));
    for (const auto record : articles) {
        const auto prix = lignes::prix_affiche(record);
        r.push_back("    " + utf8(lignes::libelle(record)) + (prix.empty() ? "" : "  " + prix));
        vue_menu(record, r);
    }
}

void vue_familles(const catalogue::Tables& t, Lignes& r) {
    r.push_back("Familles :");
    std::vector<bool> vues(catalogue::familles_max + 1);
    const auto montre = [&](int n, std::string_view nom) {
        if (texte::rogne(nom).empty() || vues[static_cast<std::size_t>(n)]) return;
        vues[static_cast<std::size_t>(n)] = true;
        vue_famille(t, n, utf8(texte::rogne(nom)), r);
    };
    for (int n = 0; n <= catalogue::familles_nommees_max; ++n) {
        const std::string_view nom = t.noms_familles[static_cast<std::size_t>(n)];
        montre(n, nom.substr(0, nom.find(lignes::champ_couleur)));
    }
    for (const auto& famille : t.articles) {
        for (const auto record : famille) {
            if (catalogue::est_sous_groupe(record))
                montre(catalogue::famille_du_sous_groupe(record), lignes::libelle(record));
        }
    }
    for (int n = 0; n <= catalogue::familles_max; ++n) {
        if (!catalogue::articles_de(t, n).empty()) montre(n, "(sans touche)");
    }
}

void vue_details(std::string_view contenu, Lignes& r) {
    r.push_back("Détails :");
    const auto choix = styles::depuis(contenu);
    for (int categorie = 0; categorie < styles::categories; ++categorie) {
        Lignes libelles;
        for (int i = 0; i < styles::choix_par_categorie; ++i)
            libelles.push_back(utf8(choix[static_cast<std::size_t>(styles::premier_code(categorie) + i)].libelle));
        if (enumere(libelles) != "aucun") r.push_back("  " + enumere(libelles));
    }
}

void vue_touches(std::string_view contenu, Lignes& r) {
    for (int page = 0; page < programme_touches::nb_pages; ++page) {
        Lignes libelles;
        for (int i = 1; i <= programme_touches::lignes_par_page; ++i) {
            const auto l = programme_touches::lis_dans(contenu, page, i);
            if (l.visible()) libelles.push_back(utf8(l.libelle()));
        }
        const std::string touches = enumere(libelles);
        const auto titres = programme_touches::lis_dans(contenu, page, programme_touches::ligne_des_titres);
        if (touches != "aucun")
            r.push_back("Page " + std::to_string(page) + " " + entre_guillemets(titres.libelle()) + " : " + touches);
    }
}

}  // namespace

Lignes vue(const fabrication::Fichiers& f) {
    const auto t = catalogue::depuis(f.entete, f.catalogue);
    Lignes r, serveurs, tables;
    for (const std::string& nom : t->noms_serveurs) serveurs.push_back(utf8(texte::rogne(nom)));
    for (const std::string& numero : catalogue::tables(*t)) tables.push_back(numero);
    r.push_back("Serveurs : " + enumere(serveurs));
    vue_familles(*t, r);
    r.push_back("Tables : " + (tables.empty() ? "aucune" : enumere(tables)));
    if (f.styles && styles::est_initialise(*f.styles)) vue_details(*f.styles, r);
    if (f.touches) vue_touches(*f.touches, r);
    return r;
}

}  // namespace verification
