// The numeric keypad: plain entry, masked entry of a code, and the choice of a font size.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clav_num {

/// Mode words for etat::texte_travail; anything else is plain entry.
inline constexpr std::string_view mode_cache = "#CACHE";
inline constexpr std::string_view mode_taille = "#SAISIZE";

/// Shows the keypad. In: etat::texte_travail the mode word, etat::texte_dialogue the prompt, or prompt + "|" + initial
/// value. Out: etat::texte_dialogue the entered text; the prompt when the keypad was left without validation.
void montre_clav_num();

/// Asks with a mode word and a prompt (with "|" and an initial value, if any); gives the entered text, nothing when the
/// keypad was abandoned.
std::optional<std::string> demande(std::string_view mode, std::string_view invite);

}  // namespace clav_num
