// Starting another program, and what identifies this machine.
#pragma once

#include <string>
#include <string_view>

namespace processus {

enum class Fenetre { normale, agrandie };

/// Starts a program by its command line and does not wait for it. False when it cannot be started.
bool lance(std::string_view commande, Fenetre fenetre);

/// From now on (replays) starts are only recorded, lance() always succeeds, and the machine is a simulated one.
void enregistre_seulement(bool oui);
/// What such a machine is called; "rejeu" unless told: a replay writes the same orders everywhere.
void simule_machine(std::string_view identifiant);
/// The last command line given to lance(); empty when none was.
std::string derniere_commande();

/// The machine's own identifier (Windows MachineGuid, Linux machine-id), or empty where there is none.
std::string identifiant_machine();

}  // namespace processus
