// What an order costs on its way to the disk, beside the bare write, flush and rename of as many bytes; and the start
// of the program on the demonstration restaurant.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "data/commande.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/fichiers_systeme.h"
#include "platform/systeme/horloge.h"
#include "repertoire.h"

namespace {

namespace fs = std::filesystem;

constexpr int lignes_de_la_note = 200;

void remplit_la_note() {
    const std::string remarques[] = {"Saignant", "Sans sel"};
    const std::string ligne = lignes::validee("8880000000024  |DES:Article|PVE:12.50|FA1:2|FA2:0", 2, remarques);
    for (int n = 1; n <= lignes_de_la_note; ++n) etat::lignes_note[static_cast<std::size_t>(n)] = ligne;
    etat::nb_lignes_note = lignes_de_la_note;
    etat::table_couverts = "#N0124 ";
}

void commande_ecrite(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_ecriture");
    horloge::rend_virtuelle({});
    for (auto _ : mesure) {
        mesure.PauseTiming();
        remplit_la_note();
        horloge::avance(1000);
        mesure.ResumeTiming();
        if (commande::envoi_commande() != fichiers::Issue::fait) mesure.SkipWithError("the order was not written");
    }
    horloge::rend_reelle();
}
BENCHMARK(commande_ecrite)->Iterations(300)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// Create, write, flush, close, rename, flush of the directory, and nothing else.
void ecriture_nue(benchmark::State& mesure) {
    using fichiers::systeme::Fichier;
    const Repertoire repertoire("orvalune_banc_ecriture");
    remplit_la_note();
    const std::string contenu = commande::contenu();
    int numero = 0;
    for (auto _ : mesure) {
        const std::string nom = std::to_string(++numero);
        auto issue = fichiers::Issue::fait;
        {
            const auto f = Fichier::ouvre(nom + ".n", Fichier::Ouverture::creation, issue);
            f->ecrit(0, contenu);
            f->vide_tampon();
            f->ferme();
        }
        fichiers::systeme::renomme_sans_remplacer(nom + ".n", nom);
        fichiers::systeme::vide_tampon_repertoire(".");
    }
    etat::nb_lignes_note = 0;
}
BENCHMARK(ecriture_nue)->Iterations(300)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// From the start of the process to its end behind the first page, with no window.
void depart(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_ecriture");
    fs::copy(fs::path(SOURCES) / "demo", "demo", fs::copy_options::recursive);
    std::FILE* f = std::fopen("scenario", "w");
    std::fputs("fin\n", f);
    std::fclose(f);
    const std::string commande = "\"" PROGRAMME "\" --dossier demo --rejoue scenario";
    for (auto _ : mesure) {
        if (std::system(commande.c_str()) != 0) mesure.SkipWithError("the program failed");
    }
}
BENCHMARK(depart)->Unit(benchmark::kMillisecond)->UseRealTime();
/// What the shell itself takes to start a program.
void programme_vide(benchmark::State& mesure) {
    for (auto _ : mesure) benchmark::DoNotOptimize(std::system("true"));
}
BENCHMARK(programme_vide)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
