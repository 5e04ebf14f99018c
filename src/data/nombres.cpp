#include "data/nombres.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace nombres {
namespace {

bool est_chiffre(char c) {
    return c >= '0' && c <= '9';
}

/// Adds one unit to the last digit of a text of digits and perhaps a ".".
void augmente(std::string& t) {
    for (auto i = t.rbegin(); i != t.rend(); ++i) {
        if (*i == '.') continue;
        if (*i != '9') {
            ++*i;
            return;
        }
        *i = '0';
    }
    t.insert(0, 1, '1');
}

/// The decimal digits of a value without sign, as short as tells it from its neighbours.
template <typename Reel>
std::string decimal(Reel v) {
    char tampon[400];
    const auto r = std::to_chars(tampon, tampon + sizeof tampon, v, std::chars_format::fixed);
    return r.ec == std::errc() ? std::string(tampon, r.ptr) : "0";
}

/// What counts when a value is rounded: of a double no more digits than it surely has, so that 0.35 times 1.5 is 0.525.
std::string decimal_sur(float v) {
    return decimal(v);
}
std::string decimal_sur(double v) {
    constexpr int surs = std::numeric_limits<double>::digits10;
    std::string t = decimal(v);
    if (t.size() <= static_cast<std::size_t>(surs)) return t;
    char tampon[400];
    const int decimales = std::max(3, surs - (v < 1 ? 0 : static_cast<int>(std::log10(v)) + 1));
    const auto r = std::to_chars(tampon, tampon + sizeof tampon, v, std::chars_format::fixed, decimales);
    return r.ec == std::errc() ? std::string(tampon, r.ptr) : t;
}

/// Rounds half away from zero to a number of decimals; at least `entiers` digits before the point.
template <typename Reel>
std::string arrondi(Reel v, int entiers, int decimales) {
    if (!std::isfinite(v)) v = 0;
    std::string t = decimal_sur(std::fabs(v));
    if (t.find('.') == std::string::npos) t += '.';
    const auto point = t.find('.');
    const std::size_t garde = point + 1 + static_cast<std::size_t>(decimales);
    const bool vers_le_haut = garde < t.size() && t[garde] >= '5';
    t.resize(garde, '0');
    if (decimales == 0) t.pop_back();
    if (vers_le_haut) augmente(t);
    const std::size_t chiffres = std::min(t.find('.'), t.size());
    if (chiffres < static_cast<std::size_t>(entiers)) t.insert(0, static_cast<std::size_t>(entiers) - chiffres, '0');
    const bool nul = t.find_first_not_of("0.") == std::string::npos;
    return v < 0 && !nul ? "-" + t : t;
}

}  // namespace

double lis(std::string_view t) {
    std::size_t i = std::min(t.find_first_not_of(' '), t.size());
    std::string nombre;
    if (i < t.size() && (t[i] == '-' || t[i] == '+')) {
        if (t[i] == '-') nombre += '-';
        ++i;
    }
    const auto chiffres = [&] {
        for (; i < t.size() && est_chiffre(t[i]); ++i) nombre += t[i];
    };
    chiffres();
    if (i < t.size() && t[i] == '.') {
        nombre += '.';
        ++i;
        chiffres();
    }
    double v = 0;
    std::from_chars(nombre.data(), nombre.data() + nombre.size(), v);
    return std::isfinite(v) ? v : 0;
}

double entier(std::string_view t) {
    return std::trunc(lis(t));
}

int entier_int(std::string_view t) {
    constexpr double bas = std::numeric_limits<int>::min(), haut = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(entier(t), bas, haut));
}

std::string montant(double v) {
    return arrondi(v, 1, 2);
}
std::string montant_simple(float v) {
    return arrondi(v, 1, 2);
}
std::string entier_complete(double v, int chiffres) {
    return arrondi(v, chiffres, 0);
}
std::string quantite(double v) {
    return arrondi(v, 3, 2);
}

std::string general(double v) {
    if (!std::isfinite(v)) return "0";
    const std::string t = decimal(std::fabs(v));
    return v < 0 ? "-" + t : t;
}

}  // namespace nombres
