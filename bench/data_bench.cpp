// How long the catalogue of a large house takes to read, and a long note to become an order.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

#include "data/catalogue.h"
#include "data/commande.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "platform/systeme/fichiers.h"
#include "repertoire.h"
#include "vue.h"

namespace {

constexpr const char* fichier = "worvalune.wdo";

void lecture_du_catalogue(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_catalogue");
    std::ofstream(fichier, std::ios::binary) << banc::catalogue_de(static_cast<int>(mesure.range(0)));
    for (auto _ : mesure) benchmark::DoNotOptimize(catalogue::lis());
}
BENCHMARK(lecture_du_catalogue)->Arg(4000)->Arg(40000)->Arg(400000)->Unit(benchmark::kMillisecond);

/// Its bytes, and nothing made of them.
void fichier_lu(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_catalogue");
    std::ofstream(fichier, std::ios::binary) << banc::catalogue_de(static_cast<int>(mesure.range(0)));
    for (auto _ : mesure) {
        std::string t;
        benchmark::DoNotOptimize(fichiers::lis_tout(fichier, t));
    }
}
BENCHMARK(fichier_lu)->Arg(4000)->Arg(40000)->Arg(400000)->Unit(benchmark::kMillisecond);

void commande_de_mille_lignes(benchmark::State& mesure) {
    const std::string remarques[] = {"Saignant", "Sans sel", "Avec frites"};
    etat::nb_lignes_note = etat::lignes_note_max;
    etat::lignes_note.fill(lignes::validee("8880000000024  |DES:Article|PVE:12.50|FA1:2|FA2:0", 2, remarques));
    for (auto _ : mesure) benchmark::DoNotOptimize(commande::contenu());
    etat::nb_lignes_note = 0;
}
BENCHMARK(commande_de_mille_lignes)->Unit(benchmark::kMicrosecond);

}  // namespace
