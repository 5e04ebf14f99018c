// The manager's sheets: what they are called, which columns they have, how they are read from and written as CSV.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tableaux {

enum class Feuille { serveurs, familles, articles, tables, menus, details, touches, entete };
inline constexpr int nb_feuilles = 8;

/// The columns of each sheet, in the order in which they are written.
enum ColonneServeurs { serveur_numero, serveur_nom, serveur_couleur };
enum ColonneFamilles { famille_numero, famille_nom, famille_couleur, famille_parent };
enum ColonneArticles {
    article_reference,
    article_libelle,
    article_prix,
    article_famille,
    article_couleur,
    article_menu,
    article_impression
};
enum ColonneTables { table_numero };
enum ColonneMenus { menu_menu, menu_service, menu_plat, menu_quantite, menu_prix };
enum ColonneDetails { detail_categorie, detail_libelle, detail_fond, detail_encre, detail_code };
enum ColonneTouches {
    touche_page,
    touche_case,
    touche_libelle,
    touche_action,
    touche_image,
    touche_taille,
    touche_largeur,
    touche_hauteur,
    touche_couleur
};
enum ColonneEntete { entete_ligne };

/// A column: its heading, UTF-8, is known by its first word; that of one that may be missing is written in brackets.
struct Colonne {
    std::string_view nom;
    bool facultative = false;
    bool rare = false;  ///< written only where a row has it
};
struct Forme {
    std::string_view fichier;
    bool obligatoire;
    std::span<const Colonne> colonnes;
};
const Forme& forme(Feuille feuille);

/// What is said of the sheets, a line each, UTF-8: faults, with which nothing is made, and remarks.
struct Constats {
    std::vector<std::string> fautes, remarques;
};
/// "articles.csv, ligne 14, colonne Prix : …"; without row (0) or column only what there is.
std::string situe(std::string_view fichier, std::size_t ligne, std::string_view colonne, std::string_view message);

/// A sheet that was read. Rows count from 1 as a spreadsheet counts them; cells are UTF-8, without blanks around them.
struct Tableau {
    Feuille feuille = Feuille::serveurs;
    std::vector<int> places;  ///< of each column of the form, -1: the sheet has it not
    std::vector<std::vector<std::string>> rangees;
};
/// Reads a sheet's content, whatever its character set and separator are; nothing when it is none: that is noted.
std::optional<Tableau> lis(Feuille feuille, std::string_view contenu, Constats& constats);

/// A sheet's content as a spreadsheet takes it: UTF-8 with mark, ";", CR LF, a heading row. Rows hold
/// cells of the page 1252 in the order of the form.
std::string ecrit(Feuille feuille, const std::vector<std::vector<std::string>>& rangees);

/// The sheets of the example that a manager begins with, each with its content.
std::vector<std::pair<Feuille, std::string>> exemple();

/// A text of the page 1252 for comparisons: small letters and digits, without accents.
std::string cle(std::string_view texte);

}  // namespace tableaux
