// What the worker does on the network directory: plain functions of their arguments, without shared state.
#pragma once

#include <string>
#include <vector>

namespace livraison {

/// Orders of the working directory that wait, in name order.
std::vector<std::string> en_attente();

/// Writes the probe record into "Test.res" of the directory: the date in 64 characters.
bool ecrit_sonde(const std::string& repertoire, int record, const std::string& date);

/// Copies the style and catalogue files into the working directory; what cannot be read leaves the local file as it is.
/// True when the catalogue itself is here and whole.
bool copie_catalogue(const std::string& repertoire);

/// Delivers these orders one after the other. False, and ended early, when the network fails.
bool livre(const std::string& repertoire, const std::vector<std::string>& noms);

}  // namespace livraison
