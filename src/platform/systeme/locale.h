// The system's decimal separator. Only Windows has a system-wide one to correct: elsewhere it is always ".".
#pragma once

namespace locale_systeme {

/// First character of the user locale's decimal separator.
char separateur();
/// The second character of 1.1 written with the current locale.
char separateur_en_usage();
/// Sets the decimal separator of the system's default locale to ".".
void corrige_separateur();

/// From now on a simulated system setting is read and corrected instead (replays).
void simule(char separateur);
void rend_reelle();

}  // namespace locale_systeme
