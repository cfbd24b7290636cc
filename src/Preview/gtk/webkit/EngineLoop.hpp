#pragma once

#include <glib.h>

#include <memory>
#include <vector>

namespace corvanta {

/// A main loop that the main thread's default one runs as a single source of its own. The web engine gets
/// one: each of its views leaves two dozen timers behind that nearly always rest, and in the program's loop
/// all of them would be looked at at every turn, so that a key press would cost the more the more windows are
/// open.
class EngineLoop {
public:
    EngineLoop();
    ~EngineLoop();

    EngineLoop(const EngineLoop&) = delete;
    EngineLoop& operator=(const EngineLoop&) = delete;

    /// What the sources of this loop are attached to.
    GMainContext* context() const { return context_.get(); }

private:
    struct ContextUnref {
        void operator()(GMainContext* context) const { g_main_context_unref(context); }
    };
    struct SourceEnd {
        void operator()(GSource* source) const {
            g_source_destroy(source);
            g_source_unref(source);
        }
    };

    void turn();
    void waitForWhatComesNext();
    void waitFor(std::vector<GPollFD> descriptors);

    std::unique_ptr<GMainContext, ContextUnref> context_;
    std::unique_ptr<GSource, SourceEnd> source_;
    /// What `source_` waits for, and its handles for that.
    std::vector<GPollFD> descriptors_;
    std::vector<gpointer> handles_;
};

} // namespace corvanta
