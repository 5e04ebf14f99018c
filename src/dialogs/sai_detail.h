// Cooking, sauces and side dishes, from category etat::debut_detail on. Not part of this version yet.
#pragma once

namespace sai_detail {

void montre_sai_detail();

}  // namespace sai_detail
