// The summary of the note, and the sending of the order.
#pragma once

namespace eta_com {

/// Shows the note. A touched row opens its line again; the send key writes the order file, empties the note and sets
/// etat::commande_envoyee.
void montre_eta_com();

}  // namespace eta_com
