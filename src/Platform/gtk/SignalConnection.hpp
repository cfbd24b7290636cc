#pragma once

#include "Platform/gtk/GObjectReference.hpp"

#include <glib-object.h>

#include <utility>

namespace corvanta {

/// A handler on a signal of a C object; it is disconnected when this object is destroyed. Keeps the C object
/// alive until then.
class SignalConnection {
public:
    SignalConnection() = default;

    /// Connects `handler`, a C function of the signal's signature, which receives `data` as its last
    /// argument.
    template <typename Handler>
    SignalConnection(gpointer instance, const char* signal, Handler* handler, gpointer data)
        : instance_(G_OBJECT(g_object_ref(instance))),
          id_(g_signal_connect(instance, signal, G_CALLBACK(handler), data)) {}

    SignalConnection(SignalConnection&& other) noexcept = default;
    SignalConnection& operator=(SignalConnection&& other) noexcept {
        std::swap(instance_, other.instance_);
        std::swap(id_, other.id_);
        return *this;
    }
    SignalConnection(const SignalConnection&) = delete;
    SignalConnection& operator=(const SignalConnection&) = delete;

    ~SignalConnection() {
        if (instance_)
            g_signal_handler_disconnect(instance_.get(), id_);
    }

private:
    GObjectReference<GObject> instance_;
    gulong id_ = 0;
};

} // namespace corvanta
