#include "platform/console/console.h"

#include <iostream>

#include "platform/systeme/texte.h"

namespace console {

int presente(const Programme& programme, bool aide) {
    std::cout << (aide ? programme.aide : programme.version);
    return 0;
}

int refuse(const Programme& programme, std::string_view faute) {
    std::cerr << ligne(texte::vers_utf8(faute)) << "\n\n" << programme.aide;
    return faute_usage;
}

std::string ligne(std::string_view utf8) {
    std::string r;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto octet = static_cast<unsigned char>(utf8[i]);
        const auto suivant = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0;
        const bool haut = octet == 0xC2 && suivant >= 0x80 && suivant < 0xA0;  // of two bytes
        if (haut) ++i;
        r += haut || octet < ' ' || octet == 0x7F ? '?' : static_cast<char>(octet);
    }
    return r;
}

int execute(int argc, const Lettre* const* argv, int (*lance)(const std::vector<std::string>& mots)) {
    occupe_les_flux();
    ecrit_en_utf8();
    const int statut = lance(mots(argc, argv));
    std::cout.flush();
    if (statut == faute_usage) attend_si_seul();
    return statut;
}

}  // namespace console
