#include "main_screen/pages.h"

#include <algorithm>
#include <functional>

#include "data/catalogue.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "dialogs/formes.h"
#include "main_screen/bandeau.h"
#include "platform/systeme/texte.h"

namespace pages {
namespace {

using namespace ecran;
using formes::px;

constexpr int haut_grille = 500;                     ///< twips, first row of keys
constexpr int marge = px(10), bas_grille = px(140);  ///< the grid's end, from the form's bottom edge
constexpr int hauteur_prix = px(44), police_prix = 13, police_marque = 15;
constexpr int colonnes_max = 40, lignes_max = 40;
constexpr int serveurs_max = 20, familles_max = 120;

Vue vue_courante = Vue::accueil;
std::string nom_sous_groupe;

/// How the keys of a list page are laid out, from four settings records.
struct Disposition {
    int premier_record;
    int police = 0, largeur = 0, hauteur = 0, par_page = 0;
};

/// One key of a list page; without code its place stays empty.
struct Entree {
    std::string code, texte, prix;
    int chiffre = 0;
};

int colonnes() {
    return std::clamp(etat::colonnes_grille, 1, colonnes_max);
}
int lignes() {
    return std::clamp(etat::lignes_grille, 1, lignes_max);
}

/// The rectangle of a key that covers some cells of the grid, cut at the grid's edge.
Cadre cadre_touche(int colonne, int ligne, int largeur, int hauteur) {
    const int l = formes::largeur() - 2 * marge + rythme;
    const int h = formes::hauteur() - bas_grille - haut_grille + rythme;
    const auto bord = [](int total, int parts, int i) {
        return static_cast<int>(static_cast<std::int64_t>(total) * i / parts);
    };
    const int gauche = bord(l, colonnes(), colonne), haut = bord(h, lignes(), ligne);
    const int droite = bord(l, colonnes(), std::min(colonne + largeur, colonnes())) - rythme;
    const int bas = bord(h, lignes(), std::min(ligne + hauteur, lignes())) - rythme;
    return {marge + gauche, haut_grille + haut, std::max(0, droite - gauche), std::max(0, bas - haut)};
}

Disposition lis_disposition(int premier_record) {
    Disposition d{premier_record};
    d.police = std::max(1, reglages::nombre(premier_record));
    d.largeur = std::clamp(reglages::nombre(premier_record + 1), 1, colonnes());
    d.hauteur = std::clamp(reglages::nombre(premier_record + 2), 1, lignes());
    d.par_page = reglages::nombre(premier_record + 3);
    return d;
}

/// Keys that a page really shows, which is also the step from page to page.
int touches_par_page(const Disposition& d) {
    const int place = (colonnes() / d.largeur) * (lignes() / d.hauteur);
    return std::clamp(d.par_page, 1, std::min(place, nb_touches));
}

Controle& touche_numero(int k) {
    return bandeau::forme()("btx", k);
}
Controle& compagne(int k) {
    return bandeau::forme()("btt", k);
}

void pose_touche(int k, const Cadre& cadre, const std::string& code, std::string_view texte, int police) {
    codes[static_cast<std::size_t>(k)] = code;
    Controle& c = touche_numero(k);
    c.cadre = cadre;
    c.visible = true;
    c.aspect = {};
    c.aspect.texte = texte;
    c.aspect.role = Role::touche;
    c.aspect.gras = true;
    c.aspect.police = std::max(1, police);
}

void pose_prix(int k, const std::string& prix) {
    Controle& b = touche_numero(k);
    const int hauteur = std::min(hauteur_prix, b.cadre.hauteur / 3);
    b.aspect.marge_haut = b.aspect.marge_bas = hauteur * 3 / 4;
    Controle& c = compagne(k);
    c.cadre = {b.cadre.gauche, b.cadre.bas() - hauteur, b.cadre.largeur, hauteur};
    c.visible = true;
    c.aspect = {};
    c.aspect.texte = prix;
    c.aspect.police = police_prix;
    c.aspect.encre = b.aspect.encre;
}

/// Shows the items of the present page, which is first brought within what exists. Returns the number of pages.
int affiche_liste(const Disposition& d, int nombre, const std::function<Entree(int)>& entree) {
    const int par_page = touches_par_page(d), par_ligne = colonnes() / d.largeur;
    const int nb_pages = std::max(1, (nombre + par_page - 1) / par_page);
    etat::numero_page = static_cast<std::int16_t>(std::clamp<int>(etat::numero_page, 0, nb_pages - 1));
    for (int k = 1; k <= par_page; ++k) {
        const int rang = etat::numero_page * par_page + k - 1;
        if (rang >= nombre) break;
        const Entree e = entree(rang);
        if (e.code.empty()) continue;
        const Cadre cadre =
            cadre_touche((k - 1) % par_ligne * d.largeur, (k - 1) / par_ligne * d.hauteur, d.largeur, d.hauteur);
        pose_touche(k, cadre, e.code, e.texte, d.police);
        formes::colore_chiffre(touche_numero(k).aspect, e.chiffre);
        if (!e.prix.empty()) pose_prix(k, e.prix);
    }
    return nb_pages;
}

std::string_view sans_couleur_de_nom(std::string_view nom) {
    return nom.substr(0, nom.find("|COU:"));
}

/// Names of servers or families start at entry 0 when it has one, else at entry 1.
template <typename Noms>
int premiere_entree(const Noms& noms) {
    return texte::rogne(noms[0]).empty() ? 1 : 0;
}
template <typename Noms>
int derniere_entree(const Noms& noms) {
    int n = static_cast<int>(noms.size()) - 1;
    while (n >= 0 && texte::rogne(noms[static_cast<std::size_t>(n)]).empty()) --n;
    return n;
}

void commence(Vue vue) {
    vue_courante = vue;
    raz_touches();
    bandeau::forme()("Label_num").visible = vue == Vue::accueil;
    bandeau::forme()("Label_attente").visible = false;
}

constexpr std::string_view images_suite = "18xxx:17xxx:00xxx:00xxx:22xxx:24xxx:";
constexpr std::string_view images_fin = "18xxx:00xxx:00xxx:00xxx:22xxx:24xxx:";

/// What a picture number says on the function row.
struct Legende {
    int image;
    std::string_view texte;
    Role role;
};
const Legende legendes[] = {
    {11, "Table", Role::action},        {12, "Quitter", Role::detruire}, {13, "Familles", Role::action},
    {15, "Serveurs", Role::action},     {17, "Suivant", Role::action},   {18, "Précédent"_t, Role::action},
    {22, "Note", Role::note},           {23, "Envoyer", Role::aller},    {24, "Familles", Role::action},
    {30, "En attente", Role::attendre},
};

formes::ToucheDeBarre touche_de_barre(int image, std::string_view code) {
    if (image <= 0) return {};
    formes::ToucheDeBarre t{"", image + etat::decalage_images, Role::action};
    for (const Legende& l : legendes) {
        if (l.image != image) continue;
        t.texte = l.texte;
        t.role = l.role;
    }
    if (image == 24 && code == "#MENU#") t.texte = "Accueil";
    return t;
}

/// The picture of a key of the key program, above its caption, and the mark in the key's corner.
void pose_image(int k, const programme_touches::Ligne& l) {
    Controle& b = touche_numero(k);
    const bool avec_texte = !texte::rogne(l.libelle()).empty();
    if (avec_texte && l.image() > 0) b.aspect.marge_haut = b.cadre.hauteur * 3 / 5;
    Controle& c = compagne(k);
    c.cadre = b.cadre;
    if (avec_texte) c.cadre.hauteur = b.cadre.hauteur * 2 / 3;
    c.visible = true;
    c.aspect = {};
    if (l.image() > 0) c.aspect.image = l.image() + etat::decalage_images;
    c.aspect.encre = b.aspect.encre != sans_couleur ? b.aspect.encre : encre_de(Role::touche);
    if (!l.marque()) return;
    c.aspect.texte = "N";
    c.aspect.police = police_marque;
    c.aspect.gras = true;
    c.aspect.place_image = PlaceImage::milieu;
    c.aspect.alignement = Alignement::droite;
    c.aspect.marge_droite = px(10);
    c.aspect.marge_bas = std::max(0, c.cadre.hauteur - px(40));
}

/// Draws one line of the key program on its cell of the grid.
void pose_ligne(int k, const programme_touches::Ligne& l, int police_familles) {
    const int colonne = (k - 1) % colonnes(), ligne = (k - 1) / colonnes();
    if (!l.visible() || ligne >= lignes()) return;
    const Cadre cadre = cadre_touche(colonne, ligne, std::max(1, l.largeur()), std::max(1, l.hauteur()));
    const int police = l.taille() > 0 ? l.taille() : police_familles;
    pose_touche(k, cadre, std::string(l.action()), l.libelle(), police);
    Controle& b = touche_numero(k);
    if (const auto bgr = l.couleur(); bgr >= 0) {
        b.aspect.fond = ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
        b.aspect.encre = encre_lisible(b.aspect.fond);
    }
    if (l.image() > 0 || l.marque()) pose_image(k, l);
}

}  // namespace

Vue vue() {
    return vue_courante;
}

void nomme_sous_groupe(std::string_view nom) {
    nom_sous_groupe = nom;
}

void construit(Forme& forme, void (*au_toucher)(int touche), void (*a_la_barre)(int colonne)) {
    for (int k = 1; k <= nb_touches; ++k) {
        Controle& touche =
            forme.ajoute({.nom = "btx", .index = k, .genre = Genre::bouton, .role = Role::touche, .gras = true});
        touche.au_toucher = [au_toucher, k] { au_toucher(k); };
        forme.ajoute({.nom = "btt", .index = k, .genre = Genre::image, .laisse_passer = true});
    }
    Controle& g2 = forme.ajoute({.nom = "g2", .genre = Genre::grille, .gras = true, .etiquette = 2});
    g2.a_la_cellule = [a_la_barre](int, int colonne) { a_la_barre(colonne); };
    forme.ajoute({.nom = "Label_attente",
                  .texte = "0",
                  .role = Role::pastille,
                  .police = 15,
                  .gras = true,
                  .visible = false,
                  .laisse_passer = true});
    forme.ajoute({.nom = "Label_num",
                  .texte = "0",
                  .police = 10,
                  .alignement = Alignement::droite,
                  .encre = palette::pale,
                  .laisse_passer = true});
}

void place() {
    Forme& f = bandeau::forme();
    const Cadre barre = formes::cadre_barre();
    f("g2").cadre = barre;
    const int cote = px(formes::est_etroit() ? 28 : 38);
    const int droite_case = barre.gauche + (barre.largeur + px(8)) * 5 / 6 - px(8);
    f("Label_attente").cadre = {droite_case - cote - px(7), barre.haut + px(8), cote, cote};
    f("Label_attente").aspect.police = formes::est_etroit() ? 11 : 15;
    f("Label_num").cadre = {formes::largeur() - px(70), formes::hauteur() - hauteur_bandeau, px(60), hauteur_bandeau};
}

void raz_touches() {
    for (int k = 1; k <= nb_touches; ++k) {
        codes[static_cast<std::size_t>(k)].clear();
        touche_numero(k).visible = compagne(k).visible = false;
        touche_numero(k).texte().clear();
        compagne(k).aspect = {};
    }
}

void affiche_serveurs() {
    commence(Vue::serveurs);
    const auto& noms = catalogue::courant().noms_serveurs;
    const std::string& couleurs = catalogue::courant().couleurs_serveurs;
    const int premiere = premiere_entree(noms);
    affiche_liste(lis_disposition(reglages::touches_serveurs), derniere_entree(noms) + 1 - premiere, [&](int rang) {
        const int n = premiere + rang;
        const std::string& nom = noms[static_cast<std::size_t>(n)];
        if (texte::rogne(nom).empty()) return Entree{};
        return Entree{"#SERV#" + nombres::entier_complete(n, 2), nom, "", catalogue::chiffre_couleur(couleurs, n)};
    });
    bandeau::titre_accueil();
    init_g2("#RETS#|#SUIS#|||||", "18xxx:17xxx:00xxx:00xxx:00xxx:00xxx:");
    bandeau::affiche_etat();
}

void affiche_familles() {
    commence(Vue::familles);
    const auto& noms = catalogue::courant().noms_familles;
    const int premiere = premiere_entree(noms);
    const int nb_pages =
        affiche_liste(lis_disposition(reglages::touches_familles), derniere_entree(noms) + 1 - premiere, [&](int rang) {
            const int n = premiere + rang;
            const std::string& nom = noms[static_cast<std::size_t>(n)];
            if (texte::rogne(nom).empty()) return Entree{};
            return Entree{"#FAMI#" + nombres::entier_complete(n, 2), std::string(sans_couleur_de_nom(nom)), "",
                          catalogue::chiffre_famille(n)};
        });
    bandeau::titre("Familles", "Familles");
    const bool suite = etat::numero_page + 1 < nb_pages;
    init_g2(suite ? "#RETF#|#SUIF#|||#FONC#NOTE|#MENU#|" : "#RETF#||||#FONC#NOTE|#MENU#|",
            suite ? images_suite : images_fin);
    bandeau::affiche_etat();
}

void affiche_articles() {
    commence(Vue::articles);
    const int famille = etat::famille_courante;
    const bool connue = famille >= 0 && famille <= familles_max;
    const auto articles = connue ? catalogue::articles_de(famille) : std::span<const std::string_view>();
    const int nb_pages =
        affiche_liste(lis_disposition(reglages::touches_articles), static_cast<int>(articles.size()), [&](int rang) {
            const std::string_view record = articles[static_cast<std::size_t>(rang)];
            return Entree{"#AJOU#" + std::string(record), std::string(lignes::libelle(record)),
                          lignes::prix_affiche(record), lignes::chiffre_couleur(record)};
        });
    const auto& noms = catalogue::courant().noms_familles;
    const bool nommee = connue && static_cast<std::size_t>(famille) < noms.size();
    const std::string titre =
        nommee ? std::string(sans_couleur_de_nom(noms[static_cast<std::size_t>(famille)])) : nom_sous_groupe;
    bandeau::titre(
        titre, titre + std::string(" · "_t) + std::to_string(etat::numero_page + 1) + " / " + std::to_string(nb_pages));
    const bool suite = etat::numero_page + 1 < nb_pages;
    init_g2(suite ? "#RETO#|#SUIT#|||#FONC#NOTE|#LFAM#|" : "#RETO#||||#FONC#NOTE|#LFAM#|",
            suite ? images_suite : images_fin);
    bandeau::affiche_etat();
}

void dessine_touches() {
    commence(Vue::accueil);
    bandeau::forme()("Label_num").texte() = std::to_string(etat::page_programme);
    const int police_familles = std::max(1, reglages::nombre(reglages::touches_familles));
    const auto page = programme_touches::lis_page(etat::page_programme);
    for (int k = 1; k <= static_cast<int>(page.size()) && k <= nb_touches; ++k) {
        pose_ligne(k, page[static_cast<std::size_t>(k - 1)], police_familles);
    }
    bandeau::titre_accueil();
    bandeau::affiche_etat();
}

void redessine() {
    switch (vue_courante) {
        case Vue::accueil:
            dessine_touches();
            return barre_accueil();
        case Vue::serveurs:
            return affiche_serveurs();
        case Vue::familles:
            return affiche_familles();
        case Vue::articles:
            return affiche_articles();
    }
}

void init_g2(std::string_view codes_touches, std::string_view images) {
    std::array<formes::ToucheDeBarre, 6> barre;
    for (std::size_t c = 0; c < barre.size(); ++c) {
        const auto fin = codes_touches.find('|');
        codes_barre[c] = codes_touches.substr(0, fin);
        codes_touches = fin == std::string_view::npos ? "" : codes_touches.substr(fin + 1);
        barre[c] =
            touche_de_barre(static_cast<int>(nombres::lis(texte::colonnes(images, 6 * c + 1, 2))), codes_barre[c]);
    }
    Controle& g2 = bandeau::forme()("g2");
    formes::remplit_barre(g2, barre);
    bandeau::colore();
}

void barre_accueil() {
    constexpr std::string_view codes_accueil = "#FONC#TABLE|#LFAM#|#FONC#SERVEUR|#FONC#NOTE|#ENVO#|#FONC#FIN|";
    const bool joint = reseau::joignable();
    init_g2(codes_accueil, joint ? "11xxx:13xxx:15xxx:22xxx:23xxx:12xxx:" : "11xxx:13xxx:15xxx:22xxx:30xxx:12xxx:");
    const int attente = reseau::commandes_en_attente();
    Controle& pastille = bandeau::forme()("Label_attente");
    pastille.texte() = std::to_string(attente);
    pastille.visible = !joint || attente > 0;
}

}  // namespace pages
