// The event loop with a finger that gets lost and a system that stops.
#include "platform/ecran/boucle.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/ecran/fenetre.h"

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

struct Boucle : testing::Test {
    Forme forme;
    int touches = 0, extinctions = 0;
    std::vector<int> glisses;

    Boucle() {
        forme.nom = "essai";
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
