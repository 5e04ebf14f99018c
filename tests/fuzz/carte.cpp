// The manager's sheets, one after the other with a zero byte between: whatever they say is told as a fault, or comes
// back from the files that are made of it.
#include "carte/fabrication.h"
#include "carte/lecture.h"
#include "essai.h"

void essaie(std::string_view entree) {
    for (int i = 0; i < tableaux::nb_feuilles; ++i)
        pose(std::string(tableaux::forme(static_cast<tableaux::Feuille>(i)).fichier), coupe(entree));
    tableaux::Constats constats;
    const carte::Carte c = lecture::lis(".", constats);
    const auto fichiers = fabrication::fabrique(c);
    if (!constats.fautes.empty()) return;
    const auto encore = fabrication::fabrique(fabrication::relis(fichiers));
    exige(encore.catalogue == fichiers.catalogue && encore.entete == fichiers.entete);
    exige(encore.styles == fichiers.styles && encore.touches == fichiers.touches);
}
