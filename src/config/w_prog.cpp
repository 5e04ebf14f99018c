#include "config/w_prog.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/lis_bout.h"
#include "config/w_prog_acte.h"
#include "config/w_prog_coul.h"
#include "data/etat.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "dialogs/clavv.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "dialogs/saisie.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace w_prog {
namespace {

using namespace ecran;
using formes::px;
using programme_touches::Champ;
using programme_touches::Ligne;
using programme_touches::lignes_par_page;

constexpr std::string_view titre_de_saisie = "KMZ";

/// The columns of the grid; their widths in design pixels on the narrowest and on a wide screen.
enum Colonne { numero, reference, libelle, lh, taille, image, visible, acte, couleur, nb_colonnes };
struct PlanColonne {
    std::string_view entete;
    Champ champ;  ///< of column 0 none
    int largeur_min, largeur;
    Alignement alignement;
};
constexpr PlanColonne colonnes[nb_colonnes] = {
    {"N°"_t, Champ::reference, 26, 64, Alignement::centre},     {"Ref", Champ::reference, 54, 188, Alignement::gauche},
    {"Libellé"_t, Champ::libelle, 92, 214, Alignement::gauche}, {"LH", Champ::lh, 54, 62, Alignement::centre},
    {"Size", Champ::taille, 54, 70, Alignement::centre},        {"Grap", Champ::image, 54, 112, Alignement::centre},
    {"Visu", Champ::visible, 54, 72, Alignement::centre},       {"Acte", Champ::action, 68, 316, Alignement::gauche},
    {"Coul", Champ::couleur, 60, 142, Alignement::centre},
};
constexpr int largeur_serree = px(80), police_serree = 8;  ///< a column below that width takes the small letters
constexpr int largeur_ascenseur = px(20), hauteur_ligne = px(57), hauteur_entete = px(44);

/// A card of the head and its share of the width.
struct CarteDeTete {
    formes::Carte carte;
    int largeur, largeur_etroite;  ///< design pixels; the two titles share what is left
};
constexpr CarteDeTete cartes[] = {{{"Shape1", "Label5", "Label1", "Page"}, 120, 60},
                                  {{"Shape2", "Label6", "Text1", "Titre"}, 0, 0},
                                  {{"Shape3", "Label7", "Text2", "Texte"}, 0, 0},
                                  {{"Shape4", "Label8", "Label4", "Opération"_t}, 250, 118}};
constexpr int hauteur_cartes = px(78);

constexpr std::string_view lh_ordinaire = "11";
constexpr std::string_view copier = "COPIER", coller = "COLLER", couper = "COUPER";

/// The keys below the grid, from the left.
struct Bouton {
    std::string_view nom, texte;
    int image;
};
constexpr Bouton boutons[] = {{"Command2", "Page", image_page},        {"Command3", copier, image_copier},
                              {"Command4", coller, image_coller},      {"Command5", couper, image_couper},
                              {"Command6", "Switch", image_reglettes}, {"Command1", "Fermer", image_fermer}};
constexpr int nb_boutons = 6;

/// The copied line: its cells from column 1 on, none before the first copy. It outlives the screen.
std::vector<std::string> presse_papiers;

/// A text as a field of a line keeps it.
std::string comme_garde(Champ champ, std::string_view texte) {
    Ligne l;
    l.pose(champ, texte::rogne(texte));
    return std::string(l.champ(champ));
}

/// Makes the record of a line whole, where the file ends before it.
void allonge(Ligne& l) {
    l.pose(Champ::visible, l.champ(Champ::visible));
}

std::vector<int> largeurs(int place) {
    int petites = 0, grandes = 0;
    for (const PlanColonne& c : colonnes) {
        petites += px(c.largeur_min);
        grandes += px(c.largeur);
    }
    const double serre = std::min(1.0, static_cast<double>(place) / petites);
    const double part = std::clamp(static_cast<double>(place - petites) / (grandes - petites), 0.0, 1.0);
    std::vector<int> r;
    int reste = place;
    for (const PlanColonne& c : colonnes) {
        r.push_back(static_cast<int>(serre * px(c.largeur_min) + part * px(c.largeur - c.largeur_min)));
        reste -= r.back();
    }
    r[acte] = std::max(px(20), r[acte] + reste);
    return r;
}

class Editeur {
  public:
    Editeur() {
        forme_.nom = "w_prog";
        formes::encadre(forme_, "Programme des touches", "Orvalune");
        etat::page_programme = page_existante(etat::page_programme);
        construit();
        charge_page();
        branche();
    }

