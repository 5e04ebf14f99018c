// One start per working directory: the first one claims it, a later one calls the first to the front and ends. The
// claim is the system's and dies with the process, however that ends; nothing is written to the directory.
#pragma once

#include <functional>
#include <memory>

namespace instance {

/// The claim on the working directory. It is given back when this is destroyed, by the thread that made the claim.
class Prise {
  public:
    virtual ~Prise() = default;
    /// From now on every later start has `appel` called, on a thread of its own. Calls that came before are made up
    /// for.
    virtual void ecoute(std::function<void()> appel) = 0;
    /// `appel` is not called any more once this has returned; the directory stays claimed.
    virtual void cesse() = 0;
};

/// How long a later start waits for the first one, which may be frozen.
inline constexpr int attente_ms = 1000;

/// Claims the working directory of the process. Null when another process has it: that one has been called, and has
/// answered or kept silent for `attente_ms`; `appelee` tells whether its window is in front now (it may be frozen, have
/// higher rights, or be another user's). Where the system cannot say, the claim holds nothing.
std::unique_ptr<Prise> prend(bool& appelee);

}  // namespace instance
