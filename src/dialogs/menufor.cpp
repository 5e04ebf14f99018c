#include "dialogs/menufor.h"

#include "dialogs/formes.h"

namespace menufor {

void montre_menufor() {
    formes::annonce_absent();
}

}  // namespace menufor
