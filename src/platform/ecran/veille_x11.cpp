#include "platform/ecran/veille_x11.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <utility>

#include "platform/console/arret.h"

namespace ecran {
namespace {

constexpr std::int64_t par_seconde = 1'000'000'000;

std::int64_t lis(clockid_t horloge) {
    timespec t{};
    clock_gettime(horloge, &t);
    return t.tv_sec * par_seconde + t.tv_nsec;
}

/// A timer for a moment that never comes: the system cancels it when the clock of the day has jumped, and a machine
/// that wakes up sets that clock.
int horloge_du_reveil() {
    const int f = timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    itimerspec jamais{};
    jamais.it_value.tv_sec = lis(CLOCK_REALTIME) / par_seconde + std::int64_t{100} * 365 * 24 * 3600;
    timerfd_settime(f, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &jamais, nullptr);
    return f;
}

/// To be waited for no more: what it told is known.
bool vide(const pollfd& p) {
    std::uint64_t lu = 0;
    if (p.revents != 0) static_cast<void>(!::read(p.fd, &lu, sizeof lu));
    return p.revents != 0;
}

}  // namespace

bool Sommeil::constate(std::int64_t toujours, std::int64_t eveillee) {
    const std::int64_t ecart = toujours - eveillee;
    const std::int64_t avant = std::exchange(ecart_, ecart).value_or(ecart);
    return ecart - avant >= par_seconde;
}

VeilleX11::VeilleX11() : appel_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), horloge_(horloge_du_reveil()) {
    a_dormi();
    arret::ecoute();
}

VeilleX11::~VeilleX11() {
    close(appel_);
    close(horloge_);
}

void VeilleX11::appelle() const {
    const std::uint64_t un = 1;
    static_cast<void>(!::write(appel_, &un, sizeof un));
}

bool VeilleX11::a_dormi() {
    return sommeil_.constate(lis(CLOCK_BOOTTIME), lis(CLOCK_MONOTONIC));
}

VeilleX11::Cause VeilleX11::attend(int serveur, std::optional<Moment> jusqua) {
    int reste = -1;
    if (jusqua) {
        const auto ms =
            std::chrono::ceil<std::chrono::milliseconds>(*jusqua - std::chrono::steady_clock::now()).count();
        reste = static_cast<int>(std::clamp<std::int64_t>(ms, 0, 24 * 3600 * 1000));
    }
    pollfd veilles[] = {{serveur, POLLIN, 0},
                        {appel_, POLLIN, 0},
                        {horloge_, POLLIN, 0},
                        {fin_dite_ ? -1 : arret::descripteur(), POLLIN, 0}};
    const int annonces = ::poll(veilles, std::size(veilles), reste);
    Cause c;
    c.heure = annonces == 0;
    c.appel = vide(veilles[1]);
    vide(veilles[2]);
    c.reveil = a_dormi();
    c.fin = arret::demande() && !std::exchange(fin_dite_, true);
    return c;
}

}  // namespace ecran
