// What the worker does on the network directory: plain functions of their arguments, without shared state. A blank
// directory is never there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace livraison {

/// Orders of the working directory that wait, in name order.
std::vector<std::string> en_attente();

/// Deletes the orders that were delivered, but whose file could not be deleted then: those of `livrees` and those that
/// an earlier run has marked. Those that still cannot be deleted, or not be compared with their mark, stand in
/// `livrees` then: the router, which has perhaps collected them, gets none twice. True when another program holds one.
bool supprime_livrees(std::vector<std::string>& livrees);

/// Writes the probe record into "Test.res" of the directory: the date in 64 characters.
bool ecrit_sonde(const std::string& repertoire, int record, const std::string& date);

/// Copies the style and catalogue files into the working directory; what cannot be read, or is empty because it is just
/// being written, leaves the local file as it is. True when the catalogue itself is here and whole, and no other
/// program has kept one of the files from being copied.
bool copie_catalogue(const std::string& repertoire);

enum class Sort {
    livree,        ///< in the network directory, and no longer here
    attend,        ///< this one cannot go now; others may
    tenue,         ///< likewise, because another program holds a file: that may pass at any moment
    reseau_perdu,  ///< nor can any other
};
/// Removes from the network directory what a delivery of these orders left there when it was cut off.
void retire_restes(const std::string& repertoire, const std::vector<std::string>& noms);
/// Delivers one waiting order of the working directory.
Sort livre(const std::string& repertoire, const std::string& nom);

/// Writes a text into the network directory under a new name.
bool depose(const std::string& repertoire, const std::string& nom, const std::string& contenu);

}  // namespace livraison
