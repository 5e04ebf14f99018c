// What became of each order, in "suivi.txt" of the working directory: one line an order, oldest first, for the last
// 200. commande adds the lines, reseau moves them on; the screen `suivi` and the banner read. The files of the orders
// themselves tell the truth: the list is brought in line with them at the start, and made anew from them where it is
// missing or damaged.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "data/livraison.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"

namespace suivi {

inline constexpr std::string_view nom_fichier = "suivi.txt";
inline constexpr std::size_t lignes_max = 200;

enum class Etat {
    en_attente,  ///< on the tablet
    deposee,     ///< its ".txt" is in the network directory
    collectee,   ///< it is gone from there: the router has it
    a_verifier,  ///< handed over or not, nobody can know: the waiter decides
};

struct Ligne {
    horloge::DateHeure ecrite;  ///< when the order was written
    int serveur = 0;
    std::string table;     ///< three digits
    std::string couverts;  ///< three digits
    int lignes = 0;        ///< of the note; a menu counts as one
    Etat etat = Etat::en_attente;
    horloge::DateHeure depuis;   ///< when it came into this state
    std::string nom;             ///< of its file, without the end: "yyyy-mm-dd-hh-nn-ss_SS_TTT_CCC_."
    std::int64_t depuis_ms = 0;  ///< the same in horloge::millisecondes(), which no set clock changes
};

/// Reads the list and brings it in line with the files of the working directory, as listed: a deposited order whose
/// text is gone has been collected, a waiting one whose file is gone is to be checked, and an order without a line gets
/// one at the end. Where the files cannot be listed nothing is concluded.
void charge(const std::optional<livraison::Local>& local = livraison::liste_locale());
/// Oldest first.
const std::vector<Ligne>& lignes();

/// Whether the list says that the order of that name has been deposited.
bool est_deposee(std::string_view nom);
/// Whether an order of that name has a line.
bool connait(std::string_view nom);
/// An order was written: a line for it, "en attente". The file follows with the next look at the network.
void ajoute(std::string_view nom, int nombre_de_lignes);
/// The order of that name came into another state; nothing when it has no line or is there already.
void passe_a(std::string_view nom, Etat etat);
/// Writes the list when it has changed. Not flushed: what a power cut takes is made anew from the orders' files.
void enregistre();

/// Orders that were deposited five minutes ago or longer, and not collected.
int non_collectees();
/// Milliseconds until the next order becomes one of them; -1: none will.
std::int64_t avant_la_prochaine();

enum class Renvoi {
    fait,
    deja_en_attente,  ///< its text waits on the tablet
    texte_perdu,      ///< its text is no longer there
    echec,            ///< its file could not be renamed
};
/// Sends an order that is "à vérifier" again: it waits anew.
Renvoi renvoie(std::string_view nom);

}  // namespace suivi
