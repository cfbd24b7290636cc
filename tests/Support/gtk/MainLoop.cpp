#include "Support/gtk/MainLoop.hpp"

#include <glibmm/main.h>

namespace corvanta {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    // Wakes the loop up, which otherwise sleeps as long as nothing happens.
    sigc::connection clock = Glib::signal_timeout().connect([] { return true; }, 5);
    bool isMet = condition();
    while (!isMet && std::chrono::steady_clock::now() < end) {
        Glib::MainContext::get_default()->iteration(true);
        isMet = condition();
    }
    clock.disconnect();
    return isMet;
}

void letPass(std::chrono::milliseconds duration) {
    const auto end = std::chrono::steady_clock::now() + duration;
    waitUntil([end] { return std::chrono::steady_clock::now() >= end; }, duration * 2);
}

} // namespace corvanta
