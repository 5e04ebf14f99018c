// The numeric keypad: plain entry, masked entry of a code, and the choice of a font size.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clav_num {

/// Mode words; anything else is plain entry.
inline constexpr std::string_view mode_cache = "#CACHE";
inline constexpr std::string_view mode_taille = "#SAISIZE";

/// Asks with a mode word and a prompt (with "|" and an initial value, if any); gives the entered text, nothing when the
/// keypad was abandoned.
std::optional<std::string> demande(std::string_view mode, std::string_view invite);

}  // namespace clav_num
