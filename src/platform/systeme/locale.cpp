#include "platform/systeme/locale.h"

#include <optional>

#include "platform/systeme/locale_interne.h"

namespace locale_systeme {
namespace {

std::optional<char> simule_a;

}  // namespace

char separateur() {
    return simule_a ? *simule_a : systeme::separateur();
}
char separateur_en_usage() {
    return simule_a ? *simule_a : systeme::separateur_en_usage();
}
void corrige_separateur() {
    if (simule_a) {
        simule_a = '.';
    } else {
        systeme::corrige_separateur();
    }
}

void simule(char separateur) {
    simule_a = separateur;
}
void rend_reelle() {
    simule_a.reset();
}

}  // namespace locale_systeme
