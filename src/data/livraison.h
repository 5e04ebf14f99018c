// What the worker does on the network directory: plain functions of their arguments, without shared state. An order is
// handed over exactly once, wherever the program is cut off:
//
//   1. its text is copied to a temporary name in the network directory, flushed and measured;
//   2. a mark beside the local order names that temporary file: from now on nobody removes it;
//   3. the temporary file is renamed to ".txt", never over another one: the router may have it at any moment;
//   4. the local order becomes the kept text of a deposited one, and the mark goes.
//
// Whoever finds a mark knows: while its temporary file is there, 3 is next; when it is gone, 4 is.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"

namespace livraison {

/// How the names of an order's files end; all begin with the order's name, "yyyy-mm-dd-hh-nn-ss_SS_TTT_CCC_.".
inline constexpr std::string_view fin_en_attente = "-A-",  ///< it waits in the working directory
    fin_livree = "txt",                                    ///< it lies in the network directory
    fin_gardee = "-T-",      ///< its text, kept until it has been collected; before the end, which directory has it
    fin_a_verifier = "-V-";  ///< its text, kept since nobody can know whether it was handed over

/// How the name of the file begins by which a tablet tells the router who it is; its end is that of a delivered order.
inline constexpr std::string_view debut_identification = "00_00_0_";

/// The order's name: that of one of its files without the end. Shorter ones have none: empty.
std::string_view nom_de(std::string_view fichier);
/// The name of the order that a kept text belongs to; empty when it is none.
std::string nom_garde(std::string_view fichier);
/// The name of the order that a mark speaks of; empty when it is none.
std::string nom_marque(std::string_view fichier);
/// Whether the name of a file ends so; letter case is ignored.
bool finit_par(std::string_view fichier, std::string_view fin);

/// The orders of the working directory by their names, and what writing left unfinished; each list in name order.
struct Local {
    std::vector<std::string> en_attente;   ///< whole file names: the end may be in either letter case
    std::vector<std::string> gardees;      ///< whole file names; deposited, and not known to be collected
    std::vector<std::string> a_verifier;   ///< whole file names
    std::vector<std::string> marques;      ///< whole file names
    std::vector<std::string> anciennes;    ///< marks of versions up to 2.01, which repeat a delivered order; likewise
    std::vector<std::string> temporaires;  ///< of any file
};
/// Lists the working directory; nothing when it cannot be read.
std::optional<Local> liste_locale();

/// The network directory, and the code that tells this tablet's temporary files from others'.
struct Lieu {
    std::string repertoire, tablette;
    bool monte = false;  ///< a share is mounted there: without it the same path names another directory
};

/// Removes the temporary files that a power cut left behind in the working directory, but those that a mark names.
void retire_temporaires(const Local& local);

/// What is known of a network directory: that this tablet has delivered there, and whether a share was mounted then.
struct Connu {
    bool nu = false, monte = false;
};
/// What the working directory still knows of it.
Connu connait(const Lieu& lieu, const Local& local);
/// Writes the probe record into "Test.res" of the directory, the date in 64 characters, and tells whether a share is
/// mounted there. A blank directory is never there; nor is the place of a share that was mounted and is not, nor one
/// that is known and holds neither probe nor catalogue.
std::optional<fichiers::Trouve> ecrit_sonde(const std::string& repertoire, int record, const std::string& date,
                                            Connu connu = {});

/// Files of the working directory as they were read just now; null: not read.
struct Lus {
    std::shared_ptr<const std::string> entete, catalogue;
};
struct Copie {
    bool entiere = false;  ///< the catalogue itself is here and whole, and no file was kept by another program
    bool neuve = false;    ///< a file is not what it was
};
/// Copies the style and catalogue files into the working directory; what cannot be read, or is empty because it is just
/// being written, leaves the local file as it is. Those in `lus` are not read again.
Copie copie_catalogue(const std::string& repertoire, const Lus& lus = {});
/// A text that changes when these files do.
std::string empreinte_du_catalogue(const std::string& repertoire);

enum class Sort {
    deposee,       ///< in the network directory
    collectee,     ///< it was there, and is gone
    a_verifier,    ///< handed over or not, nobody can know
    attend,        ///< this one cannot go now; others may
    tenue,         ///< likewise, because another program holds a file: that may pass at any moment
    reseau_perdu,  ///< nor can any other
};
/// What became of one order.
struct Constat {
    std::string nom;  ///< the order's
    Sort sort = Sort::reseau_perdu;
    fichiers::Issue cause = fichiers::Issue::fait;  ///< of what keeps it, or its text, here
    bool reste = false;  ///< handed over, but its local file could not be put away: its mark stays
};

/// What one listing of the network directory tells: the deliveries that were cut off are ended, what they left behind
/// is removed, and deposited orders that are gone count as collected. `remises` are orders that this run handed over
/// but could not put away. Nothing when the directory cannot be listed, or another one lies in its place.
std::optional<std::vector<Constat>> fait_le_point(const Lieu& lieu, const Local& local,
                                                  const std::vector<std::string>& remises);

/// Delivers one waiting order of the working directory, given by its file.
Constat livre(const Lieu& lieu, const std::string& fichier);

/// Writes a text into the network directory under a new name.
bool depose(const std::string& repertoire, const std::string& nom, const std::string& contenu);

}  // namespace livraison
