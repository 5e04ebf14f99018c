// The order in progress: its lines, its total, and the provisional file.
#pragma once

namespace note {

/// Appends the line of etat::texte_travail unless it is blank; tells the waiter when the note is full.
void ajoute_ligne();
/// Brings etat::total_note up to date: the sum of unit price times quantity.
void calcule_total();

/// Writes prov.txt. False when that was not possible.
bool ecrit_donnees();
/// Deliberately nothing: a saved note is never read back, the terminal starts with an empty one.
void charge_provisoire();

}  // namespace note
