// What the program is asked to do. Each command tells on the standard streams what it did, and gives its exit status.
#pragma once

#include <string_view>

namespace commandes {

/// Exit statuses.
enum Statut {
    fait = 0,
    fautes = 1,  ///< faults in the sheets (nothing was made), or losses in the files
    refus = 2,   ///< files that cannot be read or written
};

int modele(std::string_view dossier);
int fabrique(std::string_view dossier, std::string_view repertoire);
int exporte(std::string_view repertoire, std::string_view dossier);
int verifie(std::string_view repertoire);
int apercu(std::string_view dossier, std::string_view page);
/// Makes the page where temporary files go and shows it. A folder that has nothing yet gets the example first.
int relit(std::string_view dossier);

}  // namespace commandes
