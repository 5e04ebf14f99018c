// The event loop with a finger that gets lost and a system that stops.
#include "platform/ecran/boucle.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory_resource>
#include <vector>

#include "platform/ecran/fenetre.h"
#include "platform/systeme/horloge.h"

namespace {

using namespace ecran;
using Sorte = Evenement::Sorte;

constexpr int px(int pixels) {
    return pixels * twips_par_pixel;
}

/// Gives a list of events, then closes the form.
struct Suite final : Pilote {
    std::vector<Evenement> suite;
    Forme& forme;
    std::size_t rang = 0;
    Suite(std::vector<Evenement> e, Forme& f) : suite(std::move(e)), forme(f) {}
    Evenement prochain() override {
        if (rang < suite.size()) return suite[rang++];
        forme.ferme();
        return {};
    }
};

/// A real window of virtual time: each event comes so many milliseconds after the one before.
struct Vitre final : Fenetre {
    std::vector<std::pair<int, Evenement>> suite;
    explicit Vitre(std::vector<std::pair<int, Evenement>> s) : suite(std::move(s)) {}
    TailleEcran taille() const override { return {400, 300, 1}; }
    bool se_voit() const override { return false; }
    Evenement attend(int) override {
        if (suite.empty()) termine();
        const auto [ms, evenement] = suite.front();
        suite.erase(suite.begin());
        horloge::avance(ms);
        return evenement;
    }
    void montre(const Image&, std::span<const Zone>) override {}
    void reveille() override {}
    void vient_devant() override {}
};

/// A window that is looked at. Each time it waits it notes how many pictures have memory by then.
struct Vue final : Fenetre {
    struct Compte final : std::pmr::memory_resource {
        int images = 0;
        void* do_allocate(std::size_t taille, std::size_t a) override {
            ++images;
            return std::pmr::new_delete_resource()->allocate(taille, a);
        }
        void do_deallocate(void* p, std::size_t taille, std::size_t a) override {
            std::pmr::new_delete_resource()->deallocate(p, taille, a);
        }
        bool do_is_equal(const memory_resource& autre) const noexcept override { return this == &autre; }
    };
    Compte compte;
    std::vector<Evenement> suite;  ///< each comes as late as the loop waits for it
    std::vector<int>& images;
    Vue(std::vector<Evenement> s, std::vector<int>& i) : suite(std::move(s)), images(i) {}
    TailleEcran taille() const override { return {400, 300, 1}; }
    bool se_voit() const override { return true; }
    std::pmr::memory_resource* memoire() override { return &compte; }
    Evenement attend(int ms) override {
        images.push_back(compte.images);
        if (ms > 0) return horloge::avance(ms), Evenement{};
        if (suite.empty()) termine();
        const Evenement e = suite.front();
        suite.erase(suite.begin());
        return e;
    }
    void montre(const Image&, std::span<const Zone>) override {}
    void reveille() override {}
    void vient_devant() override {}
};

struct Boucle : testing::Test {
    Forme forme;
    int touches = 0, extinctions = 0;
    std::vector<int> glisses;

