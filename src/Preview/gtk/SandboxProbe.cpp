#include "Preview/gtk/SandboxProbe.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <gio/gio.h>

#include <algorithm>
#include <vector>

namespace corvanta {

namespace {

/// Both helpers, asked for what the engine needs of them: it shares these folders with its processes and ends
/// the program when one of them is missing.
const std::vector<std::vector<const char*>>& probes() {
    static const std::vector<std::vector<const char*>> commands{{"bwrap",
                                                                 "--die-with-parent",
                                                                 "--unshare-pid",
                                                                 "--unshare-uts",
                                                                 "--unshare-net",
                                                                 "--ro-bind",
                                                                 "/",
                                                                 "/",
                                                                 "--proc",
                                                                 "/proc",
                                                                 "--dev",
                                                                 "/dev",
                                                                 "--ro-bind",
                                                                 "/sys/block",
                                                                 "/sys/block",
                                                                 "--ro-bind",
                                                                 "/sys/bus",
                                                                 "/sys/bus",
                                                                 "--ro-bind",
                                                                 "/sys/class",
                                                                 "/sys/class",
                                                                 "--ro-bind",
                                                                 "/sys/dev",
                                                                 "/sys/dev",
                                                                 "--ro-bind",
                                                                 "/sys/devices",
                                                                 "/sys/devices",
                                                                 "true",
                                                                 nullptr},
                                                                {"xdg-dbus-proxy", "--version", nullptr}};
    return commands;
}

GObjectReference<GSubprocess> start(const std::vector<const char*>& command) {
    constexpr auto silence =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
    return GObjectReference<GSubprocess>(g_subprocess_newv(command.data(), silence, nullptr));
}

} // namespace

bool SandboxProbe::works() {
    std::vector<GObjectReference<GSubprocess>> helpers;
    for (const std::vector<const char*>& command : probes())
        helpers.push_back(start(command));
    return std::ranges::all_of(helpers, [](const GObjectReference<GSubprocess>& helper) {
        return helper && g_subprocess_wait_check(helper.get(), nullptr, nullptr) != FALSE;
    });
}

} // namespace corvanta
