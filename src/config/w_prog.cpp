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
#include "config/w_prog_grille.h"
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
using w_prog_grille::champ_de;
using enum w_prog_grille::Colonne;

constexpr std::string_view titre_de_saisie = "KMZ";

/// A card of the head and its share of the width.
struct CarteDeTete {
    formes::Carte carte;
    int largeur = 0, largeur_etroite = 0;  ///< design pixels; the two titles share what is left
};
constexpr CarteDeTete cartes[] = {
    {.carte = {"Shape1", "Label5", "Label1", "Page"}, .largeur = 120, .largeur_etroite = 60},
    {.carte = {"Shape2", "Label6", "Text1", "Titre"}},
    {.carte = {"Shape3", "Label7", "Text2", "Texte"}},
    {.carte = {"Shape4", "Label8", "Label4", "Opération"_t}, .largeur = 250, .largeur_etroite = 118}};
constexpr int hauteur_cartes = px(78), espace_touches = px(8);

constexpr std::string_view lh_ordinaire = "11";
constexpr std::string_view copier = "COPIER", coller = "COLLER", couper = "COUPER";

/// The keys below the grid, from the left.
struct Touche {
    std::string_view nom;
    formes::ToucheDeBarre face;
};
constexpr Touche touches[] = {
    {"Command2", {"Page", image_page, Role::action}},        {"Command3", {copier, image_copier, Role::action}},
    {"Command4", {coller, image_coller, Role::action}},      {"Command5", {couper, image_couper, Role::action}},
    {"Command6", {"Switch", image_reglettes, Role::action}}, {"Command1", formes::touche_ferme}};

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

/// The raw editor of any settings record. An answer that is empty, or of blanks, changes nothing.
void change_reglage() {
    const auto numero = mini_97::saisit("Entrez le numero de switch ?");
    if (!numero || texte::rogne(*numero).empty()) return;
    const int n = nombres::entier_int(*numero);
    const auto reponse =
        mini_97::saisit(std::string("Valeur du switch N° "_t) + std::to_string(n) + " ?|" + reglages::brut(n));
    if (!reponse) return;
    const std::string_view valeur = texte::rogne(*reponse);
    if (valeur.empty()) return;
    if (valeur.size() > reglages::longueur_record) {
        return mini_97::informe("Valeur trop longue (20 caractères au plus), le réglage reste ce qu'il était !"_t);
    }
    if (reglages::ecrit(n, valeur) == fichiers::Issue::fait) return;
    mini_97::informe("Le réglage n'a pas pu être enregistré, il reste ce qu'il était !"_t);
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
        w_prog_grille::ajoute(forme_, {zone.gauche, haut, zone.largeur, zone.bas() - haut});
        const Cadre barre = formes::cadre_barre();
        const int pas = (barre.largeur + espace_touches) / static_cast<int>(std::size(touches));
        int gauche = barre.gauche;
        for (const Touche& t : touches) {
            formes::ajoute_touche(forme_, t.nom, t.face, {gauche, barre.haut, pas - espace_touches, barre.hauteur});
            gauche += pas;
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
        formes::ajoute_carte(forme_, c,
                             {.carte = cadre,
                              .titre = titre,
                              .valeur = valeur,
                              .police_titre = 13,
                              .police_valeur = etroit ? 13 : 19,
                              .alignement_titre = Alignement::gauche,
                              .alignement_valeur = Alignement::gauche});
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
        lignes_ = lignes_de_la_page();
        w_prog_grille::remplit(g1(), lignes_);
        peint();
    }

    /// Writes the lines that differ from what was read, and the titles; what the editor does not show stays as it is in
    /// the file. A line that could not be read was shown blank, and must not take the place of the true one.
    bool valide_donnees() {
        bool juste = true;
        for (int l = 1; l <= lignes_par_page; ++l) {
            Ligne& lue = lignes_[static_cast<std::size_t>(l - 1)];
            Ligne ligne = lue;
            w_prog_grille::reprend(g1(), l, ligne);
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
        const bool attend = !operation().empty();
        for (const Touche& t : touches) {
            montre_attente(forme_(t.nom), attend && operation() == t.face.texte, Role::action, 2);
        }
        montre_attente(forme_("Shape4"), attend, Role::carte, 4);
        forme_("Label8").aspect.encre = attend ? palette::encre : palette::gris;
        w_prog_grille::peint(g1());
        formes::colore(forme_);
    }

    /// Amber as long as an operation waits for its line; else as it was built.
    static void montre_attente(Controle& c, bool attend, Role role, int etiquette) {
        c.aspect.role = attend ? Role::attendre : role;
        c.aspect.fond = c.aspect.encre = sans_couleur;
        c.etiquette = attend ? 0 : etiquette;
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
        forme_("Command6").au_toucher = change_reglage;
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
        const std::string avant = std::exchange(cellule(l, c), comme_garde(champ_de(c), *reponse));
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
            if (remplace || cellule(l, c).empty()) cellule(l, c) = comme_garde(champ_de(c), valeur);
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
        if (!valide_donnees()) return mini_97::informe("La page n'a pas pu être enregistrée, recommencez !"_t);
        etat::page_programme = page_existante(nombres::entier_int(*reponse));
        charge_page();
    }

    void ferme() {
        if (valide_donnees() ||
            mini_97::demande(
                "La page n'a pas pu être enregistrée et ses changements seront perdus, fermer quand même ?"_t)) {
            forme_.ferme();
        }
    }
};

}  // namespace

void montre_w_prog() {
    Editeur().montre();
}

}  // namespace w_prog
