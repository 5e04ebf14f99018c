// What a touch costs on the real screens: from the finger that comes down to the last picture painted, handlers and
// painter together.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "data/etat.h"
#include "data/lignes.h"
#include "platform/rejeu/cible.h"
#include "platform/rejeu/rejeu.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"
#include "repertoire.h"
#include "vue.h"

namespace {

using Horloge = std::chrono::steady_clock;
using ecran::Evenement;

/// One finger: a caption, or a control or cell as a scenario names it, and how far it drags what it holds (twips,
/// downwards).
struct Doigt {
    const char* nom;
    int ligne = -1, colonne = -1;
    int glisse = 0;
    bool passage = false;  ///< it only leads to the next one: what it takes does not count
};
using Doigts = std::vector<Doigt>;

/// How a screen is reached, and what is then done on it again and again.
struct Essai {
    int largeur = 1280, hauteur = 770;
    const char* chemin = "";           ///< a scenario, from the page of the servers
    std::function<void()> avant = {};  ///< once, before it
    Doigts doigts = {};                ///< they come back to where they began
    bool ensemble = false;             ///< one measure is all of them; otherwise it is the mean of those that count
};

/// Follows the road, then measures the fingers: only what the terminal does while one is on the screen counts.
class Mesure final : public ecran::Pilote {
  public:
    Mesure(benchmark::State& etat, const Essai& essai) : etat_(etat), essai_(essai), chemin_("chemin", ".") {}

    Evenement prochain() override {
        const auto maintenant = Horloge::now();
        ouvrier::termine_en_rejeu();
        if (!arrive_) {
            try {
                return chemin_.prochain();
            } catch (const ecran::FinDuProgramme&) {
                arrive_ = true;
                if (statut() != rejeu::tout_tient) throw;
            }
        }
        if (gestes_.empty()) return repos(maintenant);
        const Evenement e = gestes_.front();
        gestes_.erase(gestes_.begin());
        if (e.sorte == Evenement::Sorte::appui) debut_ = Horloge::now();
        return e;
    }
    int statut() const { return chemin_.statut(); }

  private:
    benchmark::State& etat_;
    const Essai& essai_;
    rejeu::Rejeu chemin_;
    bool arrive_ = false, mesure_ = false;
    std::size_t doigt_ = 0;
    std::vector<Evenement> gestes_;
    Horloge::time_point debut_;
    Horloge::duration duree_{};

    /// A finger has been lifted; the next one comes down when guards and timers have had their time.
    Evenement repos(Horloge::time_point maintenant) {
        if (mesure_) compte(maintenant - debut_);
        mesure_ = true;
        if (doigt_ == 0 && !etat_.KeepRunning()) throw ecran::FinDuProgramme{ecran::FinDuProgramme::Cause::coupure};
        horloge::avance(400);
        while (ecran::tire_minuterie(horloge::millisecondes())) continue;
        pose(essai_.doigts[doigt_]);
        doigt_ = (doigt_ + 1) % essai_.doigts.size();
        return {};
    }

    /// What the finger before the next one took.
    void compte(Horloge::duration d) {
        const Doigts& tous = essai_.doigts;
        if (!tous[(doigt_ + tous.size() - 1) % tous.size()].passage) duree_ += d;
        if (doigt_ != 0) return;
        const auto comptes = std::count_if(tous.begin(), tous.end(), [](const Doigt& e) { return !e.passage; });
        const double parts = essai_.ensemble ? 1 : static_cast<double>(comptes);
        etat_.SetIterationTime(std::chrono::duration<double>(duree_).count() / parts);
        duree_ = {};
    }

