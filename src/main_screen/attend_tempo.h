// The wait before a new attempt to reach the network: it counts down and closes by itself.
#pragma once

namespace attend_tempo {

/// Set when the last wait was broken off; cleared when one opens.
inline bool abandon = false;

/// Counts five seconds down, shows that a new attempt is made, and closes three seconds later, or at once when broken
/// off.
void montre_attend_tempo();

}  // namespace attend_tempo
