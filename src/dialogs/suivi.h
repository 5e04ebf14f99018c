// What became of each order, for the waiter who asks whether the kitchen has it. The list itself is data/suivi.
#pragma once

namespace ecran_suivi {

/// Shows the orders, newest first. A touched row is chosen; the send key sends it again where it is to be checked.
void montre_suivi();
/// Brings the screen up to date where it is open; the chosen row and the place in the list stay.
void rafraichit();

}  // namespace ecran_suivi
