// What the main screen looks after by itself, every few seconds while there is cause: files that another program holds,
// and the network after the machine woke up.
#pragma once

#include <functional>

#include "platform/controles/controles.h"

namespace guet {

/// Gives the main screen's form the timer. `reprend` refreshes the screen where no dialog is open.
void ajoute(ecran::Forme& forme, std::function<void()> reprend);
/// Starts the timer when there is cause and it is not running.
void veille();
/// Starts it anew: somebody has touched the screen, and wants to see the next look soon. Called behind a look at the
/// working directory, which tells the orders that wait.
void reprend();
/// The machine woke up: its network may take a while to come back.
void reveil();

}  // namespace guet
