#pragma once

#include <sigc++/signal.h>

namespace corvanta {

/// Tells that the user turned to a window or to the program. The windowing system says several of them for
/// one event, and whoever listens must not mind.
struct ActivationSignals {
    sigc::signal<void()> windowDidBecomeMain;
    sigc::signal<void()> windowDidBecomeKey;
    sigc::signal<void()> applicationDidBecomeActive;
};

} // namespace corvanta
