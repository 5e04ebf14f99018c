#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>

#include "platform/console/arret.h"

namespace arret {
namespace {

volatile sig_atomic_t demandee = 0;
int tube[2] = {-1, -1};

void note(int) {
    demandee = 1;
    static_cast<void>(!::write(tube[1], "", 1));
}

}  // namespace

void ecoute() {
    if (tube[0] < 0 && ::pipe2(tube, O_CLOEXEC | O_NONBLOCK) != 0) return;
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
    // An output that nobody reads any more is a failure like others.
    ::signal(SIGPIPE, SIG_IGN);
}

bool demande() {
    return demandee != 0;
}

int limite(int ms) {
    constexpr int presse_ms = 2000;
    return demande() ? std::min(ms, presse_ms) : ms;
}

int descripteur() {
    return tube[0];
}

}  // namespace arret
