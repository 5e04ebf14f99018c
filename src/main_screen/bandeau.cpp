#include "main_screen/bandeau.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "data/catalogue.h"
#include "data/etat.h"
#include "data/nombres.h"
#include "data/suivi.h"
#include "dialogs/formes.h"
#include "dialogs/moduclav.h"
#include "platform/peinture/images.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/texte.h"

namespace bandeau {
namespace {

using namespace ecran;
using formes::px;

constexpr std::string_view marque = "2021-05-19a";
constexpr int police_etat = 12, police_etat_etroite = 11;
constexpr int hauteur_commande = 390, haut_command1 = 870;  ///< twips, the latter from the form's bottom edge

std::unique_ptr<Forme> ecran_principal;
bool ambre = false;  ///< the upper banner says that the kitchen has not collected an order

/// The service pictures, from the left.
struct Service {
    std::string_view nom;
    int image;
};
constexpr Service services[] = {
    {"logosuiv", image_historique}, {"logoserv", image_wifi}, {"logil", image_outils}, {"logo", image_maison}};

/// The technician's buttons.
struct Commande {
    std::string_view nom, texte;
    int gauche, largeur;  ///< design pixels
};
constexpr Commande commandes[] = {{"Command1", "O", 0, 40},     {"Command2", "F", 50, 40},
                                  {"Command3", "M", 0, 40},     {"Command4", "C", 100, 40},
                                  {"Command5", "N", 150, 40},   {"Command6", "Command6", 200, 90},
                                  {"Command7", "Menu", 300, 60}};

void place_services() {
    const bool etroit = formes::est_etroit();
    const int pas = px(etroit ? 44 : 72);
    int gauche = formes::largeur() - static_cast<int>(std::size(services)) * pas;
    forme()("label_etat").aspect.police = etroit ? police_etat_etroite : police_etat;
    for (const Service& s : services) {
        forme()(s.nom).cadre = {gauche, 0, pas, hauteur_bandeau};
        gauche += pas;
    }
}

void place_commandes() {
    for (const Commande& k : commandes) {
        forme()(k.nom).cadre = {px(k.gauche), formes::hauteur() - hauteur_commande, px(k.largeur), hauteur_commande};
    }
    forme()("Command1").cadre.haut = formes::hauteur() - haut_command1;
}

/// What lies on the banners is seen on whatever colour they have.
void accorde_au_bandeau() {
    const auto encre = [](std::string_view bandeau, Couleur ordinaire) {
        const Couleur fond = forme()(bandeau).aspect.fond;
        return fond != sans_couleur ? encre_lisible(fond) : ordinaire;
    };
    for (const Service& s : services) forme()(s.nom).aspect.encre = encre("label_haut", palette::blanc);
    for (const char* nom : {"label_etat", "label_geste"})
        forme()(nom).aspect.encre = encre("label_haut", palette::jaune);
    forme()("Label_num").aspect.encre = encre("label_bas", palette::pale);
}

/// Who, which table, how many covers and lines, and the total; the narrow screen has room for abbreviations.
std::string texte_etat() {
    if (!catalogue::a_des_serveurs()) return "Aucun catalogue";
    if (etat::nom_serveur.empty()) return "Choisissez votre nom";
    const std::string_view point = " · "_t;
    std::string t = etat::nom_serveur;
    const auto ajoute = [&](const std::string& s) { t += std::string(point) + s; };
    const std::string table(texte::colonnes(etat::table_couverts, 3, 3));
    const std::string couverts(texte::rogne(texte::colonnes(etat::table_couverts, 6, 2)));
    if (nombres::lis(table) != 0) ajoute("Table " + table);
    if (nombres::lis(couverts) != 0) {
        ajoute(couverts + (formes::est_etroit() ? " couv." : nombres::lis(couverts) == 1 ? " couvert" : " couverts"));
    }
    const std::size_t n = etat::lignes_gardees().size();
    ajoute(std::to_string(n) + (formes::est_etroit() ? " l." : n > 1 ? " lignes" : " ligne"));
    ajoute(etat::total_note);
    return t;
}

std::string texte_cuisine(int non_collectees) {
    const std::string_view quoi = non_collectees > 1 ? " commandes non collectées"_t : " commande non collectée"_t;
    return "Cuisine : " + std::to_string(non_collectees) + std::string(quoi);
}

int largeur_voulue(const Controle& c) {
    return largeur_en_twips(c.aspect.police, true, c.aspect.texte) + px(2);
}

/// What is left of this belongs to the title: what it needs, or a fifth of the banner.
int limite_du_titre() {
    Controle& haut = forme()("label_haut");
    return std::min(haut.aspect.marge_gauche + largeur_voulue(haut) + px(24), formes::largeur() / 5);
}

/// Gives a text at the right of the banner the room that it needs; returns where that begins.
int pose_a_droite(Controle& c, int droite) {
    int gauche = droite - largeur_voulue(c);
    if (gauche < formes::largeur() / 5) gauche = std::max(gauche, limite_du_titre());
    c.cadre = {gauche, 0, std::max(0, droite - gauche), hauteur_bandeau};
    return gauche;
}

/// The texts lie left of the service pictures; the title keeps the rest.
void partage() {
    const bool etroit = formes::est_etroit();
    Controle &etat = forme()("label_etat"), &geste = forme()("label_geste");
    geste.aspect.police = etat.aspect.police;
    geste.visible = !geste.texte().empty();
    etat.visible = !geste.visible || !etroit;
    int gauche = forme()(services[0].nom).cadre.gauche - px(etroit ? 8 : 24);
    if (etat.visible) gauche = pose_a_droite(etat, gauche);
    if (geste.visible) gauche = pose_a_droite(geste, etat.visible ? gauche - px(4) : gauche);
    forme()("label_haut").aspect.marge_droite = formes::largeur() - gauche;
}

}  // namespace

void construit(void (*touches)(Forme& forme)) {
    ecran_principal = std::make_unique<Forme>();
    Forme& f = *ecran_principal;
    f.nom = "Form1";
    f.tourne_des_pages = true;
    moduclav::bandeaux(f, "", "");
    f.ajoute({.nom = "label_etat",
              .police = police_etat,
              .gras = true,
              .alignement = Alignement::droite,
              .encre = palette::jaune,
              .laisse_passer = true});
    formes::ajoute_geste(f, {});
    f.avant_image = partage;
    for (const Service& s : services)
        f.ajoute({.nom = s.nom, .genre = Genre::image, .encre = palette::blanc, .image = s.image});
    touches(f);
    for (const Commande& k : commandes) {
        f.ajoute({.nom = k.nom,
                  .genre = Genre::bouton,
                  .texte = k.texte,
                  .role = Role::touche_douce,
                  .police = 9,
                  .gras = true,
                  .visible = false});
    }
}

Forme& forme() {
    return *ecran_principal;
}

void place() {
    Forme& f = forme();
    formes::place(f);
    moduclav::bandeaux(f, f("label_haut").texte(), f("label_bas").texte());
    place_services();
    place_commandes();
    colore();
}

void colore() {
    Aspect& haut = forme()("label_haut").aspect;
    haut.fond = haut.encre = sans_couleur;
    formes::colore(forme());
    if (ambre) formes::met_couleurs(haut, palette::ambre, palette::encre);
    accorde_au_bandeau();
}

void montre_commandes(bool montre) {
    for (const Commande& k : commandes) forme()(k.nom).visible = montre;
}

void titre(std::string_view haut, std::string_view bas) {
    forme()("label_haut").texte() = haut;
    forme()("label_bas").texte() = bas;
}

void titre_accueil() {
    titre("Win_Orvalune " + std::string(marque), "Orvalune");
}

void affiche_etat() {
    forme()("logoserv").aspect.image = etat::hors_ligne ? image_wifi_coupe : image_wifi;
    const int n = suivi::non_collectees();
    const bool avant = std::exchange(ambre, n > 0);
    if (ambre != avant) colore();
    forme()("label_etat").laisse_passer = !ambre;
    annonce_etat(ambre ? texte_cuisine(n) : texte_etat());
}

void annonce_etat(std::string_view texte) {
    forme()("label_etat").texte() = texte;
    partage();
}

void annonce_geste(std::string_view texte) {
    formes::annonce_geste(forme(), std::string(texte) + std::string(formes::est_etroit() ? "" : " ·"_t));
}

void retire_geste(std::string_view debut) {
    std::string& geste = forme()("label_geste").texte();
    if (geste.starts_with(debut)) geste.clear();
}

}  // namespace bandeau
