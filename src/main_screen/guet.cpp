#include "main_screen/guet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "data/reseau.h"
#include "data/tenus.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"

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

bool a_cause() {
    return !tenus::noms().empty() || reseau::a_reprendre() || cherche_le_reseau();
}

/// Which of the held files are free again. The worker had no time for the network meanwhile.
void apres_le_regard(const std::vector<std::string>& libres) {
    for (const std::string& nom : libres) tenus::libere(nom);
    if (!libres.empty()) reprise();
    if (reseau::commandes_en_attente() > 0 || cherche_le_reseau()) reseau::passe();
}

void regarde_les_tenus() {
    auto libres = std::make_shared<std::vector<std::string>>();
    ouvrier::lance({[noms = tenus::noms(), libres] {
                        *libres = noms;
                        std::erase_if(*libres, fichiers::est_tenu);
                    },
                    [libres](ouvrier::Reponse reponse) {
                        apres_le_regard(reponse == ouvrier::Reponse::faite ? *libres : std::vector<std::string>());
                    },
                    limite_ms});
}

void tic() {
    const int pas = minuterie->intervalle_ms;
    minuterie->intervalle_ms = cherche_le_reseau() ? pas_ms : std::min(2 * pas, pas_max_ms);
    if (!tenus::noms().empty()) return regarde_les_tenus();
    if (a_cause()) return reseau::passe();
    minuterie->arrete();
}

}  // namespace

void ajoute(ecran::Forme& forme, std::function<void()> reprend) {
    minuterie = &forme.ajoute_minuterie("guet");
    minuterie->au_tic = tic;
    reprise = std::move(reprend);
}

void veille() {
    if (!minuterie->actif) reprend();
}

void reprend() {
    if (a_cause()) minuterie->demarre(pas_ms);
}

void reveil() {
    fin_du_reveil = horloge::millisecondes() + duree_reveil_ms;
    reprend();
}

}  // namespace guet
