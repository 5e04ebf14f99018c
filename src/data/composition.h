// The composition of a fixed-price menu: courses with the dishes to choose from. Written as six times a name, "µ" and
// sixteen choices, each a reference, "|", a label and "¦"; empty choices keep their place.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace composition {

inline constexpr std::size_t choix_par_service = 16;

struct Service {
    std::string nom;
    std::vector<std::string> choix;  ///< labels in their places, choix_par_service at most
};

/// The courses that have a dish, of a text as it stands between "{{" and "}}". Whatever separators are missing or too
/// many, each course is found by its "µ"; what cannot be a choice is left out, and a 17th choice begins another course
/// of the same name.
std::vector<Service> services(std::string_view composition);

}  // namespace composition
