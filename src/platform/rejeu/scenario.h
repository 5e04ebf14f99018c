// The scenario language as text: one command a line, its words and its quoted texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rejeu {

/// A word of a line: a bare word (as UTF-8) or a quoted text (converted to the page 1252).
struct Mot {
    std::string texte;
    bool cite = false;
};

/// A command line taken apart. `faute` tells in French what is wrong with it, empty when nothing is.
struct Ligne {
    std::vector<Mot> mots;
    std::string faute;
};

/// Takes a line apart; blank lines and comments give no words and no fault.
Ligne decoupe(std::string_view utf8);

/// A control's name in a scenario: [FORM.]NAME[(INDEX)].
struct Nom {
    std::string forme;  ///< empty: the form on top
    std::string controle;
    int index = -1;
};
std::optional<Nom> lis_nom(std::string_view mot);

/// A whole number without sign, or nothing.
std::optional<int> lis_entier(std::string_view mot);

}  // namespace rejeu
