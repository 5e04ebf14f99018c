// From the card to the rows of the sheets.
#include <algorithm>
#include <map>

#include "carte/cases.h"
#include "carte/fabrication.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace fabrication {
namespace {

using tableaux::Feuille;
using Rangee = std::vector<std::string>;
using Rangees = std::vector<Rangee>;

constexpr std::int32_t blanc = 0xFFFFFF, noir = 0;
constexpr int suite_min = 3;  ///< so many tables in a row are written as one

/// Nothing for 0.
std::string nombre(int n) {
    return n == 0 ? std::string() : std::to_string(n);
}

Rangees serveurs(const carte::Carte& c) {
    Rangees r;
    for (const auto& s : c.serveurs) r.push_back({std::to_string(s.numero), s.nom, cases::chiffre_ecrit(s.chiffre)});
    return r;
}

Rangees familles(const carte::Carte& c) {
    Rangees r;
    for (const bool groupes : {false, true}) {
        for (const auto& f : c.familles) {
            if (f.parent.has_value() != groupes) continue;
            r.push_back({std::to_string(f.numero), f.nom, cases::chiffre_ecrit(f.chiffre),
                         f.parent ? std::to_string(*f.parent) : ""});
        }
    }
    return r;
}

Rangees articles(const carte::Carte& c) {
    Rangees r;
    for (const auto& a : c.articles) {
        const std::string_view menu = a.menu == carte::Menu::prix_fixe ? "prix fixe"
                                      : a.menu == carte::Menu::compose ? "composé"_t
                                                                       : "";
        r.push_back({a.reference, a.libelle, cases::prix_ecrit(a.prix), std::to_string(a.famille),
                     cases::chiffre_ecrit(a.chiffre), std::string(menu), nombre(a.impression)});
    }
    return r;
}

Rangees tables(const carte::Carte& c) {
    Rangees r;
    for (std::size_t i = 0; i < c.tables.size();) {
        std::size_t fin = i + 1;
        while (fin < c.tables.size() && c.tables[fin] == c.tables[fin - 1] + 1) ++fin;
        if (fin - i < suite_min) fin = i + 1;
        const std::string premiere = std::to_string(c.tables[i]);
        r.push_back({fin - i == 1 ? premiere : premiere + "-" + std::to_string(c.tables[fin - 1])});
        i = fin;
    }
    return r;
}

Rangees menus(const carte::Carte& c) {
    Rangees r;
    for (const auto& a : c.articles) {
        for (const auto& s : a.services) {
            for (std::size_t i = 0; i < s.choix.size(); ++i)
                r.push_back({a.reference, s.nom, s.references[i].empty() ? s.choix[i] : s.references[i]});
        }
        for (const auto& k : a.composants)
            r.push_back({a.reference, "", k.reference, k.second == 1 ? "" : nombres::general(k.second),
                         k.premier == 0 ? "" : cases::prix_ecrit(k.premier)});
    }
    return r;
}

/// The code is written only where a row does not follow from the one before.
Rangees details(const carte::Carte& c) {
    Rangees r;
    std::map<std::string, int> suivants;
    int colonne_libre = 0;
    for (const auto& d : c.details.value_or(std::vector<carte::Detail>())) {
        const int attendu = suivants.try_emplace(d.categorie, styles::premier_code(colonne_libre)).first->second;
        r.push_back({d.categorie, d.style.libelle, d.style.fond == blanc ? "" : cases::couleur_ecrite(d.style.fond),
                     d.style.texte == noir ? "" : cases::couleur_ecrite(d.style.texte),
                     d.code == attendu ? "" : std::to_string(d.code)});
        suivants[d.categorie] = d.code + 1;
        colonne_libre = std::max(colonne_libre, d.code / styles::records_par_categorie);
    }
    return r;
}

std::string action(const carte::Touche& t) {
    switch (t.acte) {
        case carte::Acte::famille:
            return "famille " + std::to_string(t.nombre);
        case carte::Acte::page:
            return "page " + std::to_string(t.nombre);
        case carte::Acte::sous_groupe:
            return "sous-groupe " + std::to_string(t.nombre);
        case carte::Acte::article:
            return "article " + t.texte;
        case carte::Acte::code:
            break;
    }
    return t.texte;
}

Rangees touches(const carte::Carte& c) {
    Rangees r;
    for (const auto& t : c.touches.value_or(std::vector<carte::Touche>())) {
        if (t.numero == programme_touches::ligne_des_titres) {
            r.push_back({std::to_string(t.page), "titre", t.libelle, t.texte});
            continue;
        }
        r.push_back({std::to_string(t.page), std::to_string(t.numero), t.libelle, action(t),
                     cases::image_ecrite(t.image, t.marque), nombre(t.taille), nombre(t.largeur), nombre(t.hauteur),
                     t.couleur < 0 ? "" : cases::couleur_ecrite(t.couleur)});
    }
    return r;
}

Rangees entete(const carte::Carte& c) {
    Rangees r;
    if (c.entete == carte::entete_par_defaut) return r;
    for (const std::string& l : c.entete) r.push_back({l});
    return r;
}

}  // namespace

Rangees rangees(const carte::Carte& c, Feuille feuille) {
    constexpr Rangees (*ecrivains[tableaux::nb_feuilles])(const carte::Carte&) = {serveurs, familles, articles, tables,
                                                                                  menus,    details,  touches,  entete};
    return ecrivains[static_cast<std::size_t>(feuille)](c);
}

}  // namespace fabrication
