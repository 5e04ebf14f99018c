#include "config/w_prog.h"

#include "dialogs/formes.h"

namespace w_prog {

void montre_w_prog() {
    formes::annonce_absent();
}

}  // namespace w_prog
