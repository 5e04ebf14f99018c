// What the cells of a sheet mean: numbers, prices, colours, pictures, references. A cell that cannot be meant is a
// fault that tells what would be right; what a cell means can be written back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "carte/tableaux.h"

namespace cases {

/// The rows of a sheet, one after the other. Readings of the present row note their faults.
class Lecteur {
  public:
    Lecteur(const tableaux::Tableau& tableau, tableaux::Constats& constats);
    /// The next row that is not blank.
    bool suivante();
    /// Whether the present row had no fault so far.
    bool juste() const { return juste_; }
    std::size_t ligne() const { return rangee_; }

    /// Whether the cell says anything.
    bool dit(int colonne) const;
    /// The cell as it stands, UTF-8.
    std::string_view brut(int colonne) const;
    /// A text of the page 1252 without blanks around it; a line end within is a blank. `max`: characters at most.
    std::string texte(int colonne, std::size_t max = std::string::npos);
    /// As above; must say something.
    std::string nom(int colonne, std::size_t max = std::string::npos);
    /// A label that the lines of a note can hold.
    std::string libelle(int colonne);
    /// A whole number, which must be there unless a value stands for none.
    int entier(int colonne, int min, int max, std::optional<int> sans = {});
    double prix(int colonne, std::optional<double> sans = {});
    /// Thirteen digits.
    std::string reference(int colonne);
    /// The digit of a key's colour, 0: the plain key.
    int chiffre(int colonne);
    /// Any colour, red in the low byte; `sans` where the cell is blank.
    std::int32_t couleur(int colonne, std::int32_t sans);
    /// A picture's number, 0: none, by its number or its name; behind it perhaps the mark "N".
    int image(int colonne, bool& marque);

    /// "« … » MESSAGE": what is wrong with the cell, and what would be right.
    void faute(int colonne, std::string_view message);
    /// The message alone, for a cell that says nothing.
    void manque(int colonne, std::string_view message);
    /// A fault of the column `colonne` of another row.
    void faute_de(std::size_t ligne, int colonne, std::string_view message);
    void remarque(int colonne, std::string_view message);

  private:
    const tableaux::Tableau& tableau_;
    tableaux::Constats& constats_;
    std::size_t rangee_ = 1;
    bool juste_ = true;

    std::string situe(int colonne, std::string_view message) const;
};

bool est_reference(std::string_view texte);
/// Digits alone; nothing for any other text.
std::optional<int> nombre_entier(std::string_view texte);

/// As the sheets say it, page 1252.
std::string prix_ecrit(double prix);
std::string chiffre_ecrit(int chiffre);
std::string couleur_ecrite(std::int32_t bgr);
std::string image_ecrite(int image, bool marque);

}  // namespace cases
