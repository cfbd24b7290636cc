#pragma once

#include <gio/gio.h>

#include <memory>

namespace corvanta {

/// Has the program's name on the session's bus, like one that runs already.
class NameHolder {
public:
    /// What it does when a second start asks it what it can do.
    enum class WhenAsked { dies, refuses };

    /// Throws when the program really runs, or when there is no bus.
    explicit NameHolder(WhenAsked whenAsked);

    NameHolder(const NameHolder&) = delete;
    NameHolder& operator=(const NameHolder&) = delete;

    bool wasAsked() const { return wasAsked_; }

private:
    struct Unref {
        void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
    };

    void answer(GDBusMethodInvocation* question);

    WhenAsked whenAsked_;
    bool wasAsked_ = false;
    std::unique_ptr<GDBusConnection, Unref> bus_;
};

} // namespace corvanta
