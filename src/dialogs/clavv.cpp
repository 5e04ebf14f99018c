#include "dialogs/clavv.h"

#include <algorithm>
#include <array>
#include <utility>

#include "data/etat.h"
#include "dialogs/moduclav.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace clavv {
namespace {

using namespace ecran;
using moduclav::px;

constexpr int nb_touches = 58;
constexpr int largeur_dessin = 13995, hauteur_dessin = px(472);  ///< twips, as designed
constexpr int hauteur_liste = px(170);                           ///< of the candidates, above the keyboard
constexpr int largeur_par_defaut = 600, hauteur_par_defaut = 800;
constexpr char sans_caractere = '|';

/// The character that key i types on a page; "|" marks a function key.
constexpr std::array<std::string_view, 3> pages = {
    " &é''(-è_çà)+||azertyuiop$|qsdfghjklm*||<wxcvbn,;:!|||||||"_t,
    " 1234567890°=||AZERTYUIOP£|QSDFGHJKLM%||>WXCVBN?./§|||||||"_t,
    "  ~#{}`\\^@[] ||ïë€îêôâûù £|          µ||           |||||||"_t,
};
static_assert(pages[0].size() == nb_touches && pages[1].size() == nb_touches && pages[2].size() == nb_touches);

/// A row of character keys: numbers, place of the first, distance to the next.
struct Rangee {
    int premiere, derniere, gauche, haut;  ///< left and top in design pixels
};
constexpr Rangee rangees[] = {{1, 12, 10, 110}, {15, 25, 48, 182}, {27, 37, 78, 254}, {40, 50, 78, 326}};
constexpr int pas = 65, largeur_touche = 57, hauteur_touche = 64;
constexpr int police_touche = 22, etiquette_touche = 3;

/// Function keys and the space key.
enum Fonction {
    espace = 0,
    retour_arriere = 13,
    efface_tout = 14,
    verrou = 26,
    valide = 38,
    maj = 39,
    inerte = 51,
    ligne_avant = 52,
    ligne_apres = 53,
    a_gauche = 54,
    a_droite = 55,
    autres = 56,
    annule = 57,
};
struct ToucheDeFonction {
    int numero;
    Cadre cadre;
    std::string_view texte;
    int image;
    Role role;
    int police;
};
const ToucheDeFonction fonctions[] = {
    {retour_arriere, {px(790), px(110), px(68), px(64)}, "", image_retour_arriere, Role::action, 15},
    {efface_tout, {px(866), px(110), px(57), px(64)}, "C", 0, Role::detruire, 18},
    {verrou, {px(763), px(182), px(160), px(64)}, "VERR.", 0, Role::action, 15},
    {inerte, {px(10), px(254), px(60), px(64)}, "", 0, Role::touche_douce, 15},
    {valide, {px(793), px(254), px(130), px(136)}, "Valider", 0, Role::aller, 16},
    {maj, {px(10), px(326), px(60), px(64)}, "MAJ", 0, Role::action, 13},
    {autres, {px(10), px(398), px(100), px(64)}, "#~é€"_t, 0, Role::action, 15},
    {annule, {px(118), px(398), px(116), px(64)}, "Annuler", 0, Role::detruire, 15},
    {espace, {px(242), px(398), px(421), px(64)}, " ", 0, Role::touche, 15},
    {a_gauche, {px(671), px(398), px(57), px(64)}, "", image_gauche, Role::action, 15},
    {a_droite, {px(736), px(398), px(57), px(64)}, "", image_droite, Role::action, 15},
    {ligne_avant, {px(801), px(398), px(57), px(64)}, "", image_haut, Role::action, 15},
    {ligne_apres, {px(866), px(398), px(57), px(64)}, "", image_bas, Role::action, 15},
};

/// Candidates for the next opening; empty: none.
std::vector<std::string> candidats;

class Clavier {
  public:
    Clavier() {
        forme_.nom = "clavv";
        forme_.role = Role::clavier;
        forme_.voile = true;
        liste_ = std::exchange(candidats, {});
        construit();
        place();
        ouvre_texte();
        branche();
        affiche_clav();
        affiche_texte();
    }

    void montre() { montre_modal(forme_); }
    bool abandonne() const { return abandonne_; }

  private:
    Forme forme_;
    std::string texte_;
    std::size_t curseur_ = 0;
    bool abandonne_ = false;
    bool une_fois_ = false;  ///< the page counts for the next character only
    std::size_t page_ = 0;
    std::vector<std::string> liste_;  ///< all candidates, empty: the list is not in use

