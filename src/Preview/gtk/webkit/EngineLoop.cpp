#include "Preview/gtk/webkit/EngineLoop.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

GSource* makeSource() {
    // A source that does nothing but wait for its time and its descriptors.
    static GSourceFuncs functions{nullptr,
                                  nullptr,
                                  +[](GSource*, GSourceFunc callback, gpointer data) -> gboolean { return callback(data); },
                                  nullptr,
                                  nullptr,
                                  nullptr};
    return g_source_new(&functions, sizeof(GSource));
}

bool waitForTheSame(const GPollFD& one, const GPollFD& other) {
    return one.fd == other.fd && one.events == other.events;
}

} // namespace

// Without an owner between its turns, the context says by one of its descriptors that something was added to
// it or has become due, even when it is this thread that did it.
EngineLoop::EngineLoop()
    : context_(g_main_context_new_with_flags(G_MAIN_CONTEXT_FLAGS_OWNERLESS_POLLING)), source_(makeSource()) {
    g_source_set_callback(
        source_.get(),
        +[](gpointer self) -> gboolean {
            static_cast<EngineLoop*>(self)->turn();
            return G_SOURCE_CONTINUE;
        },
        this, nullptr);
    waitForWhatComesNext();
    g_source_attach(source_.get(), nullptr);
}

EngineLoop::~EngineLoop() = default;

// One turn at a time, so that the program's own sources have theirs between.
void EngineLoop::turn() {
    g_main_context_iteration(context(), FALSE);
    waitForWhatComesNext();
}

void EngineLoop::waitForWhatComesNext() {
    g_main_context_acquire(context());
    int priority = 0;
    const bool isReady = g_main_context_prepare(context(), &priority) != FALSE;
    int timeout = 0;
    std::vector<GPollFD> descriptors(
        static_cast<std::size_t>(g_main_context_query(context(), G_MAXINT, &timeout, nullptr, 0)));
    g_main_context_query(context(), G_MAXINT, &timeout, descriptors.data(),
                         static_cast<int>(descriptors.size()));
    g_main_context_release(context());

    waitFor(std::move(descriptors));
    constexpr gint64 microseconds = 1000;
    if (isReady)
        g_source_set_ready_time(source_.get(), 0);
    else
        g_source_set_ready_time(source_.get(),
                                timeout < 0 ? -1 : g_get_monotonic_time() + microseconds * timeout);
}

void EngineLoop::waitFor(std::vector<GPollFD> descriptors) {
    if (std::ranges::equal(descriptors, descriptors_, waitForTheSame))
        return;
    for (const gpointer handle : handles_)
        g_source_remove_unix_fd(source_.get(), handle);
    handles_.clear();
    for (const GPollFD& each : descriptors)
        handles_.push_back(
            g_source_add_unix_fd(source_.get(), each.fd, static_cast<GIOCondition>(each.events)));
    descriptors_ = std::move(descriptors);
}

} // namespace corvanta
