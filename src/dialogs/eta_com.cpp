#include "dialogs/eta_com.h"

#include <algorithm>
#include <string>
#include <utility>

#include "data/commande.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "dialogs/sel_arti.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/texte.h"

namespace eta_com {
namespace {

using namespace ecran;
using formes::px;

constexpr int hauteur_ligne_min = px(54), hauteur_entete = px(46);
constexpr int largeur_cartes = px(310);
constexpr int pas_defilement = 10;  ///< rows
constexpr int police_entete = 16;
constexpr int polices_larges[] = {64, 64, 54, 33}, polices_etroites[] = {38, 38, 38, 24};  ///< of the cards' values

enum CaseBarre { bas = 0, haut = 1, envoie = 3, ferme = 5 };
const formes::ToucheDeBarre barre[6] = {
    formes::touche_bas, formes::touche_haut, {}, {"Envoyer", image_envoyer, Role::aller}, {}, formes::touche_ferme};

enum Colonne { nombre = 0, libelle = 1, ligne_note = 2, montant = 3, nb_colonnes = 4 };

constexpr formes::Carte cartes[] = {{"Shape1", "Label1", "Label4", "N° Table"_t},
                                    {"Shape2", "Label2", "Label5", "Couverts"},
                                    {"Shape3", "Label3", "Label6", "Nb Lignes"},
                                    {"Shape4", "Label7", "Label_total", "Total"}};

double table() {
    return nombres::lis(texte::colonnes(texte::complete(etat::table_couverts, 8), 3, 3));
}
double couverts() {
    return nombres::lis(texte::colonnes(texte::complete(etat::table_couverts, 8), 6, 3));
}

int lignes_utiles() {
    return static_cast<int>(etat::lignes_gardees().size());
}

class Recapitulatif {
  public:
    Recapitulatif() {
        forme_.nom = "eta_com";
        formes::encadre(forme_, "Récapitulatif"_t, formes::version);
        construit();
        remplit();
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    void construit() {
        const Cadre zone = formes::contenu();
        const bool etroit = formes::est_etroit();
        const int haut_cartes = px(96);
        Cadre liste = zone;
        if (etroit) {
            liste.haut += haut_cartes + rythme;
            liste.hauteur -= haut_cartes + rythme;
        } else {
            liste.largeur -= std::min(largeur_cartes, zone.largeur / 3) + rythme;
        }
        const Cadre zone_cartes =
            etroit ? Cadre{zone.gauche, zone.haut, zone.largeur, haut_cartes}
                   : Cadre{liste.droite() + rythme, zone.haut, zone.droite() - liste.droite() - rythme, zone.hauteur};
        construit_cartes(zone_cartes, etroit);
        forme_.ajoute(formes::liste("g1", liste, std::max(1, reglages::nombre(reglages::police_note))));
        const int debut = formes::largeur() / 3;
        formes::ajoute_geste(forme_, {debut, 0, formes::largeur() - debut - px(12), hauteur_bandeau});
        formes::ajoute_barre(forme_, barre);
        formes::repose_aux_bouts(forme_);
    }

    /// Side by side on a narrow form; else one upon the other, the last two sharing a place.
    void construit_cartes(const Cadre& zone, bool etroit) {
        const auto part = [](int longueur, int parts, int i) { return (longueur + rythme) * i / parts; };
        for (int i = 0; i < 4; ++i) {
            Cadre c = zone;
            if (etroit) {
                c.gauche += part(zone.largeur, 4, i);
                c.largeur = (zone.largeur + rythme) / 4 - rythme;
            } else {
                c.haut += part(zone.hauteur, 3, std::min(i, 2));
                c.hauteur = (zone.hauteur + rythme) / 3 - rythme;
                if (i >= 2) c.largeur = (zone.largeur + rythme) / 2 - rythme;
                if (i == 3) c.gauche += part(zone.largeur, 2, 1);
            }
            ajoute_carte(i, c, etroit);
        }
    }

    void ajoute_carte(int i, const Cadre& cadre, bool etroit) {
        const int haut_titre = etroit ? px(32) : cadre.hauteur / 3;
        const Cadre titre = {cadre.gauche + px(6), cadre.haut, cadre.largeur - px(12), haut_titre};
        const Cadre valeur = {cadre.gauche + px(6), cadre.haut + haut_titre - px(4), cadre.largeur - px(12),
                              cadre.hauteur - haut_titre - px(4)};
        formes::ajoute_carte(forme_, cartes[i],
                             {.carte = cadre,
                              .titre = titre,
                              .valeur = valeur,
                              .police_titre = etroit ? 13 : 16,
                              .police_valeur = etroit ? polices_etroites[i] : polices_larges[i]});
    }

    /// The whole summary from the note; the place in the list stays.
    void remplit() {
        Controle& g1 = forme_("g1");
        Grille& g = g1.grille;
        const int premiere = g.premiere_ligne;
        g.dimensionne(1, nb_colonnes);
        g.lignes_fixes = 1;
        g.defile = true;
        entetes(g);
        double total = 0;
        for (int n = 1; n <= lignes_utiles(); ++n) total += ajoute_article(g, n);
        g.hauteur_ligne = std::max(hauteur_ligne_min, g1.aspect.police * twips_par_point * 2);
        g.hauteurs.assign(static_cast<std::size_t>(g.lignes), g.hauteur_ligne);
        g.hauteurs[0] = hauteur_entete;
        largeur_des_colonnes(g1);
        g.premiere_ligne = premiere;
        g.defile_de(0, g1.cadre);
        forme_("Label4").texte() = nombres::entier_complete(table(), 1);
        forme_("Label5").texte() = nombres::entier_complete(couverts(), 1);
        forme_("Label6").texte() = nombres::entier_complete(total, 1);
        forme_("Label_total").texte() = lignes::total(etat::lignes_gardees());
        formes::colore(forme_);
    }

    /// Quantities and amounts are read whole at every size: their columns widen up to a third of the list, then they
    /// shrink.
    static void largeur_des_colonnes(Controle& g1) {
        const bool etroit = formes::est_etroit();
        const int nb = largeur_de(g1, nombre, true, px(etroit ? 58 : 110), px(16));
        const int prix = largeur_de(g1, montant, false, px(etroit ? 84 : 130), px(52));
        g1.grille.largeurs = {nb, g1.cadre.largeur - nb - prix, 0, prix};
    }

    static int largeur_de(Controle& g1, Colonne colonne, bool gras, int au_moins, int marge) {
        Grille& g = g1.grille;
        int voulue = au_moins;
        for (int l = 1; l < g.lignes; ++l)
            voulue = std::max(voulue, marge + largeur_en_twips(g1.aspect.police, gras, g.texte(l, colonne)));
        const int largeur = std::min(voulue, g1.cadre.largeur / 3);
        for (int l = 1; l < g.lignes && largeur < voulue; ++l)
            g.cellule(l, colonne).police = std::max(1, g1.aspect.police * largeur / voulue);
        return largeur;
    }

    static void entetes(Grille& g) {
        for (const auto& [colonne, texte] : {std::pair(nombre, "Nb"), std::pair(libelle, "Libell\xE9")}) {
            g.cellule(0, colonne) = {.texte = texte,
                                     .role = Role::entete,
                                     .police = police_entete,
                                     .gras = true,
                                     .alignement = colonne == nombre ? Alignement::centre : Alignement::gauche};
        }
        g.cellule(0, ligne_note).role = g.cellule(0, montant).role = Role::entete;
    }

    /// Adds a row and gives its cells the looks that all rows share.
    static int ajoute_rang(Grille& g, int n) {
        const int l = g.ajoute_ligne({.role = Role::ligne});
        g.cellule(l, libelle).alignement = Alignement::gauche;
        g.cellule(l, ligne_note).texte = std::to_string(n);
        return l;
    }

    /// The rows of one note line; gives the quantity shown.
    static double ajoute_article(Grille& g, int n) {
        const std::string& ligne = etat::lignes_note[static_cast<std::size_t>(n)];
        int rang = ajoute_rang(g, n);
        Aspect& quantite = g.cellule(rang, nombre);
        if (const auto q = lignes::quantite(ligne)) quantite.texte = nombres::entier_complete(*q, 1);
        quantite.gras = true;
        quantite.encre = palette::bleu;
        const double q = nombres::lis(quantite.texte);
        g.cellule(rang, libelle).texte = lignes::libelle(ligne);
        g.cellule(rang, libelle).gras = true;
        Aspect& prix = g.cellule(rang, montant);
        prix.texte = nombres::montant(lignes::montant(ligne));
        prix.encre = palette::gris;
        prix.alignement = Alignement::droite;
        for (const std::string& s : lignes::segments(ligne)) {
            rang = ajoute_rang(g, n);
            Aspect& a = g.cellule(rang, libelle);
            a.texte = "   " + s;
            a.encre = palette::gris;
            a.marge_gauche = px(20);
        }
        for (int c = 0; c < nb_colonnes; ++c) g.cellule(rang, c).trait = true;
        return q;
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int ligne, int) {
            if (ligne >= 1) ouvre_ligne(static_cast<int>(nombres::lis(forme_("g1").grille.texte(ligne, ligne_note))));
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            Controle& g1 = forme_("g1");
            const int pas = std::min(pas_defilement, g1.grille.lignes_visibles(g1.cadre));  // no row is passed unseen
            if (colonne == bas) g1.grille.defile_de(pas, g1.cadre);
            if (colonne == haut) g1.grille.defile_de(-pas, g1.cadre);
            if (colonne == envoie) envoie_commande();
            if (colonne == ferme) forme_.ferme();
        };
        for (const auto& carte : {cartes[0], cartes[1]}) {
            forme_(carte.carte).au_toucher = [this] { change_table(); };
            forme_(carte.valeur).laisse_passer = true;
        }
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    void change_table() {
        ch_numtab::montre_ch_numtab();
        remplit();
    }

    /// A note line goes through the article's validation again; what comes back takes its place.
    void ouvre_ligne(int n) {
        if (n < 1 || n > lignes_utiles()) return;
        complements::prend(etat::lignes_note[static_cast<std::size_t>(n)]);
        const std::string libelle(lignes::libelle(etat::texte_travail));
        sel_arti::montre_sel_arti();
        if (texte::rogne(etat::texte_travail).empty()) {
            formes::annonce_geste(forme_, std::string("– "_t) + libelle);
            retire_ligne(n);
        } else {
            etat::lignes_note[static_cast<std::size_t>(n)] = etat::texte_travail;
        }
        remplit();
    }

    static void retire_ligne(int n) {
        const int derniere = lignes_utiles();
        std::rotate(etat::lignes_note.begin() + n, etat::lignes_note.begin() + n + 1,
                    etat::lignes_note.begin() + derniere + 1);
        etat::lignes_note[static_cast<std::size_t>(derniere)].clear();
        etat::nb_lignes_note = static_cast<std::int16_t>(derniere - 1);
    }

    void envoie_commande() {
        if (table() == 0 || couverts() == 0) {
            return mini_97::informe("Vous devez préciser un N° de table et un Nb de couverts !"_t);
        }
        if (!mini_97::demande("Confimez l'envoi de la commande au serveur ?")) return;
        if (commande::envoi_commande() != fichiers::Issue::fait) {
            return mini_97::informe("La commande n'a pas pu être écrite, elle reste dans la note !"_t);
        }
        mini_97::annonce("La commande à été envoyée !"_t);
        etat::commande_envoyee = true;
        forme_.ferme();
    }
};

}  // namespace

void montre_eta_com() {
    Recapitulatif().montre();
}

}  // namespace eta_com
