// A ticket in the commands that receipt printers understand.
#pragma once

#include <string>
#include <string_view>

#include "cuisine/ticket.h"

namespace escpos {

/// Everything from the printer's reset to the cut.
std::string octets(const ticket::Ticket& ticket, ticket::Page page);

/// What is asked of a printer, and answered with one byte; none of it prints.
inline constexpr std::string_view demande_liaison = "\x10\x04\x01",  ///< at once: whether it is on line
    demande_papier = "\x10\x04\x04",                                 ///< at once: its paper
    demande_apres = "\x1Dr\x01";  ///< its paper, once all that came before is printed

/// What an answer to one of these says.
enum class Reponse {
    aucune,  ///< it is no answer to that question
    prete,
    hors_ligne,
    sans_papier,
};
Reponse lis_reponse(std::string_view demande, unsigned char octet);

}  // namespace escpos