    void pose(const Doigt& d) {
        const auto numero = [](int n) { return n < 0 ? std::nullopt : std::optional(n); };
        std::string faute;
        auto cible = rejeu::cherche_texte(d.nom);
        if (!cible) cible = rejeu::cherche(*rejeu::lis_nom(d.nom), numero(d.ligne), numero(d.colonne), faute);
        int x = 0, y = 0;
        if (!cible || !rejeu::point_a_toucher(*cible, x, y, faute)) throw std::runtime_error(d.nom + (": " + faute));
        const auto pixels = [](int twips) {
            return static_cast<int>(twips * ecran::echelle_courante() / ecran::twips_par_pixel);
        };
        x = pixels(x + cible->forme->cadre.gauche);
        y = pixels(y + cible->forme->cadre.haut);
        gestes_ = {{Evenement::Sorte::appui, x, y}};
        if (d.glisse != 0) gestes_.push_back({Evenement::Sorte::glisse, x, y += pixels(d.glisse)});
        gestes_.push_back({Evenement::Sorte::relache, x, y});
    }
};

void joue(benchmark::State& etat, const Essai& essai) {
    const Repertoire repertoire("orvalune_banc_ecrans");
    banc::simule_le_monde();
    banc::pose_restaurant(1000);
    std::ofstream("chemin") << essai.chemin;
    if (essai.avant) essai.avant();
    Mesure mesure(etat, essai);
    banc::ouvre(essai.largeur, essai.hauteur, mesure);
    if (mesure.statut() != rejeu::tout_tient) etat.SkipWithError("the screen was not reached");
    banc::rend_le_monde();
}

void joue_a_la_taille(benchmark::State& etat, Essai essai) {
    essai.largeur = static_cast<int>(etat.range(0));
    essai.hauteur = static_cast<int>(etat.range(1));
    joue(etat, essai);
}

#define PAGE                                                                                                   \
    "touche \"Sophie\"\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 1\ntouche g2 0 5\ntouche g2 0 1\ntouche " \
    "\"Viandes\"\n"
constexpr const char* vers_une_page = PAGE "verifie btx(48) \"Article 47\"\n";
constexpr const char* vers_l_accueil = PAGE "touche g2 0 5\ntouche g2 0 5\nverifie g2 0 5 \"Quitter\"\n";
constexpr const char* vers_la_note = PAGE "touche g2 0 4\nverifie ecran eta_com\n";
constexpr const char* vers_le_clavier = PAGE "touche btx(1)\ntouche g1 4 0\nverifie ecran clavv\n";

void tailles(benchmark::internal::Benchmark* b) {
    b->Args({1280, 770})->Args({1920, 1200})->Args({2560, 1600})->UseManualTime()->Unit(benchmark::kMicrosecond);
}

/// From one page of 48 articles to the other and back: the one that was in view just before.
void page_tournee(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page, .doigts = {{"g2", 0, 1}, {"g2", 0, 0}}});
}
BENCHMARK(page_tournee)->Apply(tailles);

/// Two pages of articles and the home page in turn: the one that was in view two pages before.
void pages_en_ronde(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page, .doigts = {{"g2", 0, 1}, {"g2", 0, 5}, {"Viandes"}}});
}
BENCHMARK(pages_en_ronde)->Apply(tailles);

void remplit_la_note(std::size_t lignes) {
    for (std::size_t n = 1; n <= lignes; ++n) {
        etat::lignes_note[n] =
            lignes::validee("8880000000024  |DES:Article " + std::to_string(n) + "|PVE:12.50|FA1:2|FA2:0", 2, {});
    }
    etat::nb_lignes_note = static_cast<std::int16_t>(lignes);
}

/// The summary of ten lines, closed at once.
void dialogue(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page,
                            .avant = [] { remplit_la_note(10); },
                            .doigts = {{"g2", 0, 4}, {"g2", 0, 5}},
                            .ensemble = true});
}
BENCHMARK(dialogue)->Apply(tailles);

