// The one message box: information, yes/no question, short entry, self-closing message.
#pragma once

#include <string_view>

namespace mini_97 {

/// Kinds of requests in etat::code_dialogue.
enum Demande { information = 0, oui_non = 4, saisie = 129, saisie_majuscules = 1129, fugitif = 225 };
/// Answers in etat::code_dialogue.
enum Reponse { oui = 6, non = 7 };

/// Shows the request of etat::code_dialogue and etat::texte_dialogue; the answer comes back in both.
void montre_mini_97();

/// A message with one key.
void informe(std::string_view message);
/// A yes/no question; true on yes.
bool demande(std::string_view question);
/// A message that closes by itself.
void annonce(std::string_view message);

}  // namespace mini_97
