// Waiting for something new in a directory: the system's notification where there is one, else the time alone.
#pragma once

#include <memory>
#include <string_view>

namespace guet {

class Guet {
  public:
    virtual ~Guet() = default;
    /// Returns when a file has come or was written since the last call, when the end is asked for, or after `ms`.
    virtual void attend(int ms) = 0;
};

/// Never null: a directory that cannot be watched, or is not there, is waited for by time. Shares do not tell what
/// other machines do, so that a caller looks now and then all the same.
std::unique_ptr<Guet> ouvre(std::string_view repertoire);

}  // namespace guet