/// The note, of so many lines, one row down and one up again under the finger.
void recapitulatif(benchmark::State& etat) {
    const auto remplit = [&] { remplit_la_note(static_cast<std::size_t>(etat.range(0))); };
    constexpr int rang = 60 * ecran::twips_par_pixel;
    joue(etat, {.chemin = vers_la_note, .avant = remplit, .doigts = {{"g1", 6, 1, -rang}, {"g1", 3, 1, rang}}});
}
BENCHMARK(recapitulatif)->Arg(10)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The toolbox, closed at once; the page below is drawn anew.
void outils(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = "touche \"Sophie\"\n", .doigts = {{"logil"}, {"g2", 0, 5}}, .ensemble = true});
}
BENCHMARK(outils)->Apply(tailles);

/// A letter is typed, then taken back.
void une_lettre(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_le_clavier, .doigts = {{"ttoc(15)"}, {"ttoc(13)"}}});
}
BENCHMARK(une_lettre)->Apply(tailles);

Doigts passage(Doigts doigts) {
    for (Doigt& d : doigts) d.passage = true;
    return doigts;
}

Doigts a_la_suite(std::initializer_list<Doigts> parts) {
    Doigts doigts;
    for (const Doigts& p : parts) doigts.insert(doigts.end(), p.begin(), p.end());
    return doigts;
}

/// From the families to more pages than the painter keeps, and back: what it showed before is not kept any more.
const Doigts autres_pages = passage({{"Famille 3"},
                                     {"g2", 0, 1},
                                     {"g2", 0, 5},
                                     {"Famille 4"},
                                     {"g2", 0, 1},
                                     {"g2", 0, 5},
                                     {"Famille 5"},
                                     {"g2", 0, 1},
                                     {"g2", 0, 5}});

/// The same from a page of articles, and back to the first one.
const Doigts detour = a_la_suite({passage({{"g2", 0, 5}}), autres_pages, passage({{"Viandes"}})});

/// The same from the home page, and back to it.
const Doigts detour_de_l_accueil = a_la_suite({passage({{"g2", 0, 1}}), autres_pages, passage({{"g2", 0, 5}})});

/// From one page of articles to the next, which has to be painted.
void page_neuve(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page, .doigts = a_la_suite({{{"g2", 0, 1}}, detour})});
}
BENCHMARK(page_neuve)->Apply(tailles);

// What is opened for the first time, and closed at once.

/// The summary of ten lines.
void dialogue_neuf(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page,
                            .avant = [] { remplit_la_note(10); },
                            .doigts = a_la_suite({{{"g2", 0, 4}, {"g2", 0, 5}}, detour}),
                            .ensemble = true});
}
BENCHMARK(dialogue_neuf)->Apply(tailles);

/// The toolbox.
void outils_neufs(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_l_accueil,
                            .doigts = a_la_suite({{{"logil"}, {"g2", 0, 5}}, detour_de_l_accueil}),
                            .ensemble = true});
}
BENCHMARK(outils_neufs)->Apply(tailles);

/// The message box: a question and its keys.
void boite_neuve(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_l_accueil,
                            .doigts = a_la_suite({{{"Quitter"}, {"Non"}}, detour_de_l_accueil}),
                            .ensemble = true});
}
BENCHMARK(boite_neuve)->Apply(tailles);

/// The detail of an article, which is then dropped; the question before that does not count.
void article_neuf(benchmark::State& etat) {
    joue_a_la_taille(etat, {.chemin = vers_une_page,
                            .doigts = a_la_suite({{{"btx(1)"}}, passage({{"g2", 0, 0}}), {{"Oui"}}, detour}),
                            .ensemble = true});
}
BENCHMARK(article_neuf)->Apply(tailles);

/// The keyboard, over the detail of an article.
void clavier_neuf(benchmark::State& etat) {
    joue_a_la_taille(
        etat, {.chemin = vers_une_page,
               .doigts = a_la_suite(
                   {passage({{"btx(1)"}}), {{"g1", 4, 0}, {"ttoc(57)"}}, passage({{"g2", 0, 0}, {"Oui"}}), detour}),
               .ensemble = true});
}
BENCHMARK(clavier_neuf)->Apply(tailles);

}  // namespace
