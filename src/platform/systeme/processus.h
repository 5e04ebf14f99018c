// Starting another program, and what identifies this machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace processus {

enum class Fenetre { normale, agrandie };

/// Starts a program by its command line and does not wait for it. False when it cannot be started.
bool lance(std::string_view commande, Fenetre fenetre);

/// Runs a program, the first of the words by its whole path, to its end, without a window of its own. What it writes
/// goes into the file `sortie`. Its exit status; nothing when it cannot be started.
std::optional<int> execute(const std::vector<std::string>& mots, std::string_view sortie);
/// The directory in which the running program lies, and how programs' names end here.
std::string repertoire_du_programme();
#ifdef _WIN32
inline constexpr std::string_view fin_de_programme = ".exe";
#else
inline constexpr std::string_view fin_de_programme = "";
#endif
/// Shows a file with the program that the user has chosen for its kind. False when that cannot be started.
bool montre_fichier(std::string_view chemin);

/// From now on (replays) starts are only recorded, lance() always succeeds, and the machine is a simulated one.
void enregistre_seulement(bool oui);
/// What such a machine is called; "rejeu" unless told: a replay writes the same orders everywhere.
void simule_machine(std::string_view identifiant);
/// The last command line given to lance(); empty when none was.
std::string derniere_commande();

/// The machine's own identifier (Windows MachineGuid, Linux machine-id), or empty where there is none.
std::string identifiant_machine();

}  // namespace processus
