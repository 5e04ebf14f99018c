// Command line, then the service, or the picture of one ticket.
#include <iostream>
#include <string>
#include <vector>

#include "cuisine/apercu.h"
#include "cuisine/options.h"
#include "cuisine/service.h"
#include "platform/console/arret.h"
#include "platform/console/console.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace {

const console::Programme programme = {options::aide, "orvalune-cuisine " ORVALUNE_VERSION " (" ORVALUNE_EDITION ")\n"};

int lance(const std::vector<std::string>& mots) {
    std::string faute;
    const auto o = options::lis(mots, faute);
    if (!o) return console::refuse(programme, faute);
    if (o->montre_aide || o->montre_version) return console::presente(programme, o->montre_aide);
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
#else
int main(int argc, char** argv) {
#endif
    return console::execute(argc, argv, lance);
}
