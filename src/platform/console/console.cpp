#include "platform/console/console.h"

#include <iostream>

#include "platform/systeme/texte.h"

namespace console {

int presente(const Programme& programme, bool aide) {
    std::cout << (aide ? programme.aide : programme.version);
    return 0;
}

int refuse(const Programme& programme, std::string_view faute) {
    std::cerr << texte::vers_utf8(faute) << "\n\n" << programme.aide;
    return faute_usage;
}

int execute(int argc, const Lettre* const* argv, int (*lance)(const std::vector<std::string>& mots)) {
    ecrit_en_utf8();
    const int statut = lance(mots(argc, argv));
    std::cout.flush();
    if (statut == faute_usage) attend_si_seul();
    return statut;
}

}  // namespace console
