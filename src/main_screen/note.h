// The order in progress: its lines, its total, and the provisional file.
#pragma once

#include <string_view>

namespace note {

/// The provisional file: the note as it stood when the program was closed.
inline constexpr std::string_view nom_provisoire = "prov.txt";

/// Appends the line of etat::texte_travail unless it is blank; tells the waiter when the note is full. Whether the note
/// holds it now.
bool ajoute_ligne();
/// Brings etat::total_note up to date: the sum of unit price times quantity.
void calcule_total();

/// Writes server, table and the note's lines into it, over an older one. False when that was not possible.
bool ecrit_donnees();
/// Deliberately nothing: a saved note is never read back, the terminal starts with an empty one.
void charge_provisoire();

}  // namespace note
