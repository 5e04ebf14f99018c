// The start-up sequence, which every refresh runs again.
#pragma once

namespace demarrage {

/// Runs the sequence up to the drawing of a page: settings, separator, screen format, network directory, local files,
/// catalogue. Questions and messages come only when something is missing; it may end the program.
void execute();
/// Gives the main screen and all that lies on it the working size.
void place_ecran();
/// Whether the first run has come to its end.
bool est_fait();

}  // namespace demarrage
