// The editor of the key program. Not part of this version yet.
#pragma once

namespace w_prog {

void montre_w_prog();

}  // namespace w_prog
