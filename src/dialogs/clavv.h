// The on-screen keyboard: French layout, three pages of characters, an edit line with a caret.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/etat.h"

namespace clavv {

/// Shows the keyboard. In: etat::code_dialogue saisie or saisie_majuscules, etat::texte_dialogue the prompt, "|" and
/// the initial text. Out: etat::texte_dialogue the typed text, or the initial one when abandoned.
void montre_clavv();

/// Asks with a prompt, "|" and an initial text; the typed text, nothing when the keyboard was abandoned.
std::optional<std::string> demande(etat::Demande genre, std::string_view invite);

/// Gives the next opening a list of candidates, shown above the keyboard and filtered by what is typed.
void propose(std::vector<std::string> lignes);

}  // namespace clavv
