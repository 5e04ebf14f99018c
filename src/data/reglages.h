// The settings store "wwinqx42.wdo": records of 20 characters, numbers as "#I#" and the value, switches as "OUI" or
// "NON". A record that holds no number gets its default the first time it is read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/systeme/fichiers.h"

namespace reglages {

inline constexpr std::string_view nom_fichier = "wwinqx42.wdo";

/// The records that a screen reads.
enum Record {
    record_resolution = 2,
    police_outils = 3,
    touches_articles = 5,   ///< the first of four: font size, width and height in cells, keys per page
    touches_serveurs = 10,  ///< likewise
    touches_familles = 20,  ///< likewise
    colonnes_grille = 25,
    lignes_grille = 26,
    police_note = 30,
    police_article = 40,
    police_remarques = 41,
    police_complements = 42,
    taille_boites = 50,
    police_table = 51,
    verification_table = 55,
    police_liste_tables = 60,
    colonnes_liste_tables = 61,
    lignes_liste_tables = 62,
    sans_mot_de_passe = 200,
    grandes_images = 201,
};

/// Records of the manager's colours: ground n is record fonds + n, text n is record encres + n, n from 1 to 9.
/// Those of the second pair are only ever blanked.
inline constexpr int fonds = 1700, encres = 1710, fonds_anciens = 1730, encres_anciens = 1740;

/// Characters of a record, and of a value behind its "#I#".
inline constexpr std::size_t longueur_record = 20, longueur_valeur = 17;

/// Opens the store, and creates or repairs it when it is too short. False when the working directory cannot be used.
bool ouvre();
void ferme();

/// A record as it stands, 20 characters; blank where the store is too short.
std::string brut(int record);
/// A record without the blanks around it.
std::string texte(int record);
/// What stands behind "#I#", or where it would stand, without the blanks around it: how the toolbox shows a number.
std::string valeur(int record);
/// The number of a setting, within its bounds; a record that holds none is set to its default first. A number that is
/// too small or cannot be read counts as the default, but is not overwritten.
int nombre(int record);
/// How the keys of a list page are laid out, from four records.
struct Disposition {
    int police = 0, largeur = 0, hauteur = 0;
    int par_page = 0;  ///< keys that a page really shows, which is also the step from page to page
};
/// For a grid of so many cells; `touches`: keys that the grid has at most.
Disposition disposition(int premier_record, int colonnes, int lignes, int touches);
/// Cells that the key grid has at most, each way.
inline constexpr int grille_max = 40;
/// A colour with red in the low byte, -1 when the record is blank.
std::int32_t couleur(int record);
/// Writes a whole record, 1 to 32767: cut or padded to 20 characters, flushed.
fichiers::Issue ecrit(int record, std::string_view contenu);

/// Size of the screens in pixels, from record 2.
struct Resolution {
    int largeur = 0, hauteur = 0;
};
/// Whether record 2 holds a resolution at all.
bool resolution_choisie();
/// The resolution of record 2, of either form; 800 x 800 when it holds none.
Resolution resolution();
enum class Forme {
    image,   ///< "#I#0:01280:00770"
    saisie,  ///< "#I#101280:00770", read one character further on all the same
};
fichiers::Issue ecrit_resolution(Resolution r, Forme forme);
/// Puts the size into characters 6-10 and 12-16 of record 2, whatever stands around them.
fichiers::Issue retouche_resolution(Resolution r);

}  // namespace reglages
