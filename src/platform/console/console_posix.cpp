#include "platform/console/console.h"
#include "platform/systeme/texte.h"

namespace console {

std::vector<std::string> mots(int argc, const Lettre* const* argv) {
    std::vector<std::string> r;
    for (int i = 1; i < argc; ++i) r.push_back(texte::depuis_utf8_tolerant(argv[i]));
    return r;
}

void rattache() {}
void detache() {}
void ecrit_en_utf8() {}
void attend_si_seul() {}
void montre(const std::string&) {}

}  // namespace console
