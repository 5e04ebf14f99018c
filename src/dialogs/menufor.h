// The composition of a fixed-price menu: its courses, page by page. A touched dish goes to the remarks of the line in
// hand, or is taken back.
#pragma once

namespace menufor {

/// Shows the courses of etat::texte_travail and leaves it as it is.
void montre_menufor();

}  // namespace menufor
