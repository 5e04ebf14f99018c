#include "main_screen/guet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "data/reseau.h"
#include "data/tenus.h"
#include "platform/fichiers.h"
#include "platform/horloge.h"
#include "platform/ouvrier.h"

namespace guet {
namespace {

/// Twice as long after each vain look, up to the last: nobody's disk or network is worn out.
constexpr int pas_ms = 2000, pas_max_ms = 30000;
constexpr int limite_ms = 2000;
constexpr std::int64_t duree_reveil_ms = 60000;

ecran::Minuterie* minuterie = nullptr;
std::function<void()> reprise;
std::int64_t fin_du_reveil = -1;

bool cherche_le_reseau() {
    return horloge::millisecondes() < fin_du_reveil && !reseau::joignable();
}

/// The worker looks whether one of the files is free again, and has no time for the network meanwhile.
void regarde_les_tenus() {
    auto libre = std::make_shared<bool>(false);
    ouvrier::lance(
        {[noms = tenus::noms(), libre] { *libre = !std::all_of(noms.begin(), noms.end(), fichiers::est_tenu); },
         [libre](ouvrier::Reponse reponse) {
             if (reponse == ouvrier::Reponse::faite && *libre) return reprise();
             if (reseau::commandes_en_attente() > 0) reseau::passe();
         },
         limite_ms});
}

void tic() {
    minuterie->intervalle_ms = std::min(2 * minuterie->intervalle_ms, pas_max_ms);
    if (!tenus::noms().empty()) return regarde_les_tenus();
    if (reseau::a_reprendre() || cherche_le_reseau()) return reseau::passe();
    minuterie->arrete();
}

}  // namespace

void ajoute(ecran::Forme& forme, std::function<void()> reprend) {
    minuterie = &forme.ajoute_minuterie("guet");
    minuterie->au_tic = tic;
    reprise = std::move(reprend);
}

void veille() {
    const bool cause = !tenus::noms().empty() || reseau::a_reprendre() || cherche_le_reseau();
    if (cause && !minuterie->actif) minuterie->demarre(pas_ms);
}

void reveil() {
    fin_du_reveil = horloge::millisecondes() + duree_reveil_ms;
    veille();
}

}  // namespace guet
