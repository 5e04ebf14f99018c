// The command line of the kitchen.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cuisine/service.h"

namespace options {

/// The help, UTF-8.
extern const char* const aide;

struct Options {
    service::Reglages reglages;
    std::string apercu_de, apercu_vers;  ///< an order file and the picture of its ticket
    bool montre_aide = false, montre_version = false;
};

/// The words are of the page 1252. Nothing, with the reason in `faute` (page 1252), when they make no sense.
std::optional<Options> lis(const std::vector<std::string>& mots, std::string& faute);

}  // namespace options
