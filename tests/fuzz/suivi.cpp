// The list of what became of the orders.
#include "data/suivi.h"

#include "essai.h"

namespace {

bool egale(const suivi::Ligne& a, const suivi::Ligne& b) {
    return horloge::lisible(a.ecrite) == horloge::lisible(b.ecrite) && a.serveur == b.serveur && a.table == b.table &&
           a.couverts == b.couverts && a.lignes == b.lignes && a.etat == b.etat &&
           horloge::lisible(a.depuis) == horloge::lisible(b.depuis) && a.nom == b.nom;
}

}  // namespace

void essaie(std::string_view entree) {
    exige(pose(std::string(suivi::nom_fichier), entree));
    suivi::charge();
    const std::vector<suivi::Ligne> lues = suivi::lignes();
    exige(lues.size() <= suivi::lignes_max);
    for (const suivi::Ligne& l : lues) exige(!l.nom.empty() && l.nom.find_first_of("/\\:") == std::string::npos);
    suivi::charge();
    exige(std::equal(lues.begin(), lues.end(), suivi::lignes().begin(), suivi::lignes().end(), egale));
}
