// The input box: a prompt, one field, accept and abandon, and perhaps a key that opens a chooser for the field.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace saisie {

/// The key beside the field. What its chooser gives is taken as the answer; nothing leaves the box open.
struct Choix {
    std::string_view legende;
    int image = 0;  ///< picture of the key
    std::function<std::optional<std::string>()> demande;
};

struct Demande {
    std::string_view invite, titre;
    std::string defaut;     ///< text of the field at first
    bool chiffres = false;  ///< the keyboard opens on the page that has the digits
    Choix choix = {};       ///< without `demande`: no such key
};

/// Shows the box; the text as typed, nothing when it was abandoned.
std::optional<std::string> demande(const Demande& demande);

}  // namespace saisie
