#pragma once

#include <gio/gio.h>
#include <sys/types.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// One thing in a window, as a screen reader is told of it.
struct AccessibleNode {
    /// The states that matter here; the values are the bus's numbers.
    enum class State {
        active = 1,
        checked = 4,
        collapsed = 5,
        editable = 7,
        expandable = 9,
        expanded = 10,
        focusable = 11,
        focused = 12,
        modal = 16,
        multiLine = 17,
        pressed = 20,
        selected = 23,
        sensitive = 24,
        showing = 25,
        visible = 30,
    };

    /// Its address on the bus.
    std::string program;
    std::string path;

    /// By the bus's English names, for example "push button".
    std::string role;
    std::string name;
    /// A bit for each state.
    guint64 states = 0;
    std::vector<AccessibleNode> children;

    bool is(State state) const { return (states >> static_cast<unsigned>(state) & 1U) != 0; }

    /// The first with this role and name among this and all that is in it; null when there is none.
    const AccessibleNode* find(std::string_view wantedRole, std::string_view wantedName) const;
};

/// The bus over which the session's screen reader hears of programs, which must have been started with
/// GTK_A11Y=atspi.
class AccessibilityBus {
public:
    /// Starts the bus if the session has none. Throws when that fails.
    AccessibilityBus();

    /// The windows of a process; empty as long as it has not announced itself.
    std::vector<AccessibleNode> windowsOf(pid_t process) const;

    /// The text of a field, as it is now.
    std::string textOf(const AccessibleNode& node) const;

    /// Does with a control what a click on it does.
    void press(const AccessibleNode& node) const;

private:
    struct Unref {
        void operator()(GVariant* value) const { g_variant_unref(value); }
        void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
    };
    using Value = std::unique_ptr<GVariant, Unref>;
    using Bus = std::unique_ptr<GDBusConnection, Unref>;

    static Value call(GDBusConnection* bus, const char* program, const char* path, const char* method,
                      GVariant* parameters);
    Value ask(const AccessibleNode& node, const char* method, GVariant* parameters = nullptr) const;
    pid_t processOf(const std::string& program) const;
    void fill(const std::vector<AccessibleNode*>& nodes) const;

    Bus bus_;
};

} // namespace corvanta
