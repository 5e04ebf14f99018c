// The kitchen at work: looks for orders, prints each part on its printer, and puts away what is printed, until it is
// asked to end. Tickets in the form of text go to the standard output, what it has to say to the standard error.
#pragma once

#include <string>

#include "cuisine/imprimante.h"
#include "cuisine/partage.h"
#include "cuisine/ticket.h"

namespace service {

struct Reglages {
    std::string reseau;   ///< the network directory
    std::string archive;  ///< a folder, which is made when it is missing
    partage::Partage partage;
    ticket::Papier papier;
    bool avec_etat = true;
    imprimante::Patience patience;
    bool une_fois = false;  ///< ends once nothing is left to do, or a printer does not print
};

enum Statut { tout_imprime = 0, reste_a_imprimer = 1, impossible = 2 };

int sert(const Reglages& reglages);

}  // namespace service
