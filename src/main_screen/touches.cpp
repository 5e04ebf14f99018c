#include "main_screen/touches.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "config/ch_outils.h"
#include "data/catalogue.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/menufor.h"
#include "dialogs/sel_arti.h"
#include "main_screen/bandeau.h"
#include "main_screen/cherche.h"
#include "main_screen/comptes.h"
#include "main_screen/fonctions.h"
#include "main_screen/grille.h"
#include "main_screen/note.h"
#include "main_screen/pages.h"
#include "platform/systeme/texte.h"

namespace touches {
namespace {

/// What a key hands to its action: the whole code, and the text behind its marker.
struct Frappe {
    std::string_view code, argument;
    int touche;
};

std::int16_t entier_court(double v) {
    return static_cast<std::int16_t>(std::clamp(v, -32768.0, 32767.0));
}

/// Pages that belong to a table ask for it first. The key that was touched stands aside meanwhile.
void verifie_table() {
    if (etat::sans_table || !texte::rogne(etat::texte_table).empty()) return;
    const std::string code = std::exchange(etat::code_touche, "");
    ch_numtab::montre_ch_numtab();
    etat::code_touche = code;
}

void va_page(int page) {
    etat::numero_page = static_cast<std::int16_t>(std::clamp(page, 0, 32767));
}

template <void (*affiche)()>
void page_suivante(const Frappe&) {
    va_page(etat::numero_page + 1);
    affiche();
}
template <void (*affiche)()>
void page_precedente(const Frappe&) {
    va_page(etat::numero_page - 1);
    affiche();
}

std::string legende_de(const Frappe& f) {
    return f.touche > 0 ? bandeau::forme()("btx", f.touche).texte() : std::string();
}

void fonction(const Frappe& f) {
    fonctions::appel_fonctions(texte::rogne(f.argument));
}

void page_du_programme(const Frappe& f) {
    etat::page_programme = entier_court(nombres::entier(f.argument));
    fonctions::recharge();
}

void accueil(const Frappe&) {
    verifie_table();
    va_page(0);
    etat::page_programme = 0;
    fonctions::affiche_menu();
}

void liste_des_familles(const Frappe&) {
    verifie_table();
    va_page(0);
    pages::affiche_familles();
}

void famille(const Frappe& f) {
    verifie_table();
    va_page(0);
    pages::nomme_sous_groupe(legende_de(f));
    etat::famille_courante = entier_court(nombres::entier(f.argument));
    pages::affiche_articles();
}

void serveur(const Frappe& f) {
    va_page(0);
    const auto nom = [](int n) {
        return texte::rogne(catalogue::courant().noms_serveurs[static_cast<std::size_t>(n)]);
    };
    const double n = nombres::entier(f.argument);
    const bool connu = n >= 0 && n <= catalogue::serveurs_max && !nom(static_cast<int>(n)).empty();
    etat::numero_serveur = connu ? entier_court(n) : std::int16_t{1};
    etat::nom_serveur = catalogue::courant().noms_serveurs[static_cast<std::size_t>(etat::numero_serveur)];
    fonctions::affiche_menu();
}

void sous_groupe(const Frappe& f) {
    va_page(0);
    etat::famille_courante = entier_court(catalogue::famille_du_sous_groupe(f.argument));
    pages::nomme_sous_groupe(legende_de(f));
    pages::affiche_articles();
}

void ajoute(const Frappe& f) {
    if (texte::rogne(f.argument.substr(0, 15)).empty()) return;
    if (catalogue::est_sous_groupe(f.argument)) return sous_groupe(f);
    complements::prend(catalogue::complete_article(f.argument));
    if (lignes::est_menu_a_prix_fixe(etat::texte_travail)) menufor::montre_menufor();
    const std::string libelle(lignes::libelle(etat::texte_travail));
    sel_arti::montre_sel_arti();
    const bool prise = note::ajoute_ligne();
    comptes::affiche();
    bandeau::affiche_etat();
    const double quantite = lignes::quantite(etat::texte_travail).value_or(1);
    if (prise) bandeau::annonce_geste("+ " + nombres::general(quantite) + " " + libelle);
}

void outils(const Frappe&) {
    ch_outils::montre_ch_outils();
    fonctions::recharge();
}

void inerte(const Frappe&) {}

struct Action {
    std::string_view marque;
    void (*agit)(const Frappe&);
};
namespace marque = programme_touches::marque;
const Action actions[] = {
    {marque::fonction, fonction},
    {marque::page, page_du_programme},
    {marque::accueil, accueil},
    {marque::familles, liste_des_familles},
    {marque::familles_suivantes, page_suivante<pages::affiche_familles>},
    {marque::familles_precedentes, page_precedente<pages::affiche_familles>},
    {marque::serveurs_suivants, page_suivante<pages::affiche_serveurs>},
    {marque::serveurs_precedents, page_precedente<pages::affiche_serveurs>},
    {marque::famille, famille},
    {marque::inerte, inerte},
    {marque::articles_suivants, page_suivante<pages::affiche_articles>},
    {marque::articles_precedents, page_precedente<pages::affiche_articles>},
    {marque::serveur, serveur},
    {marque::article, ajoute},
    {marque::outils, outils},
};

/// What was found is ordered as by its key.
void ouvre_la_recherche(const std::string& lettres) {
    const auto record = cherche::demande(lettres);
    if (!record) return;
    etat::code_touche = std::string(marque::article) + *record;
    touche(0);
}

}  // namespace

void touche(int i) {
    std::string code = std::exchange(etat::code_touche, "");
    if (code.empty() && i >= 0 && i <= grille::nb_touches) code = grille::codes[static_cast<std::size_t>(i)];
    if (code.size() < programme_touches::marque::longueur)
        code = texte::complete(code, programme_touches::marque::longueur);
    const Frappe frappe{code, std::string_view(code).substr(programme_touches::marque::longueur), i};
    for (const Action& a : actions) {
        if (!code.starts_with(a.marque)) continue;
        a.agit(frappe);
        break;
    }
    if (std::exchange(etat::demande_recharge, false)) fonctions::recharge();
}

void touche_barre(int colonne) {
    if (colonne < 0 || colonne >= static_cast<int>(grille::codes_barre.size())) return;
    etat::code_touche = grille::codes_barre[static_cast<std::size_t>(colonne)];
    if (etat::code_touche == "#ENVO#") {
        etat::code_touche.clear();
        return fonctions::envoie();
    }
    touche(0);
}

bool tient_barre(int colonne) {
    if (colonne < 0 || grille::codes_barre[static_cast<std::size_t>(colonne)] != marque::familles) return false;
    ouvre_la_recherche("");
    return true;
}

void tape(int caractere) {
    const std::string lettre(1, static_cast<char>(caractere));
    if (pages::vue() != pages::Vue::serveurs && !texte::rogne(texte::pour_chercher(lettre)).empty())
        ouvre_la_recherche(lettre);
}

}  // namespace touches