    void construit() {
        const Plan plans[] = {
            {.nom = "Label1",
             .cadre = {px(14), px(4), px(905), px(38)},
             .police = 16,
             .alignement = Alignement::gauche},
            {.nom = "Label2", .visible = false},
            moduclav::champ_de_saisie({px(10), px(42), px(913), px(58)}, 21),
        };
        forme_.construit(plans);
        ajoute_liste("List1", !liste_.empty());
        ajoute_liste("List2", false);
        construit_touches();
        if (liste_.empty()) return;
        for (const auto& c : forme_.controles) {
            if (c->genre != Genre::liste) c->cadre.haut += hauteur_liste;
        }
    }

    void ajoute_liste(std::string_view nom, bool visible) {
        Controle& l = forme_.ajoute({.nom = nom,
                                     .genre = Genre::liste,
                                     .cadre = {px(10), px(10), px(913), hauteur_liste - px(20)},
                                     .role = Role::carte,
                                     .police = 18,
                                     .etiquette = 9,
                                     .visible = visible});
        l.grille.hauteur_ligne = px(54);
        l.grille.defile = true;
    }

    void construit_touches() {
        for (const ToucheDeFonction& f : fonctions) {
            forme_.ajoute({.nom = "ttoc",
                           .index = f.numero,
                           .genre = Genre::bouton,
                           .cadre = f.cadre,
                           .texte = f.texte,
                           .role = f.role,
                           .police = f.police,
                           .gras = true,
                           .image = f.image,
                           .etiquette = moduclav::etiquette_de(f.role, etiquette_touche)});
        }
        for (const Rangee& r : rangees) {
            for (int i = r.premiere; i <= r.derniere; ++i) {
                const Cadre cadre = {px(r.gauche + (i - r.premiere) * pas), px(r.haut), px(largeur_touche),
                                     px(hauteur_touche)};
                forme_.ajoute({.nom = "ttoc",
                               .index = i,
                               .genre = Genre::bouton,
                               .cadre = cadre,
                               .role = Role::touche,
                               .police = police_touche,
                               .gras = true,
                               .etiquette = 3});
            }
        }
    }

    /// As designed at the bottom of a screen that is wide enough; smaller in every dimension on a narrower one.
    void place() {
        const int largeur = px(etat::largeur_ecran == 0 ? largeur_par_defaut : etat::largeur_ecran);
        const int hauteur = px(etat::hauteur_ecran == 0 ? hauteur_par_defaut : etat::hauteur_ecran);
        Cadre& c = forme_.cadre;
        c.largeur = largeur_dessin;
        c.hauteur = hauteur_dessin + (liste_.empty() ? 0 : hauteur_liste);
        if (largeur < largeur_dessin) reduit(static_cast<double>(largeur) / largeur_dessin);
        c.gauche = largeur < largeur_dessin ? 0 : largeur / 2 - c.largeur / 2;
        c.haut = std::max(0, hauteur - c.hauteur);
    }

    void reduit(double facteur) {
        const auto r = [facteur](int v) { return static_cast<int>(v * facteur); };
        const auto cadre = [&r](Cadre& c) { c = {r(c.gauche), r(c.haut), r(c.largeur), r(c.hauteur)}; };
        cadre(forme_.cadre);
        for (const auto& c : forme_.controles) {
            cadre(c->cadre);
            c->aspect.police = std::max(8, r(c->aspect.police));
            c->grille.hauteur_ligne = r(c->grille.hauteur_ligne);
        }
    }

    void ouvre_texte() {
        texte_ = moduclav::separe_initial();
        forme_("Label1").texte() = etat::texte_dialogue;
        forme_("Label2").texte() = texte_;
        curseur_ = texte_.size();
        page_ = etat::code_dialogue == etat::saisie_majuscules ? 1 : 0;
        remplit_liste("List2", liste_);
        filtre_liste();
    }

    void branche() {
        for (int i = 0; i < nb_touches; ++i) {
            forme_("ttoc", i).au_toucher = [this, i] { touche(i); };
        }
        forme_("List1").a_la_cellule = [this](int ligne, int) {
            selectionne(ligne);
            rend(std::string(forme_("List1").grille.texte(ligne, 0)));
        };
        forme_.a_la_frappe = [this](int c) {
            if (c < 32) return;
            insere(static_cast<char>(c));
            affiche_texte();
        };
        forme_.au_retour_arriere = [this] { touche(retour_arriere); };
        forme_.a_l_entree = [this] { touche(valide); };
        forme_.a_l_echappement = [this] { touche(annule); };
    }

