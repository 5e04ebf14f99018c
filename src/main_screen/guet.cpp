#include "main_screen/guet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "data/reseau.h"
#include "data/suivi.h"
#include "data/tenus.h"
#include "main_screen/bandeau.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"

namespace guet {
namespace {

/// Twice as long after each vain look, up to the last: nobody's disk or network is worn out. While orders wait for the
/// network it is looked for steadily: back, it has the first of them within five seconds, even where each operation on
/// it takes a third of one.
constexpr int pas_ms = 2000, pas_max_ms = 30000;
constexpr int limite_ms = 2000;
constexpr std::int64_t duree_reveil_ms = 60000;

ecran::Minuterie* minuterie = nullptr;
std::function<void()> reprise;
std::int64_t fin_du_reveil = -1;

bool est_en_reveil() {
    return horloge::millisecondes() < fin_du_reveil && !reseau::joignable();
}

bool cherche_le_reseau() {
    return est_en_reveil() || reseau::est_attendu();
}

bool a_cause() {
    return !tenus::noms().empty() || reseau::a_reprendre() || cherche_le_reseau() || reseau::attend_la_cuisine() ||
           suivi::avant_la_prochaine() >= 0;
}

/// The next look: an order that nobody collects is told when its time is up.
int pas_suivant(int pas) {
    if (cherche_le_reseau()) return pas_ms;
    const std::int64_t voulu = std::min(2 * pas, pas_max_ms), rappel = suivi::avant_la_prochaine();
    return static_cast<int>(rappel < 0 ? voulu : std::min(voulu, rappel));
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
    minuterie->demarre(pas_suivant(minuterie->intervalle_ms));
    bandeau::affiche_etat();
    if (!tenus::noms().empty()) return regarde_les_tenus();
    if (reseau::a_reprendre() || cherche_le_reseau()) return reseau::passe();
    if (reseau::attend_la_cuisine()) return reseau::regarde_la_cuisine();
    if (!a_cause()) minuterie->arrete();
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

/// Without cause a long pause ends, too: what gives cause next is looked for soon.
void reprend() {
    if (a_cause())
        minuterie->demarre(pas_ms);
    else
        minuterie->arrete();
}

void reveil() {
    fin_du_reveil = horloge::millisecondes() + duree_reveil_ms;
    reprend();
}

}  // namespace guet
