// Numbers as texts: one lenient reader, one formatter. "." is the decimal separator, whatever the system says.
#pragma once

#include <string>
#include <string_view>

namespace nombres {

/// The number at the beginning of a text: blanks, a sign, digits, "." and digits. What follows is left alone; a text
/// that begins with no number reads as 0.
double lis(std::string_view t);
/// As above, without what stands behind the ".".
double entier(std::string_view t);
/// As above as an int, kept within the type's bounds.
int entier_int(std::string_view t);

/// "0.00": two decimals, half away from zero on the decimal value (0.125 gives 0.13, 1.005 gives 1.01).
std::string montant(double v);
/// As above for a value held in single precision.
std::string montant_simple(float v);
/// Whole number of at least `chiffres` digits, filled with zeros.
std::string entier_complete(double v, int chiffres);
/// "000.00": at least three digits before the point.
std::string quantite(double v);
/// As short as the value allows: 3, 1.5.
std::string general(double v);

}  // namespace nombres