    /// The captions of all keys from the current page; a single "&" would be taken for an access-key mark. Of the keys
    /// that type a blank one alone looks like it.
    void affiche_clav() {
        for (int i = 0; i < nb_touches; ++i) {
            const char c = pages[page_][static_cast<std::size_t>(i)];
            if (c == sans_caractere) continue;
            Aspect& a = forme_("ttoc", i).aspect;
            a.texte = c == '&' ? std::string("&&") : std::string(1, c);
            a.role = c == ' ' && i != espace ? Role::touche_douce : Role::touche;
        }
        montre_tenue(maj, une_fois_ && page_ == 1);
        montre_tenue(autres, une_fois_ && page_ == 2);
        montre_tenue(verrou, !une_fois_ && page_ == 1);
        moduclav::colore(forme_);
    }

    /// A key that acts on what is typed next stands out as long as it does.
    void montre_tenue(int i, bool tenue) {
        Controle& c = forme_("ttoc", i);
        c.aspect.role = tenue ? Role::attendre : Role::action;
        c.aspect.fond = c.aspect.encre = sans_couleur;
        c.etiquette = tenue ? 0 : etiquette_touche;
    }

    void affiche_texte() {
        Controle& champ = forme_("Text1");
        const bool change = champ.texte() != texte_;
        champ.texte() = texte_;
        champ.curseur = static_cast<int>(curseur_);
        if (change) filtre_liste();
    }

    void insere(char c) {
        texte_.insert(curseur_, 1, c);
        ++curseur_;
    }

    void va_page(std::size_t page) {
        page_ = page;
        affiche_clav();
    }

    void touche(int i) {
        const char c = pages[page_][static_cast<std::size_t>(i)];
        if (c != sans_caractere) {
            insere(c);
            if (une_fois_) {
                une_fois_ = false;
                va_page(0);
            }
        }
        fonction(i);
        affiche_texte();
    }

    void fonction(int i) {
        switch (i) {
            case retour_arriere:
                if (curseur_ > 0) texte_.erase(--curseur_, 1);
                break;
            case efface_tout:
                texte_.clear();
                curseur_ = 0;
                break;
            case verrou:
                return va_page(page_ == 0 ? 1 : 0);
            case maj:
                return bascule(1);
            case autres:
                return bascule(2);
            case a_gauche:
                if (curseur_ > 0) --curseur_;
                break;
            case a_droite:
                if (curseur_ < texte_.size()) ++curseur_;
                break;
            case ligne_avant:
                if (selection() > 0) selectionne(selection() - 1);
                break;
            case ligne_apres:
                if (selection() + 1 < forme_("List1").grille.lignes) selectionne(selection() + 1);
                break;
            case valide:
                return rend(selection() >= 0 ? std::string(forme_("List1").grille.texte(selection(), 0)) : texte_);
            case annule:
                abandonne_ = true;
                return rend(forme_("Label2").texte());
            default:
                break;
        }
    }

    /// Shift and alternate characters act on the next character only.
    void bascule(std::size_t page) {
        une_fois_ = !une_fois_;
        va_page(une_fois_ ? page : 0);
    }

    void rend(std::string texte) {
        etat::texte_dialogue = std::move(texte);
        forme_.ferme();
    }

    int selection() { return forme_("List1").grille.ligne; }

    void selectionne(int ligne) {
        Grille& g = forme_("List1").grille;
        g.ligne = ligne;
        for (int l = 0; l < g.lignes; ++l) g.cellule(l, 0).role = l == ligne ? Role::titre_groupe : Role::ligne;
        g.montre_ligne(ligne, forme_("List1").cadre);
    }

    void remplit_liste(std::string_view nom, const std::vector<std::string>& lignes) {
        Grille& g = forme_(nom).grille;
        g.dimensionne(0, 1);
        g.dimensionne(static_cast<int>(lignes.size()), 1,
                      {.role = Role::ligne, .alignement = Alignement::gauche, .marge_gauche = px(12)});
        for (std::size_t l = 0; l < lignes.size(); ++l) g.cellule(static_cast<int>(l), 0).texte = lignes[l];
    }

    /// Keeps the candidates that contain what is typed, in either letter case.
    void filtre_liste() {
        if (liste_.empty()) return;
        std::vector<std::string> gardees;
        const std::string cherche = texte::majuscules(texte_);
        for (const std::string& l : liste_) {
            if (texte::contient(texte::majuscules(l), cherche)) gardees.push_back(l);
        }
        remplit_liste("List1", gardees);
    }
};

}  // namespace

void montre_clavv() {
    Clavier().montre();
}

std::optional<std::string> demande(etat::Demande genre, std::string_view invite) {
    etat::code_dialogue = genre;
    etat::texte_dialogue = invite;
    Clavier clavier;
    clavier.montre();
    if (clavier.abandonne()) return std::nullopt;
    return etat::texte_dialogue;
}

void propose(std::vector<std::string> lignes) {
    candidats = std::move(lignes);
}

}  // namespace clavv
