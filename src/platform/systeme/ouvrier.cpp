#include "platform/systeme/ouvrier.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/systeme/horloge.h"

namespace ouvrier {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// What the two threads share. The worker holds it too, so that a worker that hangs may outlive everything else.
struct Partage {
    std::mutex verrou;
    std::condition_variable change;
    std::function<void()> travail;  ///< handed over, not yet taken
    bool libre = true;              ///< no work handed over or running
    bool fin = false;               ///< the worker is to end
    std::mutex verrou_reveil;       ///< held during the call: once replaced, a wake-up is never called again
    std::function<void()> reveil;
};

struct Ouvrier {
    std::shared_ptr<Partage> partage = std::make_shared<Partage>();
    std::thread fil;

    ~Ouvrier() {
        bool pend = false;
        {
            const std::lock_guard garde(partage->verrou);
            partage->fin = true;
            pend = !partage->libre;
        }
        partage->change.notify_all();
        {
            const std::lock_guard garde(partage->verrou_reveil);
            partage->reveil = {};
        }
        if (!fil.joinable()) return;
        if (pend) {
            fil.detach();
        } else {
            fil.join();
        }
    }
};

/// In a replay what is late is told by the virtual clock; a busy machine gets more real time, and gives the same
/// answers.
constexpr int patience_en_rejeu = 5;
constexpr auto jamais = std::numeric_limits<std::int64_t>::max();

/// The operation under way, as the interface's thread knows it.
struct EnCours {
    enum class Etat {
        retenue,  ///< simulated as late: its work has not begun
        court,    ///< with the worker
        finie,
    };
    Operation operation;
    Etat etat = Etat::retenue;
    std::int64_t debut = 0;             ///< when a held work begins, horloge::millisecondes()
    std::int64_t limite = 0;            ///< when a held operation is answered as late
    steady_clock::time_point echeance;  ///< when a running one is: work takes real time, whatever the clock
    bool repondue = false;              ///< late, and answered so
    bool patience = true;               ///< a replay still waits for its end
};

struct Simulation {
    Reseau etat = Reseau::present;
    int ms = 0;
    bool attend_toujours = false;
};

std::unique_ptr<Ouvrier> ouvrier;
std::optional<EnCours> en_cours;
Simulation simulation;

Ouvrier& l_ouvrier() {
    if (!ouvrier) ouvrier = std::make_unique<Ouvrier>();
    return *ouvrier;
}

void previent(Partage& p) {
    const std::lock_guard garde(p.verrou_reveil);
    if (p.reveil) p.reveil();
}

/// The worker's thread.
void travaille(const std::shared_ptr<Partage>& p) {
    std::unique_lock garde(p->verrou);
    while (true) {
        p->change.wait(garde, [&] { return p->fin || p->travail; });
        if (p->fin) return;
        auto travail = std::exchange(p->travail, {});
        garde.unlock();
        travail();
        travail = {};
        garde.lock();
        p->libre = true;
        p->change.notify_all();
        garde.unlock();
        previent(*p);
        garde.lock();
    }
}

/// Hands the work over. Without a thread to run it the operation ends as one that failed.
void demarre(EnCours& e) {
    Ouvrier& o = l_ouvrier();
    e.etat = EnCours::Etat::finie;
    try {
        if (!o.fil.joinable()) o.fil = std::thread(travaille, o.partage);
    } catch (const std::system_error&) {
        return;
    }
    e.etat = EnCours::Etat::court;
    const int patience = simulation.attend_toujours ? patience_en_rejeu : 1;
    e.echeance = steady_clock::now() + patience * milliseconds(e.operation.limite_ms);
    const std::lock_guard garde(o.partage->verrou);
    o.partage->libre = false;
    o.partage->travail = std::move(e.operation.travail);
    o.partage->change.notify_all();
}

/// When a held work begins, from the simulated state of the network.
void retient(EnCours& e) {
    const auto maintenant = horloge::millisecondes();
    switch (simulation.etat) {
        case Reseau::present:
            e.debut = maintenant;
            break;
        case Reseau::lent:
            e.debut = maintenant + simulation.ms;
            break;
        case Reseau::bloque:
            e.debut = jamais;
            break;
        case Reseau::absent:
            e.etat = EnCours::Etat::finie;
            break;
    }
    if (e.etat == EnCours::Etat::retenue && e.debut <= maintenant) demarre(e);
}

/// Waits, really, until the worker is free or the time has come.
void patiente(steady_clock::time_point jusqua) {
    Partage& p = *l_ouvrier().partage;
    std::unique_lock garde(p.verrou);
    p.change.wait_until(garde, jusqua, [&] { return p.libre; });
}

/// Begins a held work whose time has come by `maintenant`, and notes the end of one that runs.
void constate(EnCours& e, std::int64_t maintenant) {
    if (e.etat == EnCours::Etat::retenue && e.debut <= std::min(maintenant, e.repondue ? jamais : e.limite)) demarre(e);
    if (e.etat != EnCours::Etat::court) return;
    Partage& p = *l_ouvrier().partage;
    const std::lock_guard garde(p.verrou);
    if (p.libre) e.etat = EnCours::Etat::finie;
}

bool hors_delai(const EnCours& e, std::int64_t maintenant) {
    if (e.repondue) return false;
    return e.etat == EnCours::Etat::retenue ? e.limite <= maintenant : e.echeance <= steady_clock::now();
}

/// Answers what is to be answered by `maintenant`. The operation is set aside first: its answer may start another.
void repond(std::int64_t maintenant) {
    if (!en_cours) return;
    constate(*en_cours, maintenant);
    if (en_cours->etat == EnCours::Etat::finie) {
        const EnCours finie = std::move(*en_cours);
        en_cours.reset();
        if (!finie.repondue && finie.operation.suite) finie.operation.suite(Reponse::faite);
        if (finie.repondue && finie.operation.tardive) finie.operation.tardive();
    } else if (hors_delai(*en_cours, maintenant)) {
        en_cours->repondue = true;
        const auto suite = std::exchange(en_cours->operation.suite, {});
        if (suite) suite(Reponse::hors_delai);
    }
}

bool court() {
    return en_cours && en_cours->etat == EnCours::Etat::court;
}

}  // namespace

