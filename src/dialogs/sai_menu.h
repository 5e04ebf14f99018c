// The entry of a composed menu. Not part of this version yet.
#pragma once

namespace sai_menu {

void montre_sai_menu();

}  // namespace sai_menu
