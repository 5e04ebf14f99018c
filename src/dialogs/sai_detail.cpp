#include "dialogs/sai_detail.h"

#include "dialogs/formes.h"

namespace sai_detail {

void montre_sai_detail() {
    formes::annonce_absent();
}

}  // namespace sai_detail
