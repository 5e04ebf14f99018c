// The request to end that a program without a window gets: SIGTERM or Ctrl-C, the closed console, the end of the
// session.
#pragma once

namespace arret {

/// From now on such a request is noted; a second one ends the program at once.
void ecoute();
bool demande();
/// The limit that a wait of `ms` milliseconds has left: short once the end was asked for.
int limite(int ms);

}  // namespace arret
