#include "Support/gtk/MainLoop.hpp"

#include <glibmm/main.h>

namespace corvanta {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    // Wakes the loop up, which otherwise sleeps as long as nothing happens. After everything else: each turn
    // of the loop does only what is most urgent, and where the condition takes longer than the clock that
    // would be the clock.
    sigc::connection clock = Glib::signal_timeout().connect([] { return true; }, 5, Glib::PRIORITY_LOW);
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
