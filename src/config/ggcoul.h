// The colour chooser "Choix des couleurs": the ground and the text of the nine sorts of controls that carry a number.
#pragma once

namespace ggcoul {

/// Shows the chooser. What is validated stands in the settings store, and the screens take it when they next open.
void montre_ggcoul();

}  // namespace ggcoul
