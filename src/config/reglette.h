// A strip of colours under the finger, and the mark of the place in hand.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/controles/controles.h"

namespace reglette {

/// A place on a strip: 0 at its left end, 1 at its right.
using Place = double;

/// Adds the strip `nom`, behind its caption; `au_doigt` is told where the finger is while it is down.
void ajoute(ecran::Forme& forme, const std::string& nom, std::string_view legende, const ecran::Cadre& zone,
            std::function<void(Place)> au_doigt);

/// Paints each place of a strip in its colour, and moves the mark, which shows the colour in hand.
void peint(ecran::Forme& forme, const std::string& nom, const std::function<ecran::Couleur(Place)>& couleur,
           Place place, ecran::Couleur en_main);

}  // namespace reglette
