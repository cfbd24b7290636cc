#pragma once

#include "Platform/Subscription.hpp"
#include "Preview/gtk/PreviewWebContext.hpp"

#include <sigc++/signal.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace corvanta {

/// The web engine that all previews share, once it is known that it can start here.
class PreviewEngine {
public:
    /// Starts finding out, in a thread of its own.
    PreviewEngine();

    /// Calls `observer` as soon as it is known whether the engine can start, at once if it is known already:
    /// with the engine's context, or with nothing when there will be no preview. Waits a moment for an answer
    /// that is about to come, because the engine takes longest to start and everything else can be done
    /// meanwhile.
    [[nodiscard]] Subscription whenKnown(const std::function<void(const PreviewWebContext*)>& observer);

private:
    struct State {
        std::mutex mutex;
        std::condition_variable answered;
        /// Guarded by the mutex; the rest belongs to the main thread.
        std::optional<bool> works;

        bool isSettled = false;
        std::unique_ptr<PreviewWebContext> context;
        sigc::signal<void(const PreviewWebContext*)> known;
    };

    static void probe(std::shared_ptr<State> state);
    static void settle(State& state);

    /// Shared with the probe, which may answer after the engine is gone.
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace corvanta
