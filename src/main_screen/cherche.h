// The search for an article whose family one does not have in mind: letters narrow a list of all articles.
#pragma once

#include <optional>
#include <string>

namespace cherche {

/// Shows the search with these letters typed; the catalogue's record of the article that was chosen, nothing when the
/// search was left.
std::optional<std::string> demande(const std::string& lettres);

}  // namespace cherche
