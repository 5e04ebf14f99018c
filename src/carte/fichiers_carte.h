// The restaurant's files in their directory: written whole, read, compared.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "carte/fabrication.h"
#include "platform/systeme/fichiers.h"

namespace fichiers_carte {

/// Writes the files that there are, each whole and under its name at once; one that is the same already stays. `dit` is
/// told of each (UTF-8). Gives the file at which it failed, and why; the catalogue comes last.
std::pair<std::string, fichiers::Issue> ecrit(std::string_view repertoire, const fabrication::Fichiers& fichiers,
                                              const std::function<void(const std::string&)>& dit);

/// Reads them; the catalogue must be there. Gives the file at which it failed, and why.
std::pair<std::string, fichiers::Issue> lis(std::string_view repertoire, fabrication::Fichiers& vers);

/// What two sets of files do not say alike, a line each, UTF-8; what only one of them has is not compared.
std::vector<std::string> differences(const fabrication::Fichiers& avant, const fabrication::Fichiers& apres);

}  // namespace fichiers_carte
