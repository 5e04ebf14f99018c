// The order file, the one message to the order router.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"

namespace commande {

/// What names this tablet to the order router: ten characters of A-Z and 0-9, the same at every start, derived from the
/// machine's own identifier, or made once and kept in the working directory where there is none.
const std::string& identite();
/// Ten such characters that stand for a text, and ten that nobody else has drawn.
std::string code(std::string_view texte);
std::string code_au_hasard();

/// The order of the note, server and table in hand: every line ends with CR LF.
std::string contenu();
/// "yyyy-mm-dd-hh-nn-ss_SS_TTT_CCC_.-A-".
std::string nom(const horloge::DateHeure& date);

/// Writes the order whole under its name, or under that of the next second that no waiting order has; then empties the
/// note and the table. On failure everything stays as it was.
fichiers::Issue envoi_commande();

/// How many of an article this run of the terminal has sent today, by the article's reference. A day ends in the small
/// hours, after the service.
double envoyes_ce_jour(std::string_view reference);

// --- reading it, for whoever collects it -----------------------------------------------------------------------------

/// A dish of a composed menu.
struct Plat {
    std::string reference;  ///< without the blanks around it
    double nombre = 0;      ///< pieces for all menus of the line
};
/// A line of the note.
struct Article {
    std::string reference;  ///< without the blanks around it
    double quantite = 0;
    std::vector<std::string> remarques;
    std::vector<Plat> plats;  ///< of a composed menu
};
/// What an order file says.
struct Commande {
    std::string identite;  ///< the tablet's
    int serveur = 0;
    std::string table, couverts;  ///< without blanks
    std::vector<Article> articles;
};

enum class Lecture {
    entiere,
    inachevee,  ///< the beginning of an order, perhaps still being written
    fausse,     ///< no order, whatever may follow
};
/// Reads a file's content. Of one that is not whole `faute` tells why, in French.
Lecture lis(std::string_view contenu, Commande& commande, std::string& faute);

}  // namespace commande