    Boucle() {
        forme.nom = "essai";
        forme.tourne_des_pages = true;
        forme.cadre = {0, 0, px(400), px(300)};
        Controle& touche = forme.ajoute({.nom = "Command1",
                                         .genre = Genre::bouton,
                                         .cadre = {0, 0, px(100), px(100)},
                                         .texte = "Touche",
                                         .role = Role::action});
        touche.au_toucher = [this] { ++touches; };
        Controle& reglette = forme.ajoute(
            {.nom = "Shape1", .genre = Genre::forme, .cadre = {px(200), 0, px(100), px(100)}, .role = Role::carte});
        reglette.au_glisse = [this](int x, int) { glisses.push_back(x / twips_par_pixel); };
    }
    void joue(std::vector<Evenement> suite) {
        Suite pilote(std::move(suite), forme);
        ouvre_ecran(cree_fenetre_muette(400, 300), &pilote);
        a_l_extinction([this] { ++extinctions; });
        montre_modal(forme);
        ferme_ecran();
    }
};

TEST_F(Boucle, UnDoigtPerduNeToucheRien) {
    joue({{Sorte::appui, 50, 50},
          {Sorte::perdu},
          {Sorte::relache, 50, 50},
          {Sorte::appui, 220, 50},
          {Sorte::glisse, 230, 50},
          {Sorte::perdu},
          {Sorte::glisse, 260, 50},
          {Sorte::appui, 50, 50},
          {Sorte::relache, 60, 60}});
    EXPECT_EQ(touches, 1) << "the last one, which was lifted";
    EXPECT_EQ(glisses, (std::vector<int>{20, 30}));
}

/// The key opens a dialog, and a key below it closes that: a finger that bounces does neither again, one that comes
/// later or elsewhere does, nor does it touch what another page brings. A key that leaves all as it is can be touched
/// as fast as one likes.
TEST_F(Boucle, UnDoigtQuiRebonditNeTouchePasDeuxFois) {
    Forme dialogue;
    dialogue.cadre = forme.cadre;
    Controle& ferme = dialogue.ajoute({.nom = "btc", .genre = Genre::bouton, .cadre = {0, 0, px(400), px(300)}});
    ferme.au_toucher = [&] { dialogue.ferme(); };
    int ouvertures = 0;
    enum { rien, ouvre, tourne };
    const auto ouvertures_de = [&](int acte, const std::vector<std::array<int, 2>>& touches) {
        std::vector<std::pair<int, Evenement>> suite;
        for (const auto& [ms, x] : touches) {
            suite.push_back({ms, {Sorte::appui, x, 50}});
            suite.push_back({0, {Sorte::relache, x, 50}});
        }
        forme("Command1").au_toucher = [&] {
            ++ouvertures;
            dialogue.fermee = acte != ouvre;
            if (acte == ouvre) montre_modal(dialogue);
            if (acte == tourne) forme("Command1").texte() += "+";
        };
        ouvertures = 0;
        horloge::rend_virtuelle({});
        ouvre_ecran(std::make_unique<Vitre>(suite), nullptr);
        EXPECT_THROW(montre_modal(forme), FinDuProgramme);
        ferme_ecran();
        horloge::rend_reelle();
        return ouvertures;
    };
    EXPECT_EQ(ouvertures_de(ouvre, {{0, 50}, {199, 50}, {1, 50}, {199, 60}, {1, 50}}), 2);
    EXPECT_EQ(ouvertures_de(ouvre, {{0, 30}, {199, 83}, {0, 84}, {199, 31}, {0, 30}}), 2) << "9 mm are 53 pixels";
    EXPECT_EQ(ouvertures_de(ouvre, {{0, 50}, {250, 50}, {1, 250}, {1, 50}}), 2) << "it was elsewhere in between";
    EXPECT_EQ(ouvertures_de(rien, {{0, 50}, {10, 50}, {10, 50}}), 3);
    EXPECT_EQ(ouvertures_de(tourne, {{0, 50}, {10, 50}, {189, 50}, {1, 50}}), 2);
    forme.tourne_des_pages = false;
    EXPECT_EQ(ouvertures_de(tourne, {{0, 50}, {10, 50}, {10, 50}}), 3) << "a keyboard's letters are typed fast";
}

/// A page that a touch turns over: its picture has its memory before the finger is lifted, and none before a finger
/// comes.
TEST_F(Boucle, LeDoigtPoseFaitLaPlaceDeLImageSuivante) {
    Controle& page = forme.ajoute({.nom = "page", .genre = Genre::bouton, .cadre = forme.cadre, .role = Role::action});
    page.au_toucher = [&] { page.aspect.texte += "Une autre page "; };
    forme.tourne_des_pages = false;  // a second touch right after the first counts
    horloge::rend_virtuelle({});
    std::vector<int> images;
    ouvre_ecran(std::make_unique<Vue>(std::vector<Evenement>{{Sorte::appui, 50, 50},
                                                             {Sorte::relache, 50, 50},
                                                             {Sorte::appui, 50, 50},
                                                             {Sorte::relache, 50, 50},
                                                             {Sorte::appui, 50, 50}},
                                      images),
                nullptr);
    EXPECT_THROW(montre_modal(forme), FinDuProgramme);
    ferme_ecran();
    EXPECT_EQ(page.aspect.texte, "Une autre page Une autre page ");
    horloge::rend_reelle();
    EXPECT_EQ(images, (std::vector<int>{1, 1, 2, 2, 2, 3, 3, 3, 3}));
}

TEST_F(Boucle, LArretDuSystemeEstAnnonceUneFois) {
    joue({{Sorte::extinction}});
    EXPECT_EQ(extinctions, 1);
    forme.fermee = false;
    EXPECT_THROW(joue({{Sorte::fin}, {Sorte::appui, 50, 50}, {Sorte::relache, 50, 50}}), FinDuProgramme);
    ferme_ecran();
    EXPECT_EQ(extinctions, 2) << "what is in hand is kept before the end";
    EXPECT_EQ(touches, 0);
}

/// Rows were taken away while the list was scrolled to its end: the end fills the list, as far as there are rows.
TEST(Liste, UneListeRaccourcieMontreSaFin) {
    Grille g;
    g.dimensionne(13, 1);
    g.lignes_fixes = 1;
    g.defile = true;
    g.hauteur_ligne = px(54);
    g.hauteurs.assign(13, px(54));
    g.hauteurs[0] = px(40);
    const Cadre cadre = {0, 0, px(300), px(40) + 5 * px(54) + 6 * g.espace};
    g.defile_de(100, cadre);
    EXPECT_EQ(g.premiere_ligne, 8);
    EXPECT_EQ(g.lignes_visibles(cadre), 5);
    g.dimensionne(10, 1);
    g.hauteurs.resize(10);
    g.premiere_ligne = 8;
    g.defile_de(0, cadre);
    EXPECT_EQ(g.premiere_ligne, 5);
    g.dimensionne(3, 1);
    g.hauteurs.resize(3);
    g.defile_de(0, cadre);
    EXPECT_EQ(g.premiere_ligne, 1) << "all rows are in view";
}

}  // namespace
