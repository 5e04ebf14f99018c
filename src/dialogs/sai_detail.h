// Cooking, sauces, side dishes: the details of the style file as keys, two categories at a time. A touched one goes to
// the remarks of the line in hand, or is taken back.
#pragma once

namespace sai_detail {

/// Shows the categories from etat::debut_detail on.
void montre_sai_detail();

}  // namespace sai_detail
