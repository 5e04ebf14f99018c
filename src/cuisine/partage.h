// Which printer has which families.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "cuisine/articles.h"
#include "cuisine/fiche.h"
#include "cuisine/imprimante.h"
#include "data/commande.h"

namespace partage {

struct Partage {
    std::vector<imprimante::Adresse> adresses = {{}};  ///< the first one has what no other has
    /// Printers by the family's number, -1: not named. Then a sub-group goes with the family that opens it, any other
    /// family to the first printer.
    std::array<int, catalogue::familles_max + 1> par_famille;

    Partage() { par_famille.fill(-1); }

    /// Where that address stands; it is added when it is new.
    int rang(const imprimante::Adresse& adresse);
};

/// "1-5,12=PRINTER". False, with the reason in French (page 1252), when it makes no sense.
bool lis(std::string_view t, Partage& partage, std::string& faute);

/// The parts of an order, in the order of the printers; only those that have a line. An order without lines, or a file
/// that is none, is one part of the first printer.
std::vector<fiche::Partie> parties(const commande::Commande& commande, const articles::Articles& catalogue,
                                   const Partage& partage);

}  // namespace partage
