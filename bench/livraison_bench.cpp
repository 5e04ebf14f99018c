// What it costs to deliver waiting orders, each, for as many as wait; and what the interface itself does of it. With
// TMPDIR in memory a flush costs nothing, and the work alone is seen.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <semaphore>
#include <string>
#include <string_view>

#include "data/etat.h"
#include "data/reseau.h"
#include "data/suivi.h"
#include "platform/systeme/ouvrier.h"
#include "repertoire.h"

namespace {

namespace fs = std::filesystem;
using Horloge = std::chrono::steady_clock;

double millisecondes(Horloge::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

/// A tablet that has found its network and has nothing to do.
void demarre() {
    for (const auto& e : fs::directory_iterator(".")) fs::remove_all(e.path());
    fs::create_directory("reseau");
    std::ofstream("reseau/worvalune.wdo", std::ios::binary) << "#ARTI#\r\n";
    etat::repertoire_reseau = etat::repertoire_test = "reseau";
    etat::hors_ligne = false;
    suivi::charge();
    reseau::commence_la_connexion();
    reseau::attend_la_connexion();
    while (!ouvrier::attends(1000)) continue;
}

void ecrit_commandes(long nombre) {
    const std::string texte = "#ID#BANCBANC01\r\n" + std::string(400, ' ') + "\r\n";
    for (long n = 0; n < nombre; ++n) {
        char nom[64];
        std::snprintf(nom, sizeof nom, "2021-05-19-%02ld-%02ld-%02ld_01_%03ld_004_.-A-", n / 3600, n / 60 % 60, n % 60,
                      n % 1000);
        std::ofstream(nom, std::ios::binary) << texte;
    }
    suivi::charge();
}

/// What the interface does for one pass, until nothing is under way; the longest of its turns, in milliseconds.
double sert_une_passe() {
    std::counting_semaphore<> fini(0);
    ouvrier::previens_par([&fini] { fini.release(); });
    double pire = 0;
    auto debut = Horloge::now();
    reseau::passe();
    while (true) {
        pire = std::max(pire, millisecondes(Horloge::now() - debut));
        if (!ouvrier::occupe()) break;
        fini.acquire();
        debut = Horloge::now();
        ouvrier::traite_reponses();
    }
    ouvrier::previens_par({});
    return pire;
}

/// The network directory as the router leaves it.
void collecte() {
    for (const auto& e : fs::directory_iterator("reseau")) {
        if (e.path().extension() == ".txt") fs::remove(e.path());
    }
}

long fichiers_qui_finissent_par(std::string_view fin) {
    return std::count_if(fs::directory_iterator("."), {},
                         [fin](const auto& e) { return e.path().string().ends_with(fin); });
}

/// All leave in one pass; or all have been collected, and one look finds it out.
enum class Moment { livraison, collecte };

void commandes(benchmark::State& mesure, Moment moment) {
    const Repertoire repertoire("orvalune_banc_livraison");
    double pire = 0;
    for (auto _ : mesure) {
        mesure.PauseTiming();
        demarre();
        ecrit_commandes(mesure.range(0));
        if (moment == Moment::collecte) {
            sert_une_passe();
            collecte();
        }
        mesure.ResumeTiming();
        pire = std::max(pire, sert_une_passe());
        mesure.PauseTiming();
        const bool bien = fichiers_qui_finissent_par("-A-") == 0 &&
                          fichiers_qui_finissent_par("-T-") == (moment == Moment::collecte ? 0 : mesure.range(0));
        if (!bien) mesure.SkipWithError("orders were left behind");
        mesure.ResumeTiming();
    }
    mesure.counters["tour_le_plus_long_ms"] = pire;
    mesure.counters["par_commande"] =
        benchmark::Counter(static_cast<double>(mesure.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(commandes, livrees, Moment::livraison)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(commandes, collectees, Moment::collecte)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