    void montre() { montre_modal(forme_); }

  private:
    Forme forme_;
    std::vector<Ligne> lignes_;  ///< of the page, as they were read
    Ligne titres_;

    Grille& g1() { return forme_("g1").grille; }
    std::string& cellule(int l, int c) { return g1().cellule(l, c).texte; }
    std::string& operation() { return forme_("Label4").texte(); }
    static int page() { return etat::page_programme; }
    static std::int16_t page_existante(int p) {
        return static_cast<std::int16_t>(std::clamp(p, 0, programme_touches::nb_pages - 1));
    }

    // --- Layout

    void construit() {
        const Cadre zone = formes::contenu();
        construit_cartes(zone);
        const int haut = zone.haut + hauteur_cartes + rythme;
        const Cadre liste = {zone.gauche, haut, zone.largeur, zone.bas() - haut};
        forme_.ajoute({.nom = "g1",
                       .genre = Genre::grille,
                       .cadre = liste,
                       .role = Role::carte,
                       .police = formes::est_etroit() ? 11 : 15,
                       .alignement = Alignement::gauche,
                       .etiquette = 9});
        Grille& g = g1();
        g.dimensionne(lignes_par_page + 1, nb_colonnes);
        g.largeurs = largeurs(liste.largeur - largeur_ascenseur);
        g.lignes_fixes = 1;
        g.hauteur_ligne = hauteur_ligne;
        g.hauteurs.assign(static_cast<std::size_t>(g.lignes), hauteur_ligne);
        g.hauteurs[0] = hauteur_entete;
        g.defile = g.quadrillage = true;
        const Cadre barre = formes::cadre_barre();
        for (int i = 0; i < nb_boutons; ++i) {
            const int pas = (barre.largeur + px(8)) / nb_boutons;
            forme_.ajoute({.nom = boutons[i].nom,
                           .genre = Genre::bouton,
                           .cadre = {barre.gauche + i * pas, barre.haut, pas - px(8), barre.hauteur},
                           .texte = boutons[i].texte,
                           .role = Role::action,
                           .police = formes::est_etroit() ? 11 : 14,
                           .gras = true,
                           .etiquette = 2});
            forme_(boutons[i].nom).aspect.image = boutons[i].image;
        }
    }

    void construit_cartes(const Cadre& zone) {
        const bool etroit = formes::est_etroit();
        const auto fixe = [&](const CarteDeTete& c) { return px(etroit ? c.largeur_etroite : c.largeur); };
        const int libre = (zone.largeur - 3 * rythme - fixe(cartes[0]) - fixe(cartes[3])) / 2;
        int gauche = zone.gauche;
        for (const CarteDeTete& c : cartes) {
            const int largeur = fixe(c) > 0 ? fixe(c) : libre;
            ajoute_carte(c.carte, {gauche, zone.haut, largeur, hauteur_cartes}, etroit);
            gauche += largeur + rythme;
        }
    }

    void ajoute_carte(const formes::Carte& c, const Cadre& cadre, bool etroit) {
        const int bord = px(etroit ? 8 : 16), l = cadre.largeur - 2 * bord;
        const Cadre titre = {cadre.gauche + bord, cadre.haut + px(4), l, px(28)};
        const Cadre valeur = {cadre.gauche + bord, cadre.haut + px(32), l, px(40)};
        formes::ajoute_carte(forme_, c, {cadre, titre, valeur, 13, etroit ? 13 : 19});
    }

