// The composition of a fixed-price menu. Not part of this version yet; leaves etat::texte_travail as it is.
#pragma once

namespace menufor {

void montre_menufor();

}  // namespace menufor
