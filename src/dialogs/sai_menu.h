// The entry of a composed menu, course by course, for the technician: its last key ends the program.
#pragma once

#include <string>

namespace sai_menu {

/// The record of a menu with four courses, to try the screen with.
std::string menu_exemple();

/// Shows the courses of etat::texte_travail; touched dishes go to the remarks of the line in hand, or are taken back.
void montre_sai_menu();

}  // namespace sai_menu