    // --- The page

    /// All lines of the page, blank ones where the file cannot be read.
    static std::vector<Ligne> lignes_de_la_page() {
        std::vector<Ligne> r = programme_touches::lis_page(page());
        r.resize(lignes_par_page, Ligne{"", false});
        for (Ligne& l : r) allonge(l);
        return r;
    }

    void charge_page() {
        forme_("Label1").texte() = std::to_string(page());
        titres_ = programme_touches::lis_titres(page());
        allonge(titres_);
        forme_("Text1").texte() = titres_.libelle();
        forme_("Text2").texte() = titres_.action();
        Grille& g = g1();
        for (int c = 0; c < nb_colonnes; ++c) cellule(0, c) = colonnes[c].entete;
        lignes_ = lignes_de_la_page();
        for (int l = 1; l <= lignes_par_page; ++l) {
            cellule(l, numero) = nombres::entier_complete(l, 2);
            for (int c = 1; c < nb_colonnes; ++c) {
                cellule(l, c) = lignes_[static_cast<std::size_t>(l - 1)].champ(colonnes[c].champ);
            }
        }
        g.ligne = g.colonne = -1;
        g.premiere_ligne = g.lignes_fixes;
        peint();
    }

    /// Writes the lines that differ from what was read, and the titles; what the editor does not show stays as it is in
    /// the file. A line that could not be read was shown blank, and must not take the place of the true one.
    bool valide_donnees() {
        bool juste = true;
        for (int l = 1; l <= lignes_par_page; ++l) {
            Ligne& lue = lignes_[static_cast<std::size_t>(l - 1)];
            Ligne ligne = lue;
            for (int c = 1; c < nb_colonnes; ++c) ligne.pose(colonnes[c].champ, texte::rogne(cellule(l, c)));
            if (ligne.record == lue.record) continue;
            const bool ecrite = programme_touches::ecrit_ligne(page(), l, ligne) == fichiers::Issue::fait;
            if (ecrite) lue = ligne;
            juste = ecrite && juste;
        }
        Ligne titres = titres_;
        titres.pose(Champ::libelle, texte::rogne(forme_("Text1").texte()));
        titres.pose(Champ::action, texte::rogne(forme_("Text2").texte()));
        if (titres.record == titres_.record) return juste;
        const bool ecrits = programme_touches::ecrit_titres(page(), titres) == fichiers::Issue::fait;
        if (ecrits) titres_ = titres;
        return ecrits && juste;
    }

    // --- Painting

    void peint() {
        Grille& g = g1();
        for (int l = 0; l < g.lignes; ++l) peint_rang(l);
        for (const Bouton& b : boutons) {
            const bool attend = !operation().empty() && operation() == b.texte;
            Controle& c = forme_(b.nom);
            c.aspect.role = attend ? Role::attendre : Role::action;
            c.aspect.fond = c.aspect.encre = sans_couleur;
            c.etiquette = attend ? 0 : 2;
        }
        const bool attend = !operation().empty();
        Controle& carte = forme_("Shape4");
        carte.aspect.role = attend ? Role::attendre : Role::carte;
        carte.aspect.fond = sans_couleur;
        carte.etiquette = attend ? 0 : 4;
        for (const CarteDeTete& c : cartes) forme_(c.carte.titre).aspect.encre = palette::gris;
        if (attend) forme_("Label8").aspect.encre = palette::encre;
        formes::colore(forme_);
    }

