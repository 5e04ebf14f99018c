// What a wait looks at besides its own matter.
#pragma once

namespace arret {

#ifdef _WIN32
/// The event (HANDLE) that is set once the end was asked for; null before ecoute().
void* evenement();
#else
/// Can be read once the end was asked for; -1 before ecoute().
int descripteur();
#endif

}  // namespace arret
