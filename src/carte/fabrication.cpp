#include "carte/fabrication.h"

#include <algorithm>
#include <map>

#include "data/catalogue.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace fabrication {
namespace {

using catalogue::Genre;
using programme_touches::Champ;
namespace marque = programme_touches::marque;

/// The day that the style file notes of its making: nobody reads it, and the same sheets make the same bytes.
constexpr std::string_view jour = "19-05-2021";

std::string ligne(Genre genre, double numero, std::string_view texte) {
    return catalogue::ecrit_ligne({genre, numero, texte});
}

int seconde_famille(const carte::Article& a) {
    if (a.menu == carte::Menu::prix_fixe) return lignes::code_prix_fixe;
    return a.menu == carte::Menu::compose ? lignes::code_compose : a.impression;
}

std::string fiche(const carte::Article& a) {
    std::string suite;
    if (a.menu == carte::Menu::prix_fixe) suite = lignes::texte_composition(a.services);
    if (a.menu == carte::Menu::compose) suite = lignes::texte_composants(a.composants);
    return lignes::texte_fiche({a.reference, a.libelle, a.prix, a.famille, seconde_famille(a), a.chiffre, suite});
}

std::string fiche_de_sous_groupe(const carte::Famille& f) {
    return lignes::texte_fiche({catalogue::debut_de_sous_groupe(f.numero), f.nom, std::nullopt, f.parent.value_or(0),
                                std::nullopt, f.chiffre, ""});
}

/// The digit of each number from 0 on.
template <typename Nommes>
std::string chiffres(const Nommes& nommes, int max) {
    std::string r = "0";
    for (const auto& n : nommes) {
        if (n.numero > max) continue;
        const auto place = static_cast<std::size_t>(n.numero);
        if (r.size() <= place) r.resize(place + 1, '0');
        r[place] = static_cast<char>('0' + n.chiffre);
    }
    return r;
}

std::string texte_catalogue(const carte::Carte& c) {
    std::string r;
    int rang = 0;
    for (const auto& s : c.serveurs) r += ligne(Genre::serveur, s.numero, s.nom);
    for (const auto& f : c.familles) {
        if (!f.parent) r += ligne(Genre::famille, f.numero, f.nom);
    }
    for (const auto& a : c.articles) r += ligne(Genre::article, ++rang, fiche(a));
    for (const auto& f : c.familles) {
        if (f.parent) r += ligne(Genre::article, ++rang, fiche_de_sous_groupe(f));
    }
    for (const int t : c.tables) r += ligne(Genre::table, t, "");
    r += ligne(Genre::couleurs_familles, 0, chiffres(c.familles, catalogue::familles_nommees_max));
    return r + ligne(Genre::couleurs_serveurs, 0, chiffres(c.serveurs, catalogue::serveurs_max));
}

std::string texte_styles(const std::vector<carte::Detail>& details) {
    std::vector<styles::Style> choix(styles::code_max + 1);
    for (const auto& d : details) choix[static_cast<std::size_t>(d.code)] = d.style;
    return styles::contenu(choix, jour);
}

std::string cellules(const carte::Touche& t) {
    if (t.largeur == 0 && t.hauteur == 0) return {};
    return std::to_string(std::max(1, t.largeur)) + std::to_string(std::max(1, t.hauteur));
}

std::string champ_image(const carte::Touche& t) {
    if (t.image == 0 && !t.marque) return {};
    const std::string numero = t.image == 0 ? "   " : nombres::entier_complete(t.image, 3);
    return numero + (t.marque ? "N" : " ");
}

/// The code of a key; `fiches` are the articles' records by reference.
std::string code(const carte::Touche& t, const std::map<std::string, std::string>& fiches) {
    switch (t.acte) {
        case carte::Acte::famille:
            return std::string(marque::famille) + nombres::entier_complete(t.nombre, 2);
        case carte::Acte::page:
            return std::string(marque::page) + nombres::entier_complete(t.nombre, 2);
        case carte::Acte::sous_groupe:
            return std::string(marque::article) + catalogue::debut_de_sous_groupe(t.nombre);
        case carte::Acte::article: {
            const auto f = fiches.find(t.texte);
            return std::string(marque::article) +
                   std::string(f == fiches.end() ? t.texte : programme_touches::abrege(f->second));
        }
        case carte::Acte::code:
            break;
    }
    return t.texte;
}

std::string texte_touches(const carte::Carte& c) {
    std::map<std::string, std::string> fiches;
    for (const auto& a : c.articles) fiches[a.reference] = fiche(a);
    std::string r = programme_touches::contenu_vide();
    for (const auto& t : *c.touches) {
        programme_touches::Ligne l;
        l.pose(Champ::libelle, t.libelle);
        l.pose(Champ::action, code(t, fiches));
        if (t.numero != programme_touches::ligne_des_titres) {
            if (t.acte == carte::Acte::article) l.pose(Champ::reference, t.texte);
            l.pose(Champ::lh, cellules(t));
            l.pose(Champ::image, champ_image(t));
            l.pose(Champ::visible, "1");
            l.pose(Champ::taille, t.taille == 0 ? "" : std::to_string(t.taille));
            l.pose(Champ::couleur, t.couleur < 0 ? "" : std::to_string(t.couleur));
        }
        programme_touches::pose_dans(r, t.page, t.numero, l);
    }
    return r;
}

}  // namespace

Fichiers fabrique(const carte::Carte& c) {
    Fichiers f;
    for (const std::string& l : c.entete) f.entete += l + "\r\n";
    f.catalogue = texte_catalogue(c);
    if (c.details) f.styles = texte_styles(*c.details);
    if (c.touches) f.touches = texte_touches(c);
    return f;
}

}  // namespace fabrication
