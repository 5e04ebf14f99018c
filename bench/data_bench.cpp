// How long the catalogue of a large house takes to read, and a long note to become an order.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "data/catalogue.h"
#include "data/commande.h"
#include "data/etat.h"
#include "data/lignes.h"

namespace {

void lecture_du_catalogue(benchmark::State& mesure) {
    namespace fs = std::filesystem;
    const fs::path avant = fs::current_path(), ici = fs::temp_directory_path() / "orvalune_bancs";
    fs::create_directories(ici);
    fs::current_path(ici);
    std::ofstream f("worvalune.wdo", std::ios::binary);
    for (int i = 0; i < mesure.range(0); ++i) {
        f << "#ARTI#00000" << 8880000000000 + i << "  |DES:Article " << i << "|PVE:12.50|FA1:" << i % 120
          << "|FA2:0|COU:3\r\n";
    }
    f.close();
    for (auto _ : mesure) benchmark::DoNotOptimize(catalogue::lis());
    fs::current_path(avant);
    fs::remove_all(ici);
}
BENCHMARK(lecture_du_catalogue)->Arg(3000)->Arg(36000)->Unit(benchmark::kMillisecond);

void commande_de_mille_lignes(benchmark::State& mesure) {
    const std::string remarques[] = {"Saignant", "Sans sel", "Avec frites"};
    etat::nb_lignes_note = etat::lignes_note_max;
    etat::lignes_note.fill(lignes::validee("8880000000024  |DES:Article|PVE:12.50|FA1:2|FA2:0", 2, remarques));
    for (auto _ : mesure) benchmark::DoNotOptimize(commande::contenu());
    etat::nb_lignes_note = 0;
}
BENCHMARK(commande_de_mille_lignes)->Unit(benchmark::kMicrosecond);

}  // namespace
