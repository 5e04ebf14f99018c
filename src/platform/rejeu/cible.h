// What a scenario names: a control or a cell of a loaded form, how it reads, and where a finger would touch it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/controles/controles.h"
#include "platform/rejeu/scenario.h"

namespace rejeu {

/// A control, or one of its cells.
struct Cible {
    ecran::Forme* forme = nullptr;
    ecran::Controle* controle = nullptr;
    int ligne = -1, colonne = -1;

    bool est_cellule() const { return ligne >= 0; }
    const ecran::Aspect& aspect() const;
    /// Number of the picture shown, 0: none; the mark of a chosen key is one.
    int image() const;
    /// Font size as set, in points.
    int police() const;
    /// Ground as shown, 0xRRGGBB.
    ecran::Couleur fond() const;
};

/// Finds the control NAME, and the cell when row and column are given. On failure `faute` tells why, in French.
std::optional<Cible> cherche(const Nom& nom, std::optional<int> ligne, std::optional<int> colonne, std::string& faute);

/// The first visible key, button or cell of the top form, in reading order, with exactly this trimmed caption.
std::optional<Cible> cherche_texte(std::string_view texte);

/// A text as scenarios read it: a line break is one blank.
std::string texte_lu(std::string_view texte);

/// Brings a cell into view as a finger would, and gives the point to touch in twips of the form.
/// False when it cannot be touched: `faute` tells why, in French.
bool point_a_toucher(const Cible& cible, int& x, int& y, std::string& faute);

}  // namespace rejeu
