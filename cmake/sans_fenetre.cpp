// Linked where the build has no window of the system: the terminal then only replays scenarios.
#include "platform/ecran/fenetre.h"

namespace ecran {

std::unique_ptr<Fenetre> cree_fenetre(Mode, const std::string&, int, int, std::string&) {
    return nullptr;
}

}  // namespace ecran
