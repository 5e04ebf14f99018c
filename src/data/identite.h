// What names this tablet to the order router.
#pragma once

#include <string>

namespace identite {

/// Ten characters of A-Z and 0-9, the same at every start: derived from the machine's own identifier, or made once and
/// kept in the working directory where there is none.
const std::string& code();

}  // namespace identite