    void peint_rang(int l) {
        const bool entete = l == 0, touchee = l == g1().ligne;
        for (int c = 0; c < nb_colonnes; ++c) {
            Aspect& a = g1().cellule(l, c);
            a.role = entete ? Role::entete : touchee ? Role::ligne_touchee : Role::ligne;
            a.fond = a.encre = sans_couleur;
            a.alignement = colonnes[c].alignement;
            a.gras = entete || c == libelle || (c == numero && touchee);
            if (c == numero && !entete && !touchee) a.encre = palette::gris;
        }
        if (entete) return;
        Ligne ligne;
        ligne.pose(Champ::image, cellule(l, image));
        ligne.pose(Champ::couleur, cellule(l, couleur));
        Aspect& grap = g1().cellule(l, image);
        grap.image = ligne.image();
        grap.place_image = g1().largeurs[image] < largeur_serree ? PlaceImage::seule : PlaceImage::gauche;
        for (const int c : {acte, couleur}) {
            if (g1().largeurs[static_cast<std::size_t>(c)] >= largeur_serree) continue;
            g1().cellule(l, c).police = police_serree;
            g1().cellule(l, c).alignement = Alignement::centre;
        }
        Aspect& coul = g1().cellule(l, couleur);
        coul.fond = depuis_bgr(ligne.couleur());
        if (coul.fond != sans_couleur) coul.role = Role::puce;
    }

    // --- Touches

    void branche() {
        forme_("g1").a_la_cellule = [this](int l, int c) { touche_cellule(l, c); };
        for (const auto& [champ, titre] : {std::pair("Text1", "Titre"), std::pair("Text2", "Texte")}) {
            forme_(champ).au_toucher = [this, champ = champ, titre = titre] { saisit_titre(champ, titre); };
        }
        forme_("Label4").au_toucher = [this] { attend_ligne(""); };
        for (const CarteDeTete& c : cartes) {  // the whole card is under the finger, not its value alone
            forme_(c.carte.carte).au_toucher = forme_(c.carte.valeur).au_toucher;
        }
        forme_("Command2").au_toucher = [this] { change_page(); };
        for (const auto& [nom, mot] :
             {std::pair("Command3", copier), std::pair("Command4", coller), std::pair("Command5", couper)}) {
            forme_(nom).au_toucher = [this, mot = mot] { attend_ligne(mot); };
        }
        forme_("Command6").au_toucher = [] { change_reglage(); };
        forme_("Command1").au_toucher = forme_.a_l_echappement = [this] { ferme(); };
    }

    void attend_ligne(std::string_view mot) {
        operation() = mot;
        peint();
    }

    void touche_cellule(int l, int c) {
        if (l < 1) return;
        if (!operation().empty()) {
            execute(l);
        } else {
            peint();
            modifie(l, c);
        }
        peint();
    }

    /// The pending operation on a line; it is done once.
    void execute(int l) {
        const std::string mot = std::exchange(operation(), "");
        if (mot == coller) return insere_ligne(l);
        copie_ligne(l);
        if (mot == couper) efface_ligne(l);
    }

    void copie_ligne(int l) {
        presse_papiers.clear();
        for (int c = 1; c < nb_colonnes; ++c) presse_papiers.push_back(cellule(l, c));
    }

    void efface_ligne(int l) {
        for (int c = 1; c < nb_colonnes; ++c) cellule(l, c).clear();
    }

    void insere_ligne(int l) {
        int c = 0;
        for (const std::string& t : presse_papiers) cellule(l, ++c) = t;
    }

    void modifie(int l, int c) {
        if (c == numero) return;
        if (c == image) return choisit_image(l);
        std::optional<w_prog_acte::Acte> choisi;
        saisie::Demande d = {"Modification", titre_de_saisie, cellule(l, c), c != libelle && c != acte, {}};
        if (c == couleur) d.choix = {"Palette", image_palette, w_prog_coul::demande};
        if (c == acte)
            d.choix = {"Choisir", image_liste, [&choisi]() -> std::optional<std::string> {
                           choisi = w_prog_acte::demande();
                           if (!choisi) return std::nullopt;
                           return choisi->code;
                       }};
        const auto reponse = saisie::demande(d);
        if (!reponse) return;
        const std::string avant = std::exchange(cellule(l, c), comme_garde(colonnes[c].champ, *reponse));
        if (c == reference) {
            cellule(l, visible) = "1";
            if (cellule(l, lh).empty()) cellule(l, lh) = lh_ordinaire;
        }
        if (choisi) complete(l, *choisi, !avant.empty() && avant != cellule(l, c));
    }

