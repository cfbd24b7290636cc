#pragma once

#include "Platform/Subscription.hpp"
#include "Preview/gtk/WebEngine.hpp"
#include "Preview/gtk/WebEngineLibrary.hpp"

#include <sigc++/signal.h>

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <optional>

namespace corvanta {

/// Gets the web engine that all previews share, when it is needed and can start here.
class PreviewEngine {
public:
    /// Starts finding out whether the engine can start, in a thread of its own. `library` is the file of the
    /// engine's library.
    explicit PreviewEngine(std::filesystem::path library = WebEngineLibrary::file());

    /// What came of getting the engine.
    struct Outcome {
        /// Null when there will be no preview.
        const WebEngine* engine = nullptr;
        /// Whether it is the sandbox that cannot work here.
        bool isSandboxMissing = false;
    };

    /// Calls `observer` with the outcome as soon as there is one, at once if it is there already. The first
    /// call has the engine loaded, which nothing waits for.
    [[nodiscard]] Subscription whenKnown(const std::function<void(const Outcome&)>& observer);

private:
    /// Belongs to the main thread.
    struct State {
        std::unique_ptr<WebEngine> engine;
        std::optional<Outcome> outcome;
        sigc::signal<void(const Outcome&)> known;
    };

    struct Answer;

    void load();
    static void deliver(const Answer& answer);

    std::filesystem::path library_;
    std::future<bool> sandboxWorks_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace corvanta
