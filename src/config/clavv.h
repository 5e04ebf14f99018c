// The on-screen keyboard: French layout, three pages of characters, an edit line with a caret.
#pragma once

#include <string>
#include <vector>

namespace clavv {

/// Shows the keyboard. In: etat::code_dialogue 129 (page 0) or 1129 (page 1), etat::texte_dialogue the prompt, "|" and
/// the initial text. Out: etat::texte_dialogue the typed text, or the initial one when abandoned.
void montre_clavv();

/// Gives the next opening a list of candidates, shown above the keyboard and filtered by what is typed.
void propose(std::vector<std::string> lignes);

}  // namespace clavv
