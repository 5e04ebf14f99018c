// The few controls that the terminal needs, as plain data with handlers: no drawing and no system call. A screen builds
// a form from a table, changes the fields, and is told of touches. Positions are twips, 15 to a pixel, relative to the
// form's top left. Writing a field never runs a handler; only a touch, a key or a timer does.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controles/apparence.h"

namespace ecran {

struct Cadre {
    int gauche = 0, haut = 0, largeur = 0, hauteur = 0;  ///< twips
    bool operator==(const Cadre&) const = default;
    int droite() const { return gauche + largeur; }
    int bas() const { return haut + hauteur; }
    /// With so much more on every side; less, where it is negative.
    Cadre elargi(int n) const { return {gauche - n, haut - n, largeur + 2 * n, hauteur + 2 * n}; }
    bool contient(int x, int y) const { return x >= gauche && x < droite() && y >= haut && y < bas(); }
};

enum class Genre : std::uint8_t {
    etiquette,  ///< a text (label)
    image,      ///< a picture box
    champ,      ///< a text field with a caret
    bouton,     ///< a key with a caption
    case_,      ///< a check box: `coche`
    forme,      ///< a shape without text
    liste,      ///< a list of lines: a grid of one column
    grille,     ///< a grid of cells
};

enum class Alignement : std::uint8_t { gauche, centre, droite };

/// Where a cell's or control's picture stands.
enum class PlaceImage : std::uint8_t {
    seule,   ///< in the middle; with a text, above it
    gauche,  ///< left of the text
    droite,  ///< at the right end
    milieu,  ///< in the middle, whatever the text does
};

/// What can be seen of a control, or of one cell of a grid.
struct Aspect {
    std::string texte = {};
    int image = 0;  ///< number in the picture set, 0: none
    Role role = Role::rien;
    Couleur fond = sans_couleur;  ///< own colour, before that of the role
    Couleur encre = sans_couleur;
    int police = 0;  ///< font size as set, in points; 0: the grid's
    bool gras = false;
    bool accord = false;  ///< one letter size with all captions of the form that have this and the same size set
    Alignement alignement = Alignement::centre;
    PlaceImage place_image = PlaceImage::seule;
    int marge_gauche = 0;  ///< twips added to the left of the text
    int marge_droite = 0;  ///< twips kept free to the right of the text
    int marge_haut = 0;    ///< twips kept free above the text
    int marge_bas = 0;     ///< twips kept free below the text
    bool trait = false;    ///< of a list's cell: a thin line below, as wide as the list
    bool operator==(const Aspect&) const = default;
};

/// How a grid is drawn and how it reacts.
struct Grille {
    int lignes = 0, colonnes = 0;
    int lignes_fixes = 0;          ///< rows that stay at the top and are no list entries
    std::vector<Aspect> cellules;  ///< row by row
    std::vector<int> largeurs;     ///< twips per column, 0: hidden (readable, not touchable)
    int hauteur_ligne = 0;         ///< twips; 0: the rows share the height
    std::vector<int> hauteurs;     ///< twips per row where they differ; empty: hauteur_ligne
    int espace = 0;                ///< twips between two cells (a grid of keys has the rhythm, a list 0)
    int premiere_ligne = 0;        ///< first row shown below the fixed ones
    bool defile = false;           ///< holds more than it shows: follows the finger, shows a scroll mark
    bool quadrillage = false;      ///< of a list: thin lines below its rows and between its columns
    bool reglee = false;           ///< of a list: where its rows end, the lines of empty ones go on to its lower edge
    int flots = 1;                 ///< one column painted in several side by side, filled from the left
    int ligne = -1, colonne = -1;  ///< the cell touched last

    /// The place of a cell in `cellules`.
    std::size_t rang(int l, int c) const { return static_cast<std::size_t>(l * colonnes + c); }
    Aspect& cellule(int l, int c) { return cellules[rang(l, c)]; }
    const Aspect& cellule(int l, int c) const { return cellules[rang(l, c)]; }
    bool existe(int l, int c) const { return l >= 0 && l < lignes && c >= 0 && c < colonnes; }
    /// Sets the size; cells that stay keep their content, new ones are `modele`.
    void dimensionne(int nb_lignes, int nb_colonnes, const Aspect& modele = {});
    /// Adds a row of `modele` at the end; gives its number.
    int ajoute_ligne(const Aspect& modele = {});
    /// The text of a cell, empty outside the bounds.
    std::string_view texte(int l, int c) const { return existe(l, c) ? std::string_view(cellule(l, c).texte) : ""; }
    /// Scrolls by `pas` rows (negative: up), within the bounds.
    void defile_de(int pas, const Cadre& cadre);
    /// The first row that this would show.
    int premiere_apres(int pas, const Cadre& cadre) const;
    bool peut_defiler(int pas, const Cadre& cadre) const {
        return premiere_apres(pas, cadre) != premiere_apres(0, cadre);
    }
    /// Scrolls a list no further than needed to show a row.
    void montre_ligne(int voulue, const Cadre& cadre);
    /// How many rows fit below the fixed ones.
    int lignes_visibles(const Cadre& cadre) const;
};

struct Controle {
    std::string nom;
    int index = -1;  ///< place in a control array, -1: not an array
    Genre genre = Genre::etiquette;
    Cadre cadre;
    bool visible = true;
    bool laisse_passer = false;  ///< lies upon others and lets the touch through
    int etiquette = 0;           ///< the tag that the manager's colours go by, 0: none
    Aspect aspect;
    Grille grille;       ///< of a grid or list
    int curseur = -1;    ///< of a field: characters before the caret, -1: no caret
    bool coche = false;  ///< of a check box

