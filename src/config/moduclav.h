// What every form uses: its banners, and the end of the program.
#pragma once

#include <string_view>

#include "platform/ecran/controles.h"
#include "platform/processus.h"

namespace moduclav {

/// Lays out `label_haut` and `label_bas` (made when the form lacks them) over the working width and sets their texts.
void bandeaux(ecran::Forme& forme, std::string_view haut, std::string_view bas);

/// Ends the program at once; files close on the way.
[[noreturn]] void quitte();
/// Closes the files, which the other may change, starts a program by its command line and ends this one. Returns, with
/// the files open again, when it cannot be started.
void passe_la_main(std::string_view commande, processus::Fenetre fenetre);

}  // namespace moduclav