    /// A chosen action makes a whole key of the line. What is filled in already stays, but what belongs to another
    /// action goes with it: a key must not name one dish and order another. A hidden key stays hidden.
    void complete(int l, const w_prog_acte::Acte& choisi, bool remplace) {
        if (cellule(l, visible).empty()) cellule(l, visible) = "1";
        if (cellule(l, lh).empty()) cellule(l, lh) = lh_au_dessus(l);
        const std::string grap = choisi.image > 0 ? nombres::entier_complete(choisi.image, 3) : "";
        for (const auto& [c, valeur] :
             {std::pair(reference, choisi.reference), std::pair(libelle, choisi.libelle), std::pair(image, grap),
              std::pair(couleur, w_prog_coul::valeur_de(choisi.couleur))}) {
            if (remplace || cellule(l, c).empty()) cellule(l, c) = comme_garde(colonnes[c].champ, valeur);
        }
    }

    /// The size of the nearest key above: the keys of a page stay alike, and as large as a finger needs on this screen.
    std::string lh_au_dessus(int l) {
        while (--l >= 1) {
            if (cellule(l, visible) == "1" && !cellule(l, lh).empty()) return cellule(l, lh);
        }
        return std::string(lh_ordinaire);
    }

    void choisit_image(int l) {
        etat::texte_travail = cellule(l, image);
        lis_bout::montre_lis_bout();
        cellule(l, image) = comme_garde(Champ::image, etat::texte_travail);
    }

    void saisit_titre(std::string_view champ, std::string_view titre) {
        etat::code_dialogue = mini_97::saisie;
        etat::texte_dialogue = std::string(titre) + "|" + forme_(champ).texte();
        clavv::montre_clavv();
        const Champ garde = champ == "Text1" ? Champ::libelle : Champ::action;
        forme_(champ).texte() = comme_garde(garde, etat::texte_dialogue);
    }

    void change_page() {
        const auto reponse = saisie::demande({"N° de page "_t, titre_de_saisie, std::to_string(page()), true, {}});
        if (!reponse || reponse->empty()) return;
        if (!valide_donnees()) return mini_97::informe("La page n'a pas pu être enregistrée !"_t);
        etat::page_programme = page_existante(nombres::entier_int(*reponse));
        charge_page();
    }

    void ferme() {
        if (valide_donnees() || mini_97::demande("La page n'a pas pu être enregistrée, fermer quand même ?"_t)) {
            forme_.ferme();
        }
    }

    /// The raw editor of any settings record. An empty answer changes nothing, one of blanks makes the record blank.
    static void change_reglage() {
        const auto numero = mini_97::saisit("Entrez le numero de switch ?");
        if (!numero || texte::rogne(*numero).empty()) return;
        const int n = nombres::entier_int(*numero);
        const auto valeur =
            mini_97::saisit(std::string("Valeur du switch N° "_t) + std::to_string(n) + " ?|" + reglages::brut(n));
        if (!valeur || texte::rogne(*valeur).empty()) return;
        if (texte::rogne(*valeur).size() > reglages::longueur_record) {
            return mini_97::informe("Valeur trop longue (20 caractères au plus), le réglage reste ce qu'il était !"_t);
        }
        if (reglages::ecrit(n, texte::rogne(*valeur)) == fichiers::Issue::fait) return;
        mini_97::informe("Le réglage n'a pas pu être enregistré !"_t);
    }
};

}  // namespace

void montre_w_prog() {
    Editeur().montre();
}

}  // namespace w_prog
