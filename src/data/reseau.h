// The shared network directory: is it there, what waits for it, what comes from it. All work on it is done by the
// worker; the answers arrive as events of the loop, and the screens read the last known state: joignable(),
// commandes_en_attente() and catalogue_frais().
#pragma once

#include <functional>
#include <string_view>

#include "platform/systeme/fichiers.h"

namespace reseau {

/// Names the network directory in its first line.
inline constexpr std::string_view nom_fichier = "wfichdir.wdo";
/// Whether it exists.
bool repertoire_connu();
/// Reads its first line, without the blanks around it, into etat::repertoire_reseau and renews the probe's directory
/// and record. When the file cannot be read the directory is blank; while another program holds it, it stays.
fichiers::Issue lis_repertoire();
/// Writes the file anew: the directory, then 11 lines of one blank.
fichiers::Issue ecrit_repertoire(std::string_view repertoire);

/// Last known state; false before the first answer and while the offline switch is set.
bool joignable();
/// Whether the last pass left something undone though the network answers (another program held a file, the router has
/// not collected an order of the same name yet): a pass is worth while soon.
bool a_reprendre();
/// Whether orders wait for a network that does not answer.
bool est_attendu();
/// Whether orders have been deposited that nobody has seen collected yet.
bool attend_la_cuisine();
/// Orders that wait in the working directory, as the last passe() saw it and its deliveries left it.
int commandes_en_attente();

/// Begins the first look at the network. The waiter may be shown something meanwhile, and the catalogue of the tablet
/// be read.
void commence_la_connexion();
/// Waits at most 100 ms for the probe of that look and, when it answers, up to 2 s for the catalogue.
void attend_la_connexion();
/// Tests the connection; when it stands, delivers what waits, then fetches the catalogue if that was not possible yet.
/// Returns at once; does nothing while an earlier pass is under way.
void passe();
/// Looks whether deposited orders have been collected, without the test and the deliveries of a pass. Does nothing when
/// there are none, or while anything else is under way.
void regarde_la_cuisine();
/// Whether catalogue files have come since the last call; at the start, others than those that were read.
bool catalogue_frais();

/// Tells the router who this tablet is: a file with its identification code. `suite` learns whether it was written, now
/// or when the network has answered; once more where it was written after all, past the time allowed.
void envoie_identification(std::function<void(bool)> suite);

/// Called on the interface's thread whenever the state or the count may have changed.
void au_changement(std::function<void()> action);

}  // namespace reseau
