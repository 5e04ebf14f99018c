// The toolbox: all settings and the maintenance actions. Not part of this version yet.
#pragma once

namespace ch_outils {

void montre_ch_outils();

}  // namespace ch_outils
