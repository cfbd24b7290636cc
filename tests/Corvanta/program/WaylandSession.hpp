#pragma once

#include "Support/TemporaryFolder.hpp"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace corvanta {

/// A Wayland session without a screen, keyboard and pointer. What is in it draws by OpenGL, as on most
/// desktops.
class WaylandSession {
public:
    /// Throws when it cannot be started.
    WaylandSession();
    WaylandSession(const WaylandSession&) = delete;
    WaylandSession& operator=(const WaylandSession&) = delete;
    ~WaylandSession();

    /// What a program has to find set to show its windows there ("NAME=value").
    std::vector<std::string> environment() const;

    /// Whether there is enough of a colour (0xRRGGBB) in a picture of it to be noticed.
    bool shows(std::uint32_t color) const;

private:
    pid_t compositor_ = -1;
    TemporaryFolder runtime_;
};

} // namespace corvanta
