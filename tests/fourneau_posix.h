// What the tests of a kitchen in a process of its own share.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

#include "fourneau.h"

namespace tests {

/// Where a flush costs nothing.
struct EnMemoire {
    EnMemoire() {
        if (std::filesystem::is_directory("/dev/shm")) ::setenv("TMPDIR", "/dev/shm", 1);
    }
    ~EnMemoire() { ::unsetenv("TMPDIR"); }
};

/// Of a process that a test has begun: what it has to say is not the test's.
inline void fais_taire() {
    const int rien = ::open("/dev/null", O_WRONLY);
    ::dup2(rien, 2);
}

}  // namespace tests
