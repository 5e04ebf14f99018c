#include "config/ch_outils.h"

#include "dialogs/formes.h"

namespace ch_outils {

void montre_ch_outils() {
    formes::annonce_absent();
}

}  // namespace ch_outils
