// Text of the whole program: code page 1252, one byte a character, so that columns are bytes.
// UTF-8 and UTF-16 exist only at the edges (painter, file names, command line, scenario files).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace texte {

/// The code point of byte `c` of the code page 1252; its five unused bytes map to themselves.
char32_t point_de_code(unsigned char c);

/// The byte of the code page 1252 for a code point, or nothing when the page lacks it.
constexpr std::optional<unsigned char> octet(char32_t point);

/// A text of the page 1252 written as UTF-8.
std::string vers_utf8(std::string_view t);
/// A text of the page 1252 from UTF-8; nothing when it is malformed or has a character outside the page.
std::optional<std::string> depuis_utf8(std::string_view utf8);
/// As above; what the page lacks becomes "?".
std::string depuis_utf8_tolerant(std::string_view utf8);
bool est_utf8(std::string_view t);
/// The first character of a UTF-8 text that the page lacks, as UTF-8; empty where it has them all.
std::string_view hors_page(std::string_view utf8);
std::u16string vers_utf16(std::string_view t);

/// A path as systems without drives take it: UTF-8, with "/" alone as separator. A zero byte would cut it.
std::string chemin_en_utf8(std::string_view chemin);

/// Without the blanks (character 32 alone) at both ends.
std::string_view rogne(std::string_view t);
/// Exactly `longueur` characters: cut, or padded with blanks on the right.
std::string complete(std::string_view t, std::size_t longueur);
/// Characters `debut` (from 1) to `debut + longueur - 1`, as far as they exist. Never fails.
std::string_view colonnes(std::string_view t, std::size_t debut, std::size_t longueur = std::string_view::npos);
/// Upper and lower case of the letters of the page, accents included.
std::string majuscules(std::string_view t);
std::string minuscules(std::string_view t);
/// What a search compares: small letters without accents and digits, everything else a blank ("Bœuf d'Aubrac" is "boeuf
/// d aubrac").
std::string pour_chercher(std::string_view t);
bool contient(std::string_view t, std::string_view cherche);
/// The lines of a file's content: a line ends at CR LF, at LF alone, or at the end of the content.
std::vector<std::string_view> lignes(std::string_view contenu);

namespace detail {

/// Code points of the bytes 80 to 9F, which are all that differ from Latin-1; 0 where the page has none.
inline constexpr char16_t hauts[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

template <std::size_t N>
struct Litteral {
    char octets[N]{};
    std::size_t longueur = 0;
    bool juste = true;

    consteval Litteral(const char (&utf8)[N]) {
        for (std::size_t i = 0; i + 1 < N;) {
            const auto c = static_cast<unsigned char>(utf8[i]);
            const std::size_t suite = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
            char32_t point = suite == 0 ? c : static_cast<char32_t>(c & (0x3F >> suite));
            for (std::size_t k = 1; k <= suite; ++k) {
                point = (point << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
            }
            const auto o = octet(point);
            juste = juste && o.has_value();
            octets[longueur++] = static_cast<char>(o.value_or('?'));
            i += suite + 1;
        }
    }
};

}  // namespace detail

constexpr std::optional<unsigned char> octet(char32_t point) {
    for (unsigned i = 0; i < 32; ++i) {
        if (point != 0 && detail::hauts[i] == point) return static_cast<unsigned char>(0x80 + i);
    }
    const bool trou = point >= 0x80 && point < 0xA0 && detail::hauts[point - 0x80] != 0;
    if (point < 0x100 && !trou) return static_cast<unsigned char>(point);
    return std::nullopt;
}

namespace litteral {

/// "é"_t: a literal of the UTF-8 source as text of the page 1252, converted at compile time.
template <detail::Litteral L>
constexpr std::string_view operator""_t() {
    static_assert(L.juste, "a character that the code page 1252 lacks");
    return {L.octets, L.longueur};
}

}  // namespace litteral
}  // namespace texte

using namespace texte::litteral;
