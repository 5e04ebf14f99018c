// A restaurant's whole card, as the sheets and the restaurant's files both say it: servers, families, articles with
// their menus, tables, detail choices, keys of the home pages. Texts are of the page 1252.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/lignes.h"
#include "data/styles.h"

namespace carte {

struct Serveur {
    int numero = 0;
    std::string nom;
    int chiffre = 0;  ///< colour digit, 0: the plain key
};

struct Famille {
    int numero = 0;
    std::string nom;
    int chiffre = 0;
    std::optional<int> parent;  ///< the family among whose articles its key stands: a sub-group
};

enum class Menu { non, prix_fixe, compose };

struct Article {
    std::string reference;
    std::string libelle;
    double prix = 0;
    int famille = 0;
    int chiffre = 0;
    Menu menu = Menu::non;
    int impression = 0;                         ///< second family code of an article that is no menu
    std::vector<lignes::Service> services;      ///< of a fixed-price menu
    std::vector<lignes::Composant> composants;  ///< of a composed one
};

struct Detail {
    int code = 0;  ///< its record in the style file
    std::string categorie;
    styles::Style style;
};

enum class Acte { famille, article, page, sous_groupe, code };

/// A key of a home page, or the two texts of the page (`numero` is then that of the titles).
struct Touche {
    int page = 0, numero = 0;
    std::string libelle;
    Acte acte = Acte::code;
    int nombre = 0;     ///< of the family, the page or the sub-group's family
    std::string texte;  ///< the article's reference, the code as it stands, or the page's second text
    int image = 0;
    bool marque = false;
    int taille = 0;                ///< points, 0: that of the families
    int largeur = 0, hauteur = 0;  ///< cells, 0: not said, which is 1
    std::int32_t couleur = -1;     ///< red in the low byte, -1: the plain key
};

struct Carte {
    std::vector<std::string> entete;
    std::vector<Serveur> serveurs;
    std::vector<Famille> familles;
    std::vector<Article> articles;
    std::vector<int> tables;
    std::optional<std::vector<Detail>> details;  ///< nothing: no style file is made
    std::optional<std::vector<Touche>> touches;  ///< nothing: no key program is made
};

/// What the header says when no sheet tells.
inline const std::vector<std::string> entete_par_defaut = {"Orvalune"};

}  // namespace carte
