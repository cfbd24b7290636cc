#include "Preview/gtk/PreviewEngine.hpp"

#include "Preview/gtk/SandboxProbe.hpp"

#include <glib.h>

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace corvanta {

namespace {

/// Whether there is a graphics processor that programs may draw with.
bool hasGraphicsProcessor() {
    std::error_code error;
    return std::ranges::any_of(std::filesystem::directory_iterator("/dev/dri", error),
                               [](const std::filesystem::directory_entry& device) {
                                   return device.path().filename().string().starts_with("renderD");
                               });
}

/// Without a graphics processor the engine would imitate one to draw a page, which takes several times as
/// long as drawing it.
void drawByProcessorWhereThatIsQuicker() {
    if (!hasGraphicsProcessor())
        g_setenv("WEBKIT_SKIA_ENABLE_CPU_RENDERING", "1", FALSE);
}

} // namespace

/// What a thread that loaded the engine has to say to the main thread.
struct PreviewEngine::Answer {
    std::weak_ptr<State> state;
    bool sandboxWorks = false;
    WebEngineLibrary::Maker make = nullptr;
};

// Nobody waits for the threads: a helper that hangs must not keep the program from ending.

PreviewEngine::PreviewEngine(std::filesystem::path library) : library_(std::move(library)) {
    drawByProcessorWhereThatIsQuicker();
    std::packaged_task<bool()> probe(SandboxProbe::works);
    sandboxWorks_ = probe.get_future();
    std::thread(std::move(probe)).detach();
}

Subscription PreviewEngine::whenKnown(const std::function<void(const Outcome&)>& observer) {
    if (state_->outcome) {
        observer(*state_->outcome);
        return {};
    }
    if (sandboxWorks_.valid())
        load();
    return Subscription(state_->known.connect(observer));
}

void PreviewEngine::load() {
    std::thread([probe = std::move(sandboxWorks_), library = library_,
                 state = std::weak_ptr(state_)]() mutable {
        auto answer = std::make_unique<Answer>(Answer{std::move(state), probe.get()});
        if (answer->sandboxWorks)
            answer->make = WebEngineLibrary::load(library);
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            +[](gpointer data) -> gboolean {
                deliver(*static_cast<Answer*>(data));
                return G_SOURCE_REMOVE;
            },
            answer.release(), +[](gpointer data) { delete static_cast<Answer*>(data); });
    }).detach();
}

void PreviewEngine::deliver(const Answer& answer) {
    const std::shared_ptr<State> state = answer.state.lock();
    if (!state)
        return;
    if (answer.make != nullptr)
        state->engine.reset(answer.make());
    state->outcome = Outcome{state->engine.get(), !answer.sandboxWorks};
    state->known.emit(*state->outcome);
}

} // namespace corvanta
