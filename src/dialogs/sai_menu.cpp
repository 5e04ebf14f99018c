#include "dialogs/sai_menu.h"

#include "dialogs/formes.h"

namespace sai_menu {

void montre_sai_menu() {
    formes::annonce_absent();
}

}  // namespace sai_menu
