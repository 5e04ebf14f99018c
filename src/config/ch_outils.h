// The toolbox "Boite à Outils": the settings with their values, each changed by a touch on its row, and the maintenance
// actions.
#pragma once

namespace ch_outils {

/// Shows the toolbox until it is closed. Every change is in the settings store before the next touch. The screen size
/// typed here, the reconnection, the update and the dump end the program.
void montre_ch_outils();

}  // namespace ch_outils
