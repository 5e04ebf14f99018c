// The picture of a ticket, as it comes out of the printer: for the manual, and for a manager who sets his catalogue up.
#pragma once

#include <string>

#include "cuisine/service.h"
#include "cuisine/ticket.h"
#include "platform/peinture/toile.h"

namespace apercu {

/// The paper with the ticket on it.
ecran::Image image(const ticket::Ticket& ticket, int colonnes);

/// Draws the ticket that the first printer has of an order file, into a PNG file. The catalogue is that of the network
/// directory, or, when there is none, of the directory of the order. False, with the reason in `faute` (page 1252),
/// when one of the files does not allow it.
bool dessine(const std::string& fichier, const std::string& png, const service::Reglages& reglages, std::string& faute);

}  // namespace apercu
