#pragma once

namespace corvanta {

/// Finds out whether the web engine can start here. It runs its processes in a sandbox, and where the
/// sandbox's helpers are missing or are not allowed to work, making a web view would end the whole program.
struct SandboxProbe {
    SandboxProbe() = delete;

    /// Runs the helpers, side by side, and waits for them. May be called on any thread.
    static bool works();
};

} // namespace corvanta
