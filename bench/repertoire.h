// A working directory of a benchmark's own, left and removed at the end.
#pragma once

#include <filesystem>
#include <string_view>

struct Repertoire {
    std::filesystem::path avant = std::filesystem::current_path(), ici;

    explicit Repertoire(std::string_view nom) : ici(std::filesystem::temp_directory_path() / nom) {
        std::filesystem::remove_all(ici);
        std::filesystem::create_directories(ici);
        std::filesystem::current_path(ici);
    }
    ~Repertoire() {
        std::filesystem::current_path(avant);
        std::filesystem::remove_all(ici);
    }
    Repertoire(const Repertoire&) = delete;
    Repertoire& operator=(const Repertoire&) = delete;
};
