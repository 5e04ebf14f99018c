// The request to end that a program gets from outside: SIGTERM or Ctrl-C, the closed console, the end of the session.
#pragma once

namespace arret {

/// From now on such a request is noted; a second one ends the program at once.
void ecoute();
bool demande();
/// The limit that a wait of `ms` milliseconds has left: short once the end was asked for.
int limite(int ms);

// What a wait looks at besides its own matter.
#ifdef _WIN32
/// The event (HANDLE) that is set once the end was asked for; null before ecoute().
void* evenement();
#else
/// Can be read once the end was asked for; -1 before ecoute().
int descripteur();
#endif

}  // namespace arret
