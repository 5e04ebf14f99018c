// What the fuzz targets share. A target defines essaie() and works in its current directory, which is its own.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

/// Tries one input.
void essaie(std::string_view entree);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* octets, std::size_t nombre) {
    essaie({reinterpret_cast<const char*>(octets), nombre});
    return 0;
}

/// What must hold whatever the input is.
inline void exige(bool tient, int ligne = __builtin_LINE()) {
    if (tient) return;
    std::fprintf(stderr, "line %d does not hold\n", ligne);
    std::abort();
}

/// Takes the part up to the next zero byte off an input.
inline std::string_view coupe(std::string_view& entree) {
    const auto fin = std::min(entree.find('\0'), entree.size());
    const auto part = entree.substr(0, fin);
    entree.remove_prefix(std::min(fin + 1, entree.size()));
    return part;
}

/// Writes a file as it is; false when the system does not take its name.
inline bool pose(const std::string& nom, std::string_view contenu) {
    std::ofstream f(nom, std::ios::binary);
    f.write(contenu.data(), static_cast<std::streamsize>(contenu.size()));
    return f.good();
}
