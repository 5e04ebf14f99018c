#include "main_screen/pages.h"

#include <algorithm>
#include <functional>
#include <span>
#include <string>

#include "data/catalogue.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "dialogs/formes.h"
#include "main_screen/bandeau.h"
#include "main_screen/comptes.h"
#include "main_screen/grille.h"
#include "platform/systeme/texte.h"

namespace pages {
namespace {

using namespace ecran;

Vue vue_courante = Vue::accueil;
std::string nom_sous_groupe;

using reglages::Disposition;
namespace marque = programme_touches::marque;

/// One key of a list page; without code its place stays empty.
struct Entree {
    std::string code, texte, prix;
    int chiffre = 0;
};

Disposition lis_disposition(int premier_record) {
    return reglages::disposition(premier_record, grille::colonnes(), grille::lignes(), grille::nb_touches);
}

/// Shows the items of the present page, which is first brought within what exists. Returns the number of pages.
int affiche_liste(const Disposition& d, int nombre, const std::function<Entree(int)>& entree) {
    const int par_ligne = grille::colonnes() / d.largeur;
    const int nb_pages = std::max(1, (nombre + d.par_page - 1) / d.par_page);
    etat::numero_page = static_cast<std::int16_t>(std::clamp<int>(etat::numero_page, 0, nb_pages - 1));
    for (int k = 1; k <= d.par_page; ++k) {
        const int rang = etat::numero_page * d.par_page + k - 1;
        if (rang >= nombre) break;
        const Entree e = entree(rang);
        if (e.code.empty()) continue;
        const grille::Cases cases = {(k - 1) % par_ligne * d.largeur, (k - 1) / par_ligne * d.hauteur, d.largeur,
                                     d.hauteur};
        formes::colore_chiffre(grille::pose_touche(k, cases, e.code, e.texte, d.police), e.chiffre);
        if (!e.prix.empty()) grille::pose_prix(k, e.prix);
    }
    return nb_pages;
}

/// A family without a name is called as the key that has opened it, like a sub-group.
std::string titre_des_articles(int famille) {
    const auto& noms = catalogue::courant().noms_familles;
    std::string nom;
    if (famille >= 0 && static_cast<std::size_t>(famille) < noms.size())
        nom = catalogue::sans_couleur(noms[static_cast<std::size_t>(famille)]);
    return texte::rogne(nom).empty() ? nom_sous_groupe : nom;
}

/// Names of servers or families, from entry 0 when it has one, else from entry 1; an entry without a name leaves its
/// place empty. Returns the number of pages.
int affiche_noms(int premier_record, std::span<const std::string> noms,
                 const std::function<Entree(int n, const std::string& nom)>& entree) {
    const auto est_vide = [&](std::size_t n) { return texte::rogne(noms[n]).empty(); };
    std::size_t premiere = est_vide(0) ? 1 : 0, fin = noms.size();
    while (fin > 0 && est_vide(fin - 1)) --fin;
    const int nombre = static_cast<int>(fin) - static_cast<int>(premiere);
    return affiche_liste(lis_disposition(premier_record), nombre, [&](int rang) {
        const std::size_t n = premiere + static_cast<std::size_t>(rang);
        return est_vide(n) ? Entree{} : entree(static_cast<int>(n), noms[n]);
    });
}

void commence(Vue vue) {
    vue_courante = vue;
    grille::raz_touches();
    bandeau::forme()("Label_num").visible = vue == Vue::accueil;
    bandeau::forme()("Label_attente").visible = false;
}

/// On the first page nothing comes before, on the last one nothing after.
void repose_aux_bouts(int nb_pages) {
    formes::repose_aux_pages(bandeau::forme(), etat::numero_page == 0, etat::numero_page + 1 >= nb_pages);
}

/// The function row of a list of several pages: back, on where there is more, the note, and the way out.
void barre_de_liste(int nb_pages, std::string_view retour, std::string_view suivante, std::string_view sortie) {
    const bool suite = etat::numero_page + 1 < nb_pages;
    std::string codes(retour);
    codes += "|";
    if (suite) codes += suivante;
    codes += "|||#FONC#NOTE|";
    codes += sortie;
    grille::init_g2(codes + "|",
                    suite ? "18xxx:17xxx:00xxx:00xxx:22xxx:24xxx:" : "18xxx:00xxx:00xxx:00xxx:22xxx:24xxx:");
    repose_aux_bouts(nb_pages);
}

/// Draws one line of the key program on its cell of the grid.
void pose_ligne(int k, const programme_touches::Ligne& l, int police_familles) {
    const int colonne = (k - 1) % grille::colonnes(), ligne = (k - 1) / grille::colonnes();
    if (!l.visible() || ligne >= grille::lignes()) return;
    const int police = l.taille() > 0 ? l.taille() : police_familles;
    Aspect& a = grille::pose_touche(k, {colonne, ligne, std::max(1, l.largeur()), std::max(1, l.hauteur())}, l.action(),
                                    l.libelle(), police);
    if (const Couleur fond = depuis_bgr(l.couleur()); fond != sans_couleur) {
        a.fond = fond;
        a.encre = encre_lisible(fond);
    }
    if (l.image() > 0 || l.marque()) grille::pose_image(k, l.image(), l.marque());
}

}  // namespace

Vue vue() {
    return vue_courante;
}

void nomme_sous_groupe(std::string_view nom) {
    nom_sous_groupe = nom;
}

void affiche_serveurs() {
    commence(Vue::serveurs);
    const catalogue::Tables& t = catalogue::courant();
    const int nb_pages = affiche_noms(reglages::touches_serveurs, t.noms_serveurs, [&](int n, const std::string& nom) {
        return Entree{std::string(marque::serveur) + nombres::entier_complete(n, 2), nom, "",
                      catalogue::chiffre_couleur(t.couleurs_serveurs, n)};
    });
    bandeau::titre_accueil();
    grille::init_g2("#RETS#|#SUIS#|||||", "18xxx:17xxx:00xxx:00xxx:00xxx:00xxx:");
    repose_aux_bouts(nb_pages);
    bandeau::affiche_etat();
}

void affiche_familles() {
    commence(Vue::familles);
    std::vector<std::string> noms;
    for (const std::string& nom : catalogue::courant().noms_familles) noms.emplace_back(catalogue::sans_couleur(nom));
    const int nb_pages = affiche_noms(reglages::touches_familles, noms, [](int n, const std::string& nom) {
        return Entree{std::string(marque::famille) + nombres::entier_complete(n, 2), nom, "",
                      catalogue::chiffre_famille(n)};
    });
    bandeau::titre("Familles", "Familles");
    barre_de_liste(nb_pages, marque::familles_precedentes, marque::familles_suivantes, marque::accueil);
    bandeau::affiche_etat();
}

void affiche_articles() {
    commence(Vue::articles);
    const int famille = etat::famille_courante;
    const auto articles = catalogue::articles_de(famille);
    const int nb_pages =
        affiche_liste(lis_disposition(reglages::touches_articles), static_cast<int>(articles.size()), [&](int rang) {
            const std::string_view record = articles[static_cast<std::size_t>(rang)];
            return Entree{std::string(marque::article) + std::string(record), std::string(lignes::libelle(record)),
                          lignes::prix_affiche(record), lignes::chiffre_couleur(record)};
        });
    const std::string titre = titre_des_articles(famille);
    bandeau::titre(
        titre, titre + std::string(" · "_t) + std::to_string(etat::numero_page + 1) + " / " + std::to_string(nb_pages));
    barre_de_liste(nb_pages, marque::articles_precedents, marque::articles_suivants, marque::familles);
    comptes::affiche();
    bandeau::affiche_etat();
}

void dessine_touches() {
    commence(Vue::accueil);
    bandeau::forme()("Label_num").texte() = std::to_string(etat::page_programme);
    const int police_familles = std::max(1, reglages::nombre(reglages::touches_familles));
    const auto page = programme_touches::lis_page(etat::page_programme);
    for (int k = 1; k <= static_cast<int>(page.size()) && k <= grille::nb_touches; ++k) {
        pose_ligne(k, page[static_cast<std::size_t>(k - 1)], police_familles);
    }
    comptes::affiche();
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

void barre_accueil() {
    constexpr std::string_view codes_accueil = "#FONC#TABLE|#LFAM#|#FONC#SERVEUR|#FONC#NOTE|#ENVO#|#FONC#FIN|";
    const bool joint = reseau::joignable();
    grille::init_g2(codes_accueil,
                    joint ? "11xxx:13xxx:15xxx:22xxx:23xxx:12xxx:" : "11xxx:13xxx:15xxx:22xxx:30xxx:12xxx:");
    const int attente = reseau::commandes_en_attente();
    Controle& pastille = bandeau::forme()("Label_attente");
    pastille.texte() = std::to_string(attente);
    pastille.visible = !joint || attente > 0;
}

}  // namespace pages
