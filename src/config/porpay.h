// The choice of the screen format: portrait, full screen, or a typed resolution.
#pragma once

namespace porpay {

/// Pixels of the screen's height that no form uses.
inline constexpr int reserve = 30;

/// Shows the choice; it closes only when one is made. Writes settings record 2, which the next start reads.
void montre_porpay();

}  // namespace porpay
