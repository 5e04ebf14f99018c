// The colours that the key program editor offers for a key.
#pragma once

#include <optional>
#include <string>

#include "platform/controles/apparence.h"

namespace w_prog_coul {

/// A colour as the text of a "Coul" cell; empty for the plain key.
std::string valeur_de(ecran::Couleur couleur);

/// Shows the palette; the colour as such a text, nothing when it was left.
std::optional<std::string> demande();

}  // namespace w_prog_coul
