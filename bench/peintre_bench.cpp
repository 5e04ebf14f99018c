// How long the painter takes for a page of keys, beside one copy of the image in memory.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "platform/peinture/peintre.h"
#include "platform/peinture/polices.h"

namespace {

using namespace ecran;

/// A page of 48 keys with pictures and captions, over the whole image.
void construit_page(Forme& f, int largeur, int hauteur) {
    f.nom = "page";
    f.cadre = {0, 0, largeur * 15, hauteur * 15};
    for (int i = 0; i < 48; ++i) {
        const int l = f.cadre.largeur / 8, h = f.cadre.hauteur / 6;
        const Cadre cadre = {i % 8 * l + 75, i / 8 * h + 75, l - 150, h - 150};
        Controle& c = f.ajoute({.nom = "btx",
                                .index = i,
                                .genre = Genre::bouton,
                                .cadre = cadre,
                                .role = Role::touche,
                                .police = 14,
                                .gras = true});
        c.aspect.texte = "Plat " + std::to_string(i);
        c.aspect.fond = palette::chiffres[i % 10];
        c.aspect.image = 11 + i % 30;
        c.aspect.accord = true;
    }
}

void tailles(benchmark::internal::Benchmark* b) {
    b->Args({1280, 770})->Args({1920, 1200})->Args({2560, 1600})->Unit(benchmark::kMicrosecond);
}

void page_entiere(benchmark::State& etat) {
    const int largeur = static_cast<int>(etat.range(0)), hauteur = static_cast<int>(etat.range(1));
    Forme f;
    construit_page(f, largeur, hauteur);
    Peintre p;
    p.dimensionne(largeur, hauteur, 1);
    Forme* pile[] = {&f};
    for (auto _ : etat) {
        p.oublie();
        benchmark::DoNotOptimize(p.peint(pile, {}).size());
    }
}
BENCHMARK(page_entiere)->Apply(tailles);

void une_touche(benchmark::State& etat) {
    const int largeur = static_cast<int>(etat.range(0)), hauteur = static_cast<int>(etat.range(1));
    Forme f;
    construit_page(f, largeur, hauteur);
    Peintre p;
    p.dimensionne(largeur, hauteur, 1);
    Forme* pile[] = {&f};
    p.peint(pile, {});
    bool appuyee = false;
    for (auto _ : etat) {
        appuyee = !appuyee;
        const Appui appui = appuyee ? Appui{&f, {f.cherche("btx", 20), -1, -1}} : Appui{};
        benchmark::DoNotOptimize(p.peint(pile, appui).size());
    }
}
BENCHMARK(une_touche)->Apply(tailles);

/// A turn of the loop in which nothing has changed.
void rien_de_neuf(benchmark::State& etat) {
    Forme f;
    construit_page(f, 1280, 770);
    Peintre p;
    p.dimensionne(1280, 770, 1);
    Forme* pile[] = {&f};
    p.peint(pile, {});
    for (auto _ : etat) benchmark::DoNotOptimize(p.peint(pile, {}).size());
}
BENCHMARK(rien_de_neuf)->Unit(benchmark::kMicrosecond);

/// A caption that has to be broken and shrunk; a new one each time, so that none is known.
void mise_en_lignes(benchmark::State& etat) {
    int n = 0;
    for (auto _ : etat) {
        const std::string t = "Salade de chèvre chaud aux noix et au miel " + std::to_string(++n);
        benchmark::DoNotOptimize(met_en_lignes(Police::grasse, 28, t, {150, 100}).taille);
    }
}
BENCHMARK(mise_en_lignes)->Unit(benchmark::kMicrosecond);

void mise_en_lignes_connue(benchmark::State& etat) {
    for (auto _ : etat) {
        benchmark::DoNotOptimize(met_en_lignes(Police::grasse, 28, "Magret de canard", {150, 100}).taille);
    }
}
BENCHMARK(mise_en_lignes_connue)->Unit(benchmark::kMicrosecond);

void copie_de_l_image(benchmark::State& etat) {
    const auto n = static_cast<std::size_t>(etat.range(0) * etat.range(1));
    std::vector<std::uint32_t> a(n, 1), b(n, 2);
    for (auto _ : etat) {
        std::memcpy(b.data(), a.data(), n * sizeof(std::uint32_t));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copie_de_l_image)->Apply(tailles);

}  // namespace
