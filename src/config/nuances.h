// A colour by hue, saturation and lightness, as a finger chooses it.
#pragma once

#include "platform/controles/apparence.h"

namespace nuances {

struct Nuance {
    double teinte = 0;      ///< degrees, 0 (red) to 360
    double saturation = 0;  ///< 0 (grey) to 1
    double clarte = 0;      ///< 0 (black) to 1 (white)
};

Nuance depuis(ecran::Couleur c);
ecran::Couleur vers_couleur(const Nuance& n);

}  // namespace nuances
