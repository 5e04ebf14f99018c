// The choice of a key's picture, and of the "N" mark that goes with it.
#pragma once

namespace lis_bout {

/// Shows the list. In: etat::texte_travail the picture of a key, three digits and a blank or "N". Out: the new one,
/// four characters, all blank for no picture.
void montre_lis_bout();

}  // namespace lis_bout
