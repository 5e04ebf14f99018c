// What the keys of the main screen do: the decoding of a key code and the navigation between the pages.
#pragma once

namespace touches {

/// A touch on key i, 1 to 100; 0 with etat::code_touche set is a simulated touch.
void touche(int i);
/// A touch on a cell of the function row.
void touche_barre(int colonne);
/// A cell of the function row is held: "Familles" opens the search. False: it is no such cell.
bool tient_barre(int colonne);
/// A character of the physical keyboard opens the search, too, once somebody takes orders.
void tape(int caractere);

}  // namespace touches