bool lance(Operation operation) {
    if (occupe()) return false;
    EnCours e;
    e.limite = horloge::millisecondes() + operation.limite_ms;
    e.operation = std::move(operation);
    retient(e);
    en_cours = std::move(e);
    return true;
}

void presse(int ms) {
    if (!en_cours) return;
    en_cours->limite = std::min(en_cours->limite, horloge::millisecondes() + ms);
    en_cours->echeance = std::min(en_cours->echeance, steady_clock::now() + milliseconds(ms));
}

bool occupe() {
    if (en_cours && en_cours->repondue) repond(horloge::millisecondes());  // it may have ended meanwhile
    return en_cours.has_value();
}

bool attends(int ms) {
    if (!en_cours) return true;
    // The wait takes no virtual time, yet brings what would have come within it.
    const auto horizon = horloge::millisecondes() + (horloge::est_virtuelle() ? ms : 0);
    constate(*en_cours, horizon);
    if (court()) {
        const auto borne = steady_clock::now() + milliseconds(ms);
        const auto limite = en_cours->repondue ? borne : en_cours->echeance;
        patiente(simulation.attend_toujours ? limite : std::min(borne, limite));
    }
    repond(horizon);
    return !occupe();
}

void traite_reponses() {
    repond(horloge::millisecondes());
}

std::int64_t prochaine_echeance() {
    if (!en_cours) return -1;
    const EnCours& e = *en_cours;
    const auto maintenant = horloge::millisecondes();
    switch (e.etat) {
        case EnCours::Etat::finie:
            return maintenant;
        case EnCours::Etat::retenue: {
            const auto t = e.repondue ? e.debut : std::min(e.debut, e.limite);
            return t == jamais ? -1 : t;
        }
        case EnCours::Etat::court:
            break;
    }
    if (e.repondue || horloge::est_virtuelle()) return -1;
    const auto reste = std::chrono::ceil<milliseconds>(e.echeance - steady_clock::now());
    return maintenant + std::max<std::int64_t>(0, reste.count());
}

void previens_par(std::function<void()> reveil) {
    Partage& p = *l_ouvrier().partage;
    const std::lock_guard garde(p.verrou_reveil);
    p.reveil = std::move(reveil);
}

void simule(Reseau etat, int ms) {
    simulation.etat = etat;
    simulation.ms = ms;
    if (en_cours && en_cours->etat == EnCours::Etat::retenue) retient(*en_cours);
}

void attend_toujours(bool oui) {
    simulation.attend_toujours = oui;
}

void termine_en_rejeu() {
    traite_reponses();
    while (en_cours && en_cours->etat != EnCours::Etat::retenue && en_cours->patience) {
        EnCours& e = *en_cours;
        if (court()) patiente(e.echeance);
        constate(e, horloge::millisecondes());
        e.patience = e.etat == EnCours::Etat::finie;  // what hangs past its limit is not awaited again
        traite_reponses();
    }
}

void abandonne() {
    en_cours.reset();
    ouvrier.reset();
}

}  // namespace ouvrier