    std::function<void()> au_toucher;                          ///< released where it was pressed
    std::function<void(int ligne, int colonne)> a_la_cellule;  ///< of a grid or list; never for a hidden column
    std::function<void(int x, int y)> au_glisse;  ///< where the finger is while it is down, twips from the top left
    std::function<void()> au_maintien;            ///< held for duree_maintien_ms
    /// Of a grid: a cell is held for duree_tenue_ms. False: that means nothing there, and it is touched when let go.
    std::function<bool(int ligne, int colonne)> a_la_tenue;
    /// Held, it is touched again and again, slowly, then faster, as long as this says so.
    std::function<bool()> se_repete;

    std::string& texte() { return aspect.texte; }
    bool est_grille() const { return genre == Genre::grille || genre == Genre::liste; }
    bool reagit() const { return au_toucher || a_la_cellule || au_maintien; }
    /// How long until a hold counts, -1: it never does.
    int duree_de_la_tenue() const;
};

inline constexpr int duree_maintien_ms = 2000, duree_tenue_ms = 500;

/// A form's timer. It fires every `intervalle_ms` while `actif`; the loop alone calls `au_tic`.
struct Minuterie {
    std::string nom;
    int intervalle_ms = 0;
    bool actif = false;
    std::function<void()> au_tic;
    std::int64_t echeance = -1;  ///< next time, written by demarre() and the loop

    void demarre(int ms);
    /// Fires once, and does that.
    void sonne_une_fois(int ms, std::function<void()> action);
    void arrete() { actif = false; }
};

/// One row of a screen's table of controls: it tells what differs from the default.
struct Plan {
    std::string_view nom;
    int index = -1;
    Genre genre = Genre::etiquette;
    Cadre cadre = {};
    std::string_view texte = {};
    Role role = Role::rien;
    int police = 0;  ///< points
    bool gras = false;
    Alignement alignement = Alignement::centre;
    Couleur fond = sans_couleur, encre = sans_couleur;
    int image = 0;
    PlaceImage place_image = PlaceImage::seule;
    int etiquette = 0;  ///< the tag that the manager's colours go by
    bool visible = true, laisse_passer = false;
};

struct Forme {
    std::string nom;  ///< as scenarios name it: "Form1", "mini_97" …
    std::string titre;
    Cadre cadre;  ///< twips on the screen
    Role role = Role::papier;
    bool voile = false;             ///< what lies below is dimmed
    bool visible = true;            ///< false: not painted, yet on top all the same
    bool tourne_des_pages = false;  ///< a touch may bring other keys under the finger: its bounce is not meant for them
    bool fermee = false;            ///< set by ferme(): the modal loop ends
    std::vector<std::unique_ptr<Controle>> controles;  ///< later ones lie on top
    std::vector<std::unique_ptr<Minuterie>> minuteries;
    std::function<void(int point_de_code)> a_la_frappe;  ///< a character of the physical keyboard (page 1252)
    std::function<void()> avant_image;  ///< once a turn, before it is painted: looks that follow from other fields
    std::function<void()> a_l_entree, a_l_echappement, au_retour_arriere;

    Controle& ajoute(const Plan& plan);
    /// Builds all rows of a table.
    void construit(std::span<const Plan> plans);
    Minuterie& ajoute_minuterie(std::string_view nom);
    /// The control of that name and index; null when there is none.
    Controle* cherche(std::string_view nom, int index = -1);
    const Controle* cherche(std::string_view nom, int index = -1) const;
    /// As above, for a control that the screen's own table holds.
    Controle& operator()(std::string_view nom, int index = -1);
    void ferme() { fermee = true; }
};

/// The rectangle of a cell within the form, in twips, as painted and as touched; empty (width 0) when it is not shown.
/// The one function that painting and hit testing share.
Cadre cadre_cellule(const Controle& c, int ligne, int colonne);

/// What lies under a point of the form, from the top: the control (null: none) and the cell (-1: none).
struct Touche {
    Controle* controle = nullptr;
    int ligne = -1, colonne = -1;
    bool operator==(const Touche&) const = default;
};
Touche sous_le_doigt(const Forme& forme, int x, int y);

/// What is held down, drawn as pressed.
struct Appui {
    const Forme* forme = nullptr;
    Touche touche;
};

}  // namespace ecran
