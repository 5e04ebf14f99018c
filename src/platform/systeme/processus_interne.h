// What the system itself does; processus.cpp records the starts and may keep them from happening.
#pragma once

#include <string>
#include <string_view>

#include "platform/systeme/processus.h"

namespace processus::systeme {

bool lance(std::string_view commande, Fenetre fenetre);
std::optional<int> execute(const std::vector<std::string>& mots, std::string_view sortie);
std::string repertoire_du_programme();
std::string identifiant_machine();
/// The program that finds the right one for a file.
#ifdef _WIN32
inline constexpr std::string_view ouvreur = "rundll32.exe url.dll,FileProtocolHandler";
#else
inline constexpr std::string_view ouvreur = "xdg-open";
#endif

}  // namespace processus::systeme
