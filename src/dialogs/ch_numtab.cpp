#include "dialogs/ch_numtab.h"

#include <array>
#include <string>

#include "data/catalogue.h"
#include "data/etat.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "dialogs/clav_num.h"
#include "dialogs/formes.h"
#include "dialogs/lis_tbb.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace ch_numtab {
namespace {

using namespace ecran;
using formes::px;

constexpr int lignes = 4, colonnes = 3;
constexpr int hauteur_carte = px(110);
constexpr int police_titre = 19, police_titre_etroite = 14;

constexpr std::array<std::string_view, 12> touches_table = {"1", "2", "3", "4", "5", "6",
                                                            "7", "8", "9", "C", "0", "Liste"};
constexpr std::array<std::string_view, 12> touches_couverts = {"1", "2", "3", "4",  "5",  "6",
                                                               "7", "8", "9", "10", "11", "Autres"};

/// One half of the form: its card and its keys.
struct Moitie {
    formes::Carte carte;
    std::string_view grille;
    std::span<const std::string_view> faces;
};
constexpr Moitie moitie_table = {{"Shape1", "Label1", "Label5", "N° de Table"_t}, "g3", touches_table};
constexpr Moitie moitie_couverts = {{"Shape2", "Label2", "Label7", "Couverts"}, "g1", touches_couverts};

enum CaseBarre { efface = 0, liste = 2, rapide = 3, valide = 5 };

class Saisie {
  public:
    Saisie() {
        forme_.nom = "ch_numtab";
        formes::encadre(forme_, "N° de Table"_t, formes::version);
        construit();
        reprend();
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    std::string& table() { return forme_("Label5").texte(); }
    std::string& couverts() { return forme_("Label7").texte(); }

    void construit() {
        const Cadre zone = formes::contenu();
        const int l = (zone.largeur - rythme) / 2;
        const int police = reglages::nombre(reglages::police_table);
        ajoute_moitie(moitie_table, {zone.gauche, zone.haut, l, zone.hauteur}, police);
        ajoute_moitie(moitie_couverts, {zone.gauche + l + rythme, zone.haut, l, zone.hauteur}, police);
        const formes::ToucheDeBarre barre[6] = {
            {"Effacer", image_retour_arriere, Role::detruire},
            {},
            {"Liste", image_liste, Role::action},
            {.texte = "999 / 1", .role = Role::action, .police = formes::est_etroit() ? 14 : 22},
            {},
            formes::touche_valide};
        formes::ajoute_barre(forme_, barre);
    }

    /// One card with its title and value, and the keypad below it.
    void ajoute_moitie(const Moitie& m, const Cadre& zone, int police) {
        const Cadre carte = {zone.gauche, zone.haut, zone.largeur, hauteur_carte};
        const bool etroit = formes::est_etroit();
        const int marge = px(etroit ? 12 : 18);
        const Cadre ligne_titre = {carte.gauche + marge, carte.haut, carte.largeur * 2 / 5 - marge, carte.hauteur};
        const Cadre ligne_valeur = {carte.gauche + carte.largeur * 2 / 5, carte.haut, carte.largeur * 3 / 5 - marge,
                                    carte.hauteur};
        const Cadre touches = {zone.gauche, carte.bas() + rythme, zone.largeur, zone.bas() - carte.bas() - rythme};
        formes::ajoute_carte(forme_, m.carte,
                             {.carte = carte,
                              .titre = ligne_titre,
                              .valeur = ligne_valeur,
                              .police_titre = etroit ? police_titre_etroite : police_titre,
                              .police_valeur = police * 5 / 3,
                              .alignement_titre = Alignement::gauche,
                              .alignement_valeur = Alignement::droite});
        Controle& g = forme_.ajoute({.nom = m.grille,
                                     .genre = Genre::grille,
                                     .cadre = touches,
                                     .police = police,
                                     .gras = true,
                                     .etiquette = 3});
        formes::remplit_touches(g, lignes, colonnes, m.faces, police);
        for (Aspect& a : g.grille.cellules) {
            if (a.texte == "C" || a.texte.size() > 2) a.role = Role::touche_douce;
            if (a.texte.size() > 2) a.police = police * 2 / 3;
        }
    }

    void reprend() {
        const std::string tc = etat::table_couverts + "  ";
        if (!tc.starts_with("#N")) return;
        table() = texte::rogne(texte::colonnes(tc, 3, 3));
        couverts() = texte::rogne(texte::colonnes(tc, 6, 3));
    }

    void branche() {
        forme_("g3").a_la_cellule = [this](int l, int c) { touche_table(forme_("g3").grille.texte(l, c)); };
        forme_("g1").a_la_cellule = [this](int l, int c) { prend_couverts(forme_("g1").grille.texte(l, c)); };
        forme_("g2").a_la_cellule = [this](int, int c) { touche_barre(c); };
        forme_.a_la_frappe = [this](int c) {
            if (c >= '0' && c <= '9') table() += static_cast<char>(c);
        };
        forme_.au_retour_arriere = [this] { touche_table("C"); };
    }

    void touche_table(std::string_view face) {
        if (face.empty()) return;
        if (texte::minuscules(texte::rogne(face)) == "liste") return ouvre_liste();
        if (face != "C") {
            table() += face;
        } else if (!table().empty()) {
            table().pop_back();
        }
    }

    void prend_couverts(std::string_view face) {
        if (texte::minuscules(texte::rogne(face)) == "autres") {
            etat::code_dialogue = mini_97::saisie;
            if (const auto nombre = clav_num::demande("", "Entrez le nb de personnes|")) couverts() = *nombre;
            return;
        }
        couverts() = face;
    }

    void ouvre_liste() {
        etat::texte_dialogue = "|";
        lis_tbb::montre_lis_tbb();
        if (!etat::texte_dialogue.empty()) table() = etat::texte_dialogue;
    }

    void touche_barre(int colonne) {
        switch (colonne) {
            case efface:
                table().clear();
                couverts().clear();
                return;
            case liste:
                return ouvre_liste();
            case rapide:
                table() = "999";
                couverts() = "1";
                return;
            case valide:
                return valide_donnees();
            default:
                return;
        }
    }

    /// The number in three digits at least, as the catalogue's table list has it.
    std::string numero() { return nombres::entier_complete(nombres::lis(table()), 3); }

    bool corrige_table_inconnue() {
        if (reglages::texte(reglages::verification_table) == "NON" || nombres::lis(table()) == 0) return false;
        if (catalogue::table_connue(numero())) return false;
        return mini_97::demande(std::string("Le N° de table "_t) + table() +
                                ", est inconnu, voulez vous le corriger ?");
    }

    void valide_donnees() {
        if (corrige_table_inconnue()) return;
        const std::string n = numero();
        std::string tc = "#N     ";
        tc.replace(2, 3, n.substr(n.size() - 3));
        tc.replace(5, 2, (couverts() + "   ").substr(0, 2));
        etat::table_couverts = tc;
        etat::texte_table = table();
        forme_.ferme();
    }
};

}  // namespace

void montre_ch_numtab() {
    Saisie().montre();
}

}  // namespace ch_numtab
