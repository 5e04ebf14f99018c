// A kitchen ticket: lines of text no wider than the paper, each with its looks. Nothing here knows how it is printed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cuisine/articles.h"
#include "data/commande.h"
#include "platform/systeme/horloge.h"

namespace ticket {

inline constexpr int colonnes_min = 32, colonnes_max = 64, colonnes_usuelles = 42;

/// What the characters of the page 1252 become on the printer.
enum class Page { p1252, p858 };

struct Papier {
    int colonnes = colonnes_usuelles;
    Page page = Page::p1252;
};

enum class Style { normal, gras, haut };  ///< `haut` is double height
struct Ligne {
    std::string texte;  ///< of the page 1252, with characters that the printer's page has; no control character
    Style style = Style::normal;
};
using Ticket = std::vector<Ligne>;

/// What a ticket tells besides the order.
struct Entete {
    int numero = 0;          ///< the running number
    bool duplicata = false;  ///< it may have been printed before
    horloge::DateHeure date;
    std::string ailleurs;  ///< the printers that have the other lines, empty: none
};

/// The ticket of a part of an order; `articles` are its lines, in the order of the note.
Ticket compose(const commande::Commande& commande, const std::vector<const commande::Article*>& lignes,
               const articles::Articles& catalogue, const Entete& entete, const Papier& papier);
/// The ticket that says that a file is no order.
Ticket de_rejet(std::string_view fichier, std::string_view raison, bool duplicata, const Papier& papier);

/// As text, one line each, without looks.
std::string en_texte(const Ticket& ticket);

}  // namespace ticket
