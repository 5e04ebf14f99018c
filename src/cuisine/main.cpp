// Command line, then the service, or the picture of one ticket.
#include <iostream>
#include <string>
#include <vector>

#include "cuisine/apercu.h"
#include "cuisine/options.h"
#include "cuisine/service.h"
#include "platform/liaison/arret.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"
#ifdef _WIN32
#include "platform/systeme/console_win32.h"
#endif

namespace {

constexpr int faute_usage = 2;

int lance(const std::vector<std::string>& mots) {
    std::string faute;
    const auto o = options::lis(mots, faute);
    if (!o) {
        std::cerr << texte::vers_utf8(faute) << "\n\n" << options::aide;
        return faute_usage;
    }
    if (o->montre_aide || o->montre_version) {
        std::cout << (o->montre_aide ? options::aide
                                     : "orvalune-cuisine " ORVALUNE_VERSION " (" ORVALUNE_EDITION ")\n");
        return 0;
    }
    if (!o->apercu_de.empty()) {
        if (apercu::dessine(o->apercu_de, o->apercu_vers, o->reglages, faute)) return 0;
        std::cerr << texte::vers_utf8(faute) << "\n";
        return 1;
    }
    arret::ecoute();
    const int statut = service::sert(o->reglages);
    ouvrier::abandonne();
    return statut;
}

}  // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
    console::ecrit_en_utf8();
    const int statut = lance(console::mots(argc, argv));
    if (statut == faute_usage) console::attend_si_seul();
    return statut;
}
#else
int main(int argc, char** argv) {
    std::vector<std::string> mots;
    for (int i = 1; i < argc; ++i) mots.push_back(texte::depuis_utf8_tolerant(argv[i]));
    return lance(mots);
}
#endif
