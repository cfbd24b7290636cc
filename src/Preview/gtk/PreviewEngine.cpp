#include "Preview/gtk/PreviewEngine.hpp"

#include "Preview/gtk/SandboxProbe.hpp"

#include <glib.h>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

namespace corvanta {

namespace {

/// The probe takes a few hundredths of a second and begins before the toolkit starts.
constexpr std::chrono::milliseconds longestWait{100};

/// Whether there is a graphics processor that programs may draw with.
bool hasGraphicsProcessor() {
    std::error_code error;
    for (const auto& device : std::filesystem::directory_iterator("/dev/dri", error)) {
        if (device.path().filename().string().starts_with("renderD"))
            return true;
    }
    return false;
}

/// Without a graphics processor the engine would imitate one to draw a page, which takes several times as
/// long as drawing it.
void drawByProcessorWhereThatIsQuicker() {
    if (!hasGraphicsProcessor())
        g_setenv("WEBKIT_SKIA_ENABLE_CPU_RENDERING", "1", FALSE);
}

} // namespace

PreviewEngine::PreviewEngine() {
    drawByProcessorWhereThatIsQuicker();
    // Nobody waits for the thread: a helper that hangs must not keep the program from ending.
    std::thread(probe, state_).detach();
}

void PreviewEngine::probe(std::shared_ptr<State> state) {
    const bool works = SandboxProbe::works();
    {
        const std::scoped_lock lock(state->mutex);
        state->works = works;
    }
    state->answered.notify_all();
    // The main thread gets the last reference, since what the state holds belongs there.
    auto last = std::make_unique<std::shared_ptr<State>>(std::move(state));
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        +[](gpointer self) -> gboolean {
            // The engine's first steps take long: they are done only when somebody waits for it.
            State& answered = **static_cast<std::shared_ptr<State>*>(self);
            if (!answered.known.empty())
                settle(answered);
            return G_SOURCE_REMOVE;
        },
        last.release(), +[](gpointer self) { delete static_cast<std::shared_ptr<State>*>(self); });
}

void PreviewEngine::settle(State& state) {
    if (std::exchange(state.isSettled, true))
        return;
    bool works = false;
    {
        const std::scoped_lock lock(state.mutex);
        works = state.works.value_or(false);
    }
    if (works)
        state.context = std::make_unique<PreviewWebContext>();
    state.known.emit(state.context.get());
}

Subscription PreviewEngine::whenKnown(const std::function<void(const PreviewWebContext*)>& observer) {
    if (!state_->isSettled) {
        std::unique_lock lock(state_->mutex);
        const bool isKnown =
            state_->answered.wait_for(lock, longestWait, [this] { return state_->works.has_value(); });
        lock.unlock();
        if (!isKnown)
            return Subscription(state_->known.connect(observer));
        settle(*state_);
    }
    observer(state_->context.get());
    return {};
}

} // namespace corvanta
