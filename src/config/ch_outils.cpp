#include "config/ch_outils.h"

#include <algorithm>
#include <optional>
#include <string>

#include "config/ggcoul.h"
#include "config/porpay.h"
#include "config/rangees_outils.h"
#include "data/etat.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "dialogs/clav_num.h"
#include "dialogs/clavv.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "dialogs/moduclav.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace ch_outils {
namespace {

using namespace ecran;
using formes::px;

// Twips.
constexpr int gauche = 200, haut_liste = 700, reserve_largeur = 400, reserve_hauteur = 3000, reserve_colonne = 280;
constexpr int hauteur_rangee_min = px(57);
constexpr int garde_ms = 300;

constexpr int police_min = 20, police_max = 60, pas_police = 2;
constexpr int police_lisible = 10, marge_libelle = px(32);
constexpr int pas_defilement = 10, derniere_defilee = 90;  ///< rows

constexpr std::string_view marque = "#I#";
constexpr std::size_t longueur_genre = 6;

constexpr std::string_view programme_parametres = "orvapara.exe";
constexpr std::string_view navigateur = "c:\\Program Files\\Internet Explorer\\iexplore.exe ";
constexpr std::string_view adresse_mise_a_jour = "https://www.orvalune.example/majwolu.exe";

constexpr std::string_view fichier_releve = "dupm42tab.txt";
constexpr int records_du_releve = 1000;

enum Colonne { libelle = 0, valeur = 1, code = 4, invite = 5, nb_colonnes = 6 };

enum CaseBarre { ecran_ = 0, bas, haut, moins, plus, ferme };
const formes::ToucheDeBarre barre[6] = {{"Écran"_t, image_ecran, Role::action},
                                        formes::touche_bas,
                                        formes::touche_haut,
                                        {.texte = "A\x96", .role = Role::action, .police = 30},
                                        {.texte = "A+", .role = Role::action, .police = 30},
                                        formes::touche_ferme};

int record_de(std::string_view code_rangee) {
    return nombres::entier_int(texte::colonnes(code_rangee, longueur_genre + 1));
}

/// Writes a record; a refusal is told, since the manager would believe the change made.
bool enregistre(int record, const std::string& contenu) {
    if (reglages::ecrit(record, contenu) == fichiers::Issue::fait) return true;
    mini_97::informe("Le réglage n'a pas pu être enregistré, il reste ce qu'il était !"_t);
    return false;
}

/// Tells how the identification ended. The network may answer when the toolbox is closed and another screen is asking
/// something: its request stays what it was.
void annonce_identification(bool ecrit) {
    const auto code = etat::code_dialogue;
    const std::string texte = etat::texte_dialogue;
    mini_97::informe(ecrit ? "Envoi du code d'identification effectué !"_t
                           : "Le code d'identification n'a pas pu être envoyé, vérifiez le réseau et recommencez !"_t);
    etat::code_dialogue = code;
    etat::texte_dialogue = texte;
}

/// Writes records 1 to 1000 as lines and ends the program.
void releve() {
    std::string t;
    for (int n = 1; n <= records_du_releve; ++n) {
        t += nombres::entier_complete(n, 4) + " : " + reglages::brut(n) + "\r\n";
    }
    static_cast<void>(fichiers::cree_repertoire(fichiers::repertoire_maintenance));  // it may be there already
    const std::string chemin = fichiers::joint(fichiers::repertoire_maintenance, fichier_releve);
    if (fichiers::ecrit_tout(chemin, t, fichiers::Remplace::oui) != fichiers::Issue::fait) {
        mini_97::informe("Le relevé des réglages n'a pas pu être écrit, le logiciel s'arrête !"_t);
    }
    moduclav::quitte();
}

class Outils {
  public:
    Outils() {
        forme_.nom = "ch_outils";
        formes::encadre(forme_, "Boite à Outils"_t, "Manier avec précautions"_t);
        construit();
        for (const Rangee& r : rangees) ajoute_ligne(r);
        change_police(police());
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;

    Controle& g1() { return forme_("g1"); }
    std::string cellule(int ligne, int colonne) { return std::string(g1().grille.texte(ligne, colonne)); }

    void construit() {
        const int largeur = std::max(px(60), formes::largeur() - reserve_largeur);
        const int hauteur = std::max(px(60), formes::hauteur() - reserve_hauteur);
        const int largeur_valeur = largeur / 4, largeur_libelle = largeur - largeur_valeur - reserve_colonne;
        const Cadre liste = {gauche, haut_liste, largeur, hauteur};
        const Cadre trait = {gauche + largeur_libelle, haut_liste, px(1), hauteur};
        const Cadre touche = {0, formes::hauteur() - hauteur_bandeau, px(80), hauteur_bandeau};
        const Plan plans[] = {
            formes::liste("g1", liste, 0),
            {.nom = "Shape1", .genre = Genre::forme, .cadre = trait, .fond = palette::trait, .laisse_passer = true},
            {.nom = "Label1", .visible = false},
            {.nom = "Command111",
             .genre = Genre::bouton,
             .cadre = touche,
             .texte = "Relevé"_t,
             .role = Role::touche_douce,
             .police = 9,
             .gras = true,
             .visible = etat::service},
        };
        forme_.construit(plans);
        Grille& g = g1().grille;
        g.dimensionne(0, nb_colonnes);
        g.largeurs = {largeur_libelle, largeur_valeur, 0, 0, 0, 0};
        g.defile = true;
        Controle& g2 = formes::ajoute_barre(forme_, barre);
        g2.cadre.gauche = gauche;
        g2.cadre.largeur = largeur;
        formes::repose_aux_bouts(forme_, bas, haut);
    }

    /// Appends a row: its label behind a blank, and the present value of what it edits.
    void ajoute_ligne(const Rangee& r) {
        const bool titre = texte::rogne(r.code).empty();
        const bool trait = !titre && !precede_un_titre(r);
        const Role role = titre ? Role::titre_groupe : Role::ligne;
        Grille& g = g1().grille;
        const int l = g.ajoute_ligne();
        g.cellule(l, libelle) = {.texte = " " + std::string(r.libelle),
                                 .role = role,
                                 .gras = titre,
                                 .alignement = titre ? Alignement::centre : Alignement::gauche,
                                 .trait = trait};
        g.cellule(l, valeur) = {.texte = valeur_initiale(r.code),
                                .role = role,
                                .encre = palette::bleu,
                                .gras = true,
                                .alignement = Alignement::droite,
                                .trait = trait};
        g.cellule(l, code).texte = r.code;
        g.cellule(l, invite).texte = r.invite;
    }

    /// The last row before a heading needs no line below it.
    static bool precede_un_titre(const Rangee& r) {
        const Rangee* suivante = &r + 1;
        return suivante == std::end(rangees) || suivante->code.empty();
    }

    /// Switches and free texts are shown from one common record on, which holds a bare word: they start blank.
    static std::string valeur_initiale(std::string_view code_rangee) {
        const std::string_view genre = texte::colonnes(code_rangee, 1, longueur_genre);
        if (genre == "#SW42#" || genre == "#SX42#") return reglages::valeur(record_de(code_rangee));
        if (genre == "#CH42#" || genre == "#ON42#") return reglages::valeur(reglages::verification_table);
        return "";
    }

    static int police() { return reglages::nombre(reglages::police_outils); }

    void change_police(int points) {
        Controle& g = g1();
        g.aspect.police = points;
        const int commune = police_commune(points);
        g.grille.hauteur_ligne =
            std::min(g.cadre.hauteur, std::max(hauteur_rangee_min, commune * twips_par_point * 32 / 15));
        for (int l = 0; l < g.grille.lignes; ++l) {
            g.grille.cellule(l, libelle).police = g.grille.cellule(l, valeur).police = commune;
        }
    }

    /// The size asked for, or a smaller one at which every label is shown whole: only its end tells it from its
    /// neighbours, and the rows of one list have letters of one size.
    int police_commune(int points) {
        const Grille& g = g1().grille;
        const int place = g.largeurs[libelle] - marge_libelle;
        for (int l = 0; l < g.lignes; ++l) {
            const Aspect& a = g.cellule(l, libelle);
            while (points > police_lisible && largeur_en_twips(points, a.gras, a.texte) > place) --points;
        }
        return points;
    }

    void branche() {
        g1().a_la_cellule = [this](int ligne, int) {
            if (!forme_("Label1").texte().empty()) touche_rangee(ligne);
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) { touche_barre(colonne); };
        forme_("label_haut").au_maintien = [this] {
            etat::service = true;
            forme_("Command111").visible = true;
        };
        forme_("Command111").au_toucher = releve;
        forme_.a_l_echappement = [this] { forme_.ferme(); };
        forme_.ajoute_minuterie("Timer1").sonne_une_fois(garde_ms, [this] { forme_("Label1").texte() = "X"; });
    }

    // --- rows

    struct Action {
        std::string_view genre;
        void (Outils::*agit)(int ligne);
    };

    void touche_rangee(int ligne) {
        const std::string genre = cellule(ligne, code).substr(0, longueur_genre);
        static constexpr Action actions[] = {
            {"#SW42#", &Outils::saisit_nombre},    {"#SX42#", &Outils::saisit_taille},
            {"#CH42#", &Outils::saisit_texte},     {"#ON42#", &Outils::bascule},
            {"#COUL#", &Outils::choisit_couleurs}, {"#RESO#", &Outils::change_resolution},
            {"#RCOC#", &Outils::reconnecte},       {"#IDEN#", &Outils::identifie},
            {"#MAJJ#", &Outils::met_a_jour},       {"#NTAB#", &Outils::verifie_les_tables},
        };
        for (const Action& a : actions) {
            if (a.genre == genre) return (this->*a.agit)(ligne);
        }
    }

    /// Puts the prompt and the present value into the shared request of the keypads.
    std::string demande_de_valeur(int ligne) {
        std::string question = cellule(ligne, invite);
        if (question.empty()) question = "valeur : " + cellule(ligne, libelle);
        etat::code_dialogue = mini_97::saisie;
        return question + "|" + cellule(ligne, valeur);
    }

    /// Stores what was entered, whatever it is; readers make a number of it. False when it was not, which is told.
    bool range_valeur(int ligne, const std::string& entree) {
        if (entree.size() > reglages::longueur_valeur) {
            mini_97::informe("Valeur trop longue (17 caractères au plus), le réglage reste ce qu'il était !"_t);
            return false;
        }
        if (!enregistre(record_de(cellule(ligne, code)), std::string(marque) + entree)) return false;
        g1().grille.cellule(ligne, valeur).texte = entree;
        return true;
    }

    void saisit_nombre(int ligne) {
        const auto entree = clav_num::demande("", demande_de_valeur(ligne));
        if (!entree || !range_valeur(ligne, *entree)) return;
        if (record_de(cellule(ligne, code)) == reglages::taille_boites)
            mini_97::informe("Verification Boite de dialogue !");
    }

    void saisit_taille(int ligne) {
        const auto entree = clav_num::demande(clav_num::mode_taille, demande_de_valeur(ligne));
        if (entree) range_valeur(ligne, *entree);
    }

    void saisit_texte(int ligne) {
        if (const auto entree = clavv::demande(etat::saisie, demande_de_valeur(ligne))) range_valeur(ligne, *entree);
    }

    void bascule(int ligne) {
        const int record = record_de(cellule(ligne, code));
        enregistre(record, mini_97::demande(cellule(ligne, libelle)) ? "OUI" : "NON");
        g1().grille.cellule(ligne, valeur).texte = reglages::texte(record);
    }

    void verifie_les_tables(int) {
        const bool oui = mini_97::demande("Vérifier le Numéro avec le plan de table ?"_t);
        enregistre(reglages::verification_table, oui ? "OUI" : "NON");
    }

    void identifie(int) {
        mini_97::informe("Lancez le routeur Orvalune en mode identification tablette cliquez sur 'OK'");
        reseau::envoie_identification(annonce_identification);
    }

    void choisit_couleurs(int) { ggcoul::montre_ggcoul(); }

    /// One side of the resolution in pixels; nothing when the answer is empty or the keyboard was abandoned.
    static std::optional<int> demande_cote(std::string_view question, std::size_t colonne) {
        const std::string record = reglages::brut(reglages::record_resolution);
        const auto reponse = clavv::demande(
            etat::saisie, std::string(question) + "|" + std::string(texte::colonnes(record, colonne, 5)));
        if (!reponse || texte::rogne(*reponse).empty()) return std::nullopt;
        return nombres::entier_int(*reponse);
    }

    void change_resolution(int) {
        const auto largeur = demande_cote("Entrez la résolution horizontale ?"_t, 6);
        if (!largeur) return;
        const auto hauteur = demande_cote("Entrez la résolution verticale ?"_t, 12);
        if (!hauteur) return;
        if (reglages::retouche_resolution({*largeur, *hauteur}) != fichiers::Issue::fait) {
            return mini_97::informe("La résolution n'a pas pu être enregistrée, elle reste ce qu'elle était !"_t);
        }
        moduclav::quitte();
    }

    void reconnecte(int) {
        if (!mini_97::demande("Confirmez la reconnexion de la tablette au réseau serveur ?"_t)) return;
        moduclav::passe_la_main(programme_parametres, processus::Fenetre::normale);
        mini_97::informe("Le programme de paramétrage n'a pas pu être lancé, la connexion reste ce qu'elle était !"_t);
    }

    void met_a_jour(int) {
        if (!mini_97::demande("Confirmez la mise à jour de Win_Orvalune,  le logiciel va être fermé et vous devrez le "
                              "relancer aprés la mise à jour ?"_t)) {
            return;
        }
        moduclav::passe_la_main(std::string(navigateur) + std::string(adresse_mise_a_jour),
                                processus::Fenetre::agrandie);
        mini_97::informe("Le navigateur n'a pas pu être lancé, la mise à jour n'est pas faite !"_t);
    }

    // --- key bar

    void touche_barre(int colonne) {
        switch (colonne) {
            case ecran_:
                porpay::montre_porpay();
                return forme_.ferme();
            case bas:
                return descend();
            case haut:
                return monte();
            case moins:
                return ecrit_police(police() > police_min, police() - pas_police);
            case plus:
                return ecrit_police(police() < police_max, police() + pas_police);
            case ferme:
                return forme_.ferme();
            default:
                return;
        }
    }

    void descend() {
        Controle& g = g1();
        if (g.grille.premiere_ligne < derniere_defilee) g.grille.defile_de(pas_defilement, g.cadre);
    }

    void monte() {
        Controle& g = g1();
        const int premiere = g.grille.premiere_ligne;
        g.grille.defile_de(premiere > pas_defilement ? -pas_defilement : -premiere, g.cadre);
    }

    void ecrit_police(bool permis, int points) {
        if (!permis) return;
        if (enregistre(reglages::police_outils, std::string(marque) + std::to_string(points))) change_police(points);
        g1().grille.defile_de(0, g1().cadre);
    }
};

}  // namespace

void montre_ch_outils() {
    Outils().montre();
}

}  // namespace ch_outils
