// What the window sleeps on: the server, calls of other threads, the end of the machine's own sleep, the request to end
// that a session or a service sends. While nothing happens it does not wake up at all.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace ecran {

/// Tells a sleep of the machine: of two clocks the one goes on meanwhile, the other stands.
class Sommeil {
  public:
    /// True once after each sleep of a second or more. `toujours` counts the time asleep, `eveillee` does not (both in
    /// nanoseconds).
    bool constate(std::int64_t toujours, std::int64_t eveillee);

  private:
    std::optional<std::int64_t> ecart_;
};

class VeilleX11 {
  public:
    VeilleX11();
    ~VeilleX11();
    VeilleX11(const VeilleX11&) = delete;
    VeilleX11& operator=(const VeilleX11&) = delete;

    using Moment = std::chrono::steady_clock::time_point;
    struct Cause {
        bool heure = false;   ///< the time is up
        bool appel = false;   ///< appelle() was called
        bool reveil = false;  ///< the machine has slept
        bool fin = false;     ///< the program was asked to end; told once
    };
    /// Waits for the server behind `serveur` to say something, or for a cause to go on; without a moment, without end.
    Cause attend(int serveur, std::optional<Moment> jusqua);
    /// Ends the wait, this one or the next; callable from any thread.
    void appelle() const;

  private:
    int appel_, horloge_;
    Sommeil sommeil_;
    bool fin_dite_ = false;  ///< it was told that the end was asked for

    bool a_dormi();
};

}  // namespace ecran
