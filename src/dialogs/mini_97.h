// The one message box: information, yes/no question, short entry, self-closing message.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "data/etat.h"

namespace mini_97 {

using enum etat::Demande;
using enum etat::Reponse;

/// Shows the request of etat::code_dialogue and etat::texte_dialogue; the answer comes back in both.
void montre_mini_97();

/// A message with one key.
void informe(std::string_view message);
/// A yes/no question; true on yes.
bool demande(std::string_view question);
/// A short entry, with "|" and an initial value behind the question if any. The text as typed, with its blanks; nothing
/// unless it was accepted.
std::optional<std::string> saisit(std::string_view question);
/// A message that closes by itself.
void annonce(std::string_view message);

}  // namespace mini_97
