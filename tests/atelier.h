// A test of data/ in a working directory of its own, with the shared state as at a start.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "data/etat.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "terrain.h"

namespace tests {

class Atelier : public testing::Test {
  protected:
    Terrain terrain;

    Atelier() {
        std::filesystem::current_path(terrain.chemin());
        vide_etat();
    }
    ~Atelier() override {
        reglages::ferme();
        programme_touches::ferme();
        vide_etat();
        std::filesystem::current_path(avant_);
    }

    static void note(std::initializer_list<std::string> lignes) {
        etat::nb_lignes_note = static_cast<std::int16_t>(lignes.size());
        std::copy(lignes.begin(), lignes.end(), etat::lignes_note.begin() + 1);
    }

  private:
    std::filesystem::path avant_ = std::filesystem::current_path();

    static void vide_etat() {
        std::fill(etat::lignes_note.begin(), etat::lignes_note.end(), std::string());
        etat::nb_lignes_note = etat::numero_serveur = etat::numero_page = etat::page_programme = 0;
        etat::nom_serveur.clear();
        etat::texte_table.clear();
        etat::table_couverts.clear();
        etat::hors_ligne = false;
        etat::repertoire_reseau.clear();
        etat::repertoire_test.clear();
        etat::record_test = 1;
    }
};

}  // namespace tests
