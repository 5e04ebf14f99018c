// The claim is the name of a local socket outside the file system, which the system frees with the process.
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/systeme/instance.h"

namespace instance {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int file_d_attente = 64;
constexpr char reponse = '!';

class Descripteur {
  public:
    explicit Descripteur(int fd = -1) : fd_(fd) {}
    Descripteur(Descripteur&& d) noexcept : fd_(std::exchange(d.fd_, -1)) {}
    Descripteur& operator=(Descripteur&&) = delete;
    ~Descripteur() {
        if (fd_ >= 0) ::close(fd_);
    }
    operator int() const { return fd_; }

  private:
    int fd_;
};

struct Adresse {
    sockaddr_un a{};
    socklen_t longueur = 0;

    const sockaddr* lue() const { return reinterpret_cast<const sockaddr*>(&a); }
};

/// The directory is told by its number, whatever the path that led there; a name that begins with a zero byte lies
/// outside the file system.
bool adresse_du_repertoire(Adresse& r) {
    struct stat s {};
    if (::stat(".", &s) != 0) return false;
    r.a.sun_family = AF_UNIX;
    const int n = std::snprintf(r.a.sun_path + 1, sizeof r.a.sun_path - 1, "orvalune-%llx-%llx",
                                static_cast<unsigned long long>(s.st_dev), static_cast<unsigned long long>(s.st_ino));
    r.longueur = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(n));
    return true;
}

Descripteur douille() {
    return Descripteur(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

class PriseLinux final : public Prise {
  public:
    explicit PriseLinux(Descripteur d) : douille_(std::move(d)), fin_(::eventfd(0, EFD_CLOEXEC)) {}
    ~PriseLinux() override { cesse(); }

    void ecoute(std::function<void()> appel) override {
        if (douille_ < 0 || fin_ < 0 || fil_.joinable()) return;
        try {
            fil_ = std::thread([this, appel = std::move(appel)] { sert(appel); });
        } catch (const std::system_error&) {
            // Nobody answers then: a later start ends all the same.
        }
    }

    void cesse() override {
        if (!fil_.joinable()) return;
        const std::uint64_t un = 1;
        static_cast<void>(!::write(fin_, &un, sizeof un));
        fil_.join();
    }

  private:
    Descripteur douille_, fin_;
    std::thread fil_;

    void sert(const std::function<void()>& appel) const {
        pollfd veille[] = {{douille_, POLLIN, 0}, {fin_, POLLIN, 0}};
        while (::poll(veille, 2, -1) >= 0 || errno == EINTR) {
            if (veille[1].revents != 0) return;
            const Descripteur client(::accept4(douille_, nullptr, nullptr, SOCK_CLOEXEC));
            if (client < 0) continue;
            appel();
            static_cast<void>(::send(client, &reponse, 1, MSG_NOSIGNAL));
        }
    }
};

int reste_ms(steady_clock::time_point jusqua) {
    const auto reste = std::chrono::ceil<milliseconds>(jusqua - steady_clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(0, reste));
}

/// Calls the process that has the address. False when that one has gone in the meantime, so that the address is free.
bool appelle(const Adresse& a, steady_clock::time_point jusqua, bool& appelee) {
    const Descripteur d = douille();
    // A full queue belongs to a process that has not answered for long.
    if (::connect(d, a.lue(), a.longueur) != 0) return errno == EAGAIN;
    pollfd veille = {d, POLLIN, 0};
    while (::poll(&veille, 1, reste_ms(jusqua)) < 0 && errno == EINTR) continue;
    char lu = 0;
    if (veille.revents == 0) return true;
    return appelee = ::recv(d, &lu, 1, MSG_DONTWAIT) == 1;
}

}  // namespace

std::unique_ptr<Prise> prend(bool& appelee) {
    appelee = false;
    const auto jusqua = steady_clock::now() + milliseconds(attente_ms);
    Adresse a;
    if (!adresse_du_repertoire(a)) return std::make_unique<PriseLinux>(Descripteur());
    do {
        Descripteur d = douille();
        if (d < 0) return std::make_unique<PriseLinux>(Descripteur());
        if (::bind(d, a.lue(), a.longueur) == 0) {
            static_cast<void>(::listen(d, file_d_attente));
            return std::make_unique<PriseLinux>(std::move(d));
        }
        if (errno != EADDRINUSE) return std::make_unique<PriseLinux>(Descripteur());
        if (appelle(a, jusqua, appelee)) return nullptr;
    } while (steady_clock::now() < jusqua);
    return nullptr;
}

}  // namespace instance
