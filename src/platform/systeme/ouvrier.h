// The one worker for network operations. The interface hands it an operation and goes on; the answer comes back as an
// event of the loop, on the interface's thread. At most one operation is under way; while one hangs, nothing further is
// started.
#pragma once

#include <cstdint>
#include <functional>

namespace ouvrier {

enum class Reponse {
    faite,       ///< the operation ended within its limit
    hors_delai,  ///< it did not: the network counts as unreachable; the operation may still end later
};

struct Operation {
    /// Runs on the worker's thread: touches no shared state but what it captured by value or shared_ptr.
    std::function<void()> travail;
    /// Runs on the interface's thread, from traite_reponses() or attends(), exactly once.
    std::function<void(Reponse)> suite;
    /// Milliseconds after which the answer is hors_delai.
    int limite_ms = 2000;
    /// Runs on the interface's thread when an operation that was answered as late has ended after all; may be empty.
    std::function<void()> tardive = {};
};

/// Starts an operation. False, with nothing started and `suite` never called, while an earlier one is under way or
/// still hangs.
bool lance(Operation operation);

/// The operation under way gets at most `ms` milliseconds from now until it counts as late.
void presse(int ms);
/// Whether an operation is under way or hangs.
bool occupe();

/// Waits at most `ms` real milliseconds for the operation under way and calls its `suite` when it has ended.
/// True when nothing is under way any more.
bool attends(int ms);

/// Calls the `suite` of what has ended or passed its limit. The loop calls it once per turn.
void traite_reponses();
/// When traite_reponses() must be called at the latest, in horloge::millisecondes(), or -1 when nothing is awaited.
std::int64_t prochaine_echeance();

/// Called from the worker's thread when an operation has ended, to wake the loop.
void previens_par(std::function<void()> reveil);

/// How the network directory answers in a replay. In a simulation time is the virtual clock's.
/// While it is simulated as absent an operation's `travail` is not run at all: an operation captures a result that says
/// failure until its work has said otherwise. An operation that hangs or is late runs (really) when the state changes
/// or its time has come.
enum class Reseau { present, absent, bloque, lent };
void simule(Reseau etat, int ms);
/// In a replay every answer is awaited (really) up to its limit before the next command is read.
void attend_toujours(bool oui);
/// In a replay, before the next command: waits for what really runs, and answers it.
void termine_en_rejeu();

/// Ends the worker without waiting for an operation that hangs.
void abandonne();

}  // namespace ouvrier
