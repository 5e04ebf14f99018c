// What an order costs on its way to the disk, beside the bare write, flush and rename of as many bytes; and the start
// of the program on the demonstration restaurant.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "data/commande.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/fichiers_systeme.h"
#include "platform/systeme/horloge.h"
#include "repertoire.h"
#include "vue.h"

namespace {

void remplit_la_note(std::int64_t lignes) {
    const std::string remarques[] = {"Saignant", "Sans sel"};
    const std::string ligne = lignes::validee("8880000000024  |DES:Article|PVE:12.50|FA1:2|FA2:0", 2, remarques);
    for (int n = 1; n <= lignes; ++n) etat::lignes_note[static_cast<std::size_t>(n)] = ligne;
    etat::nb_lignes_note = static_cast<std::int16_t>(lignes);
    etat::table_couverts = "#N0124 ";
}

void commande_ecrite(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_ecriture");
    horloge::rend_virtuelle({});
    for (auto _ : mesure) {
        mesure.PauseTiming();
        remplit_la_note(mesure.range(0));
        horloge::avance(1000);
        mesure.ResumeTiming();
        if (commande::envoi_commande() != fichiers::Issue::fait) mesure.SkipWithError("the order was not written");
    }
    horloge::rend_reelle();
}
BENCHMARK(commande_ecrite)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Iterations(100)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

/// Create, write, flush, close, rename, flush of the directory, and nothing else.
void ecriture_nue(benchmark::State& mesure) {
    using fichiers::systeme::Fichier;
    const Repertoire repertoire("orvalune_banc_ecriture");
    remplit_la_note(mesure.range(0));
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
BENCHMARK(ecriture_nue)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Iterations(100)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

/// Starts a program, with no shell between, and waits for its end; true when it ended well.
bool lance(std::vector<std::string> mots) {
    std::vector<char*> pointeurs;
    for (std::string& m : mots) pointeurs.push_back(m.data());
    pointeurs.push_back(nullptr);
    pid_t pid = 0;
    int fin = 0;
    return posix_spawn(&pid, pointeurs[0], nullptr, nullptr, pointeurs.data(), environ) == 0 &&
           waitpid(pid, &fin, 0) == pid && fin == 0;
}

/// From the start of the process to its end behind the first page, with no window; the demonstration's catalogue, or
/// one of so many articles.
void depart(benchmark::State& mesure) {
    const Repertoire repertoire("orvalune_banc_ecriture");
    banc::copie_demonstration(static_cast<int>(mesure.range(0)));
    std::ofstream("scenario") << "fin\n";
    for (auto _ : mesure) {
        if (!lance({PROGRAMME, "--rejoue", "scenario"})) mesure.SkipWithError("the program failed");
    }
}
BENCHMARK(depart)->Arg(0)->Arg(4000)->Arg(40000)->Arg(400000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What the system takes to start a program that ends at once.
void programme_vide(benchmark::State& mesure) {
    for (auto _ : mesure) {
        if (!lance({PROGRAMME_VIDE})) mesure.SkipWithError("the empty program failed");
    }
}
BENCHMARK(programme_vide)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
