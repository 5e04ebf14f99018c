// What the system itself does; processus.cpp records the starts and may keep them from happening.
#pragma once

#include <string>
#include <string_view>

#include "platform/systeme/processus.h"

namespace processus::systeme {

bool lance(std::string_view commande, Fenetre fenetre);
std::string identifiant_machine();

}  // namespace processus::systeme
