// Texts at the edge of the Windows API: UTF-16 there, the page 1252 here.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/systeme/texte.h"

namespace texte {

inline std::wstring large(std::string_view t) {
    const std::u16string r = vers_utf16(t);
    return {r.begin(), r.end()};
}

/// The text in the page 1252, or nothing when the page lacks one of its characters.
inline std::optional<std::string> etroit(std::wstring_view t) {
    std::string r;
    for (const wchar_t c : t) {
        const auto o = octet(c);
        if (!o) return std::nullopt;
        r += static_cast<char>(*o);
    }
    return r;
}

/// As above; what the page lacks becomes "?".
inline std::string etroit_tolerant(std::wstring_view t) {
    std::string r;
    for (const wchar_t c : t) r += static_cast<char>(octet(c).value_or('?'));
    return r;
}

}  // namespace texte
