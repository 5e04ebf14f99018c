#include "platform/systeme/texte.h"

#include <algorithm>

namespace texte {
namespace {

void ajoute_utf8(std::string& sortie, char32_t p) {
    if (p < 0x80) {
        sortie += static_cast<char>(p);
    } else if (p < 0x800) {
        sortie += static_cast<char>(0xC0 | (p >> 6));
        sortie += static_cast<char>(0x80 | (p & 0x3F));
    } else {
        sortie += static_cast<char>(0xE0 | (p >> 12));
        sortie += static_cast<char>(0x80 | ((p >> 6) & 0x3F));
        sortie += static_cast<char>(0x80 | (p & 0x3F));
    }
}

/// One character of UTF-8 at `i`, which moves behind it; nothing when malformed (`i` then moves by one byte).
std::optional<char32_t> lis_utf8(std::string_view t, std::size_t& i) {
    const auto c = static_cast<unsigned char>(t[i]);
    if (c < 0x80) return ++i, c;
    const std::size_t suite = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : 0;
    if (suite == 0 || i + suite >= t.size() || c > 0xF4) return ++i, std::nullopt;
    char32_t p = c & (0x3F >> suite);
    for (std::size_t k = 1; k <= suite; ++k) {
        const auto s = static_cast<unsigned char>(t[i + k]);
        if ((s & 0xC0) != 0x80) return ++i, std::nullopt;
        p = (p << 6) | (s & 0x3F);
    }
    constexpr char32_t moindre[] = {0, 0x80, 0x800, 0x10000};
    i += suite + 1;
    if (p < moindre[suite]) return std::nullopt;
    return p;
}

/// The other case of a letter of the page, or the byte itself; `vers_le_haut` tells which way.
unsigned char change_casse(unsigned char c, bool vers_le_haut) {
    struct Paire {
        unsigned char bas, haut;
    };
    static constexpr Paire isolees[] = {{0x9A, 0x8A}, {0x9C, 0x8C}, {0x9E, 0x8E}, {0xFF, 0x9F}};
    for (const auto& p : isolees) {
        if (c == (vers_le_haut ? p.bas : p.haut)) return vers_le_haut ? p.haut : p.bas;
    }
    const unsigned char a = vers_le_haut ? 'a' : 'A';
    const unsigned char z = vers_le_haut ? 'z' : 'Z';
    const unsigned char premier = vers_le_haut ? 0xE0 : 0xC0;
    const unsigned char dernier = vers_le_haut ? 0xFE : 0xDE;
    const unsigned char signe = vers_le_haut ? 0xF7 : 0xD7;  // the signs ÷ and × stand among the letters
    const bool lettre = (c >= a && c <= z) || (c >= premier && c <= dernier && c != signe);
    return lettre ? static_cast<unsigned char>(c ^ 0x20) : c;
}

std::string change_casses(std::string_view t, bool vers_le_haut) {
    std::string r(t);
    for (char& c : r) c = static_cast<char>(change_casse(static_cast<unsigned char>(c), vers_le_haut));
    return r;
}

}  // namespace

char32_t point_de_code(unsigned char c) {
    if (c >= 0x80 && c < 0xA0 && detail::hauts[c - 0x80] != 0) return detail::hauts[c - 0x80];
    return c;
}

std::string vers_utf8(std::string_view t) {
    std::string r;
    r.reserve(t.size() + 8);
    for (char c : t) ajoute_utf8(r, point_de_code(static_cast<unsigned char>(c)));
    return r;
}

/// Nearly all names of files have nothing but plain characters: these are taken at one stroke.
std::optional<std::string> depuis_utf8(std::string_view utf8) {
    const auto simples = std::find_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) != 0; });
    std::string r(utf8.begin(), simples);
    for (std::size_t i = r.size(); i < utf8.size();) {
        const auto p = lis_utf8(utf8, i);
        const auto o = p ? octet(*p) : std::nullopt;
        if (!o) return std::nullopt;
        r += static_cast<char>(*o);
    }
    return r;
}

bool est_utf8(std::string_view t) {
    for (std::size_t i = 0; i < t.size();) {
        if (!lis_utf8(t, i)) return false;
    }
    return true;
}

std::string_view hors_page(std::string_view utf8) {
    for (std::size_t i = 0; i < utf8.size();) {
        const std::size_t debut = i;
        const auto p = lis_utf8(utf8, i);
        if (!p || !octet(*p)) return utf8.substr(debut, i - debut);
    }
    return {};
}

std::string depuis_utf8_tolerant(std::string_view utf8) {
    std::string r;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto p = lis_utf8(utf8, i);
        r += static_cast<char>((p ? octet(*p) : std::nullopt).value_or('?'));
    }
    return r;
}

std::u16string vers_utf16(std::string_view t) {
    std::u16string r;
    r.reserve(t.size());
    for (char c : t) r += static_cast<char16_t>(point_de_code(static_cast<unsigned char>(c)));
    return r;
}

std::string chemin_en_utf8(std::string_view chemin) {
    std::string t(chemin);
    std::replace(t.begin(), t.end(), '\\', '/');
    std::replace(t.begin(), t.end(), '\0', '?');
    return vers_utf8(t);
}

std::string_view rogne(std::string_view t) {
    const auto debut = t.find_first_not_of(' ');
    if (debut == std::string_view::npos) return {};
    return t.substr(debut, t.find_last_not_of(' ') - debut + 1);
}

std::string complete(std::string_view t, std::size_t longueur) {
    std::string r(t.substr(0, longueur));
    r.resize(longueur, ' ');
    return r;
}

std::string_view colonnes(std::string_view t, std::size_t debut, std::size_t longueur) {
    if (debut == 0 || debut > t.size()) return {};
    return t.substr(debut - 1, longueur);
}

std::string majuscules(std::string_view t) {
    return change_casses(t, true);
}
std::string minuscules(std::string_view t) {
    return change_casses(t, false);
}

std::string pour_chercher(std::string_view t) {
    // The letters from "à" on, as they stand in the page.
    constexpr std::string_view sans_accent = "aaaaaa ceeeeiiii nooooo ouuuuy y";
    constexpr std::pair<char, std::string_view> autres[] = {
        {'\x9C', "oe"}, {'\xE6', "ae"}, {'\xDF', "ss"}, {'\x9A', "s"}, {'\x9E', "z"}};
    std::string r;
    for (const char c : minuscules(t)) {
        const auto autre = std::find_if(std::begin(autres), std::end(autres), [c](auto& a) { return a.first == c; });
        const auto octet = static_cast<unsigned char>(c);
        if (autre != std::end(autres)) {
            r += autre->second;
        } else if (octet >= 0xE0) {
            r += sans_accent[octet - 0xE0U];
        } else {
            r += (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ? c : ' ';
        }
    }
    return r;
}

bool contient(std::string_view t, std::string_view cherche) {
    return t.find(cherche) != std::string_view::npos;
}

std::vector<std::string_view> lignes(std::string_view contenu) {
    std::vector<std::string_view> r;
    while (!contenu.empty()) {
        const auto fin = contenu.find('\n');
        auto ligne = contenu.substr(0, fin);
        if (ligne.ends_with('\r')) ligne.remove_suffix(1);
        r.push_back(ligne);
        contenu.remove_prefix(fin == std::string_view::npos ? contenu.size() : fin + 1);
    }
    return r;
}

}  // namespace texte
