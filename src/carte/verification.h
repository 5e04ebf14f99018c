// What the tablets make of existing files: what they drop, cut or show otherwise, and what a waiter then sees. All
// texts are UTF-8, a line each.
#pragma once

#include <string>
#include <vector>

#include "carte/fabrication.h"

namespace verification {

/// "worvalune.wdo, ligne 12 : …", and why; empty when nothing is lost.
std::vector<std::string> pertes(const fabrication::Fichiers& fichiers);

/// Files of fixed records that are cut short, and what they lack.
std::vector<std::string> coupures(const fabrication::Fichiers& fichiers);

/// Servers, families with their articles, tables, menus, details and home pages.
std::vector<std::string> vue(const fabrication::Fichiers& fichiers);

}  // namespace verification
