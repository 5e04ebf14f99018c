// The catalogue: servers, families, articles, tables and key colours, from "orvalune.wdo" and "worvalune.wdo" of the
// working directory. Reading never fails: what cannot be read is left out.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

inline constexpr std::string_view fichier_entete = "orvalune.wdo", fichier_catalogue = "worvalune.wdo";
inline constexpr std::size_t lignes_entete_gardees = 15;
inline constexpr int serveurs_max = 20, familles_nommees_max = 20, familles_max = 120, places_max = 300;

/// All tables of one reading. The texts point into the file's content, which the tables keep.
struct Tables {
    std::array<std::string, 16> lignes_orvalune;  ///< non-blank lines of the header file, from index 1
    std::int16_t nb_lignes_orvalune = 0;          ///< all of them, also those that are not kept
    std::string rep_catalogue;                    ///< behind "#DIR#"
    std::array<std::string, serveurs_max + 1> noms_serveurs;
    std::array<std::string, familles_nommees_max + 1> noms_familles;       ///< perhaps with "|COU:" and a colour
    std::vector<int> ordre_familles;                                       ///< their numbers, as the file names them
    std::array<std::vector<std::string_view>, familles_max + 1> articles;  ///< places 1, 2 … of a family, without gaps
    std::array<std::int16_t, familles_max + 1> nb_articles{};              ///< also counts articles beyond places_max
    std::string liste_tables = "xxx";                                      ///< "xxx001|002|"
    std::string couleurs_familles, couleurs_serveurs;                      ///< a digit per number, then 20 blanks
    std::shared_ptr<const std::string> entete, contenu;                    ///< both files as they were read
    bool lu = false;                                                       ///< the catalogue proper could be read
};

/// Kinds of lines of the catalogue, and one line.
enum class Genre { article, serveur, famille, table, couleurs_familles, couleurs_serveurs, autre };
struct Ligne {
    Genre genre = Genre::autre;
    double numero = 0;       ///< of the server, the family or the table; an article's family
    std::string_view texte;  ///< name, article's record or colour digits
};
Ligne lis_ligne(std::string_view ligne);
/// The line with its end; the number of an article is here its place in the file.
std::string ecrit_ligne(const Ligne& ligne);

/// What a reading makes of a line.
enum class Sort {
    prise,
    remplace,     ///< takes the place of an earlier line
    ignoree,      ///< of no known kind
    hors_bornes,  ///< its number is none that the tables have
    en_trop,      ///< an article beyond places_max
};
using Temoin = std::function<void(std::string_view brute, const Ligne&, Sort)>;
/// Reads the content of both files; `temoin` is told of each line of the catalogue, in order.
std::unique_ptr<Tables> depuis(std::string entete, std::string catalogue, const Temoin& temoin = {});
/// Reads both files of the working directory into fresh tables.
std::unique_ptr<Tables> lis();
/// Reads the files and puts the tables in the place of the present ones, unless these would be lost to a file that
/// cannot be read at the moment; only while no dialog is open.
void charge_catalogue();
/// Set once charge_catalogue() has ended, unless another program held a file: then it is to be called again.
inline bool catalogue_charge = false;

/// The tables in use.
const Tables& courant();

/// Whether the catalogue names any server.
bool a_des_serveurs();
/// The records of a family, in file order, up to the first blank one.
std::span<const std::string_view> articles_de(int famille);
std::span<const std::string_view> articles_de(const Tables& tables, int famille);
/// The digit of entry n in a text of colour digits.
int chiffre_couleur(std::string_view couleurs, int n);
/// Colour digit of a family key: the one in its name, else the one of the list.
int chiffre_famille(int n);
int chiffre_famille(const Tables& tables, int n);
/// Whether the table list holds a number of three digits.
bool table_connue(std::string_view numero);
/// The tables in file order, three digits each.
std::vector<std::string> tables();
std::vector<std::string> tables(const Tables& tables);

/// The columns of a line's number, which begin behind the marker; 0: lines of this kind have none.
inline constexpr std::size_t colonne_numero = 7;
std::size_t chiffres_du_numero(Genre genre);

/// Sub-group n has its articles in family premier_sous_groupe + n; its key stands among the articles of a family, in a
/// record that begins with "#SG#" and n in four digits.
inline constexpr int premier_sous_groupe = 30;
bool est_sous_groupe(std::string_view record);
/// What stands there counts: the family may be none that a catalogue can have (0 to familles_max). Its page is empty.
int famille_du_sous_groupe(std::string_view record);
/// A family's name without what may tell its colour.
std::string_view sans_couleur(std::string_view nom_de_famille);
/// How such a record begins.
std::string debut_de_sous_groupe(int famille);
/// A text of the key program that is only the beginning of a record, completed from the first record that begins so;
/// one that is a whole record stays as it is.
std::string complete_article(std::string_view debut);
std::string complete_article(const Tables& tables, std::string_view debut);

}  // namespace catalogue
