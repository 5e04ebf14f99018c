// The colours that the key program editor offers for a key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/controles/apparence.h"

namespace w_prog_coul {

/// A colour as the key program has it, red in the low byte, and back; below 0 or too large: sans_couleur.
ecran::Couleur couleur_de(std::int32_t valeur);
std::string valeur_de(ecran::Couleur couleur);

/// Shows the palette; the colour as the text of a "Coul" cell, empty for the plain key, nothing when it was left.
std::optional<std::string> demande();

}  // namespace w_prog_coul
