// What the examinations of the single files share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "carte/tableaux.h"
#include "data/catalogue.h"

namespace verification {

/// Notes losses of one file.
class Pertes {
  public:
    Pertes(std::string_view fichier, std::vector<std::string>& vers) : fichier_(fichier), vers_(vers) {}
    /// The line, or 0 for the whole file, that the next losses are of.
    void ligne(std::size_t numero) { numero_ = numero; }
    void dit(std::string_view message) { vers_.push_back(tableaux::situe(fichier_, numero_, "", message)); }

  private:
    std::string_view fichier_;
    std::vector<std::string>& vers_;
    std::size_t numero_ = 0;
};

void examine_styles(std::string_view contenu, std::vector<std::string>& vers);
void examine_touches(std::string_view contenu, const catalogue::Tables& tables, std::vector<std::string>& vers);

/// "« … »" in UTF-8, of a text of the page 1252.
std::string entre_guillemets(std::string_view page);
/// What stands behind a field's name, up to the next "|".
std::string_view apres(std::string_view record, std::string_view champ);

}  // namespace verification
