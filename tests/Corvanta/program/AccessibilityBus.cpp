#include "AccessibilityBus.hpp"

#include <stdexcept>
#include <utility>

namespace corvanta {

namespace {

/// A page of a thousand things is enough; a tree that has itself as a child must not be endless.
constexpr int deepest = 60;

/// What an answer holds, which is null when the other side was gone.
std::string stringIn(GVariant* answer) {
    if (answer == nullptr)
        return {};
    GVariant* value = g_variant_get_child_value(answer, 0);
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT) != FALSE) {
        GVariant* inner = g_variant_get_variant(value);
        g_variant_unref(value);
        value = inner;
    }
    std::string text = g_variant_get_string(value, nullptr);
    g_variant_unref(value);
    return text;
}

guint64 statesIn(GVariant* answer) {
    guint64 states = 0;
    if (answer == nullptr)
        return states;
    GVariantIter* words = nullptr;
    g_variant_get(answer, "(au)", &words);
    guint32 word = 0;
    for (unsigned shift = 0; shift < 64 && g_variant_iter_next(words, "u", &word) != FALSE; shift += 32)
        states |= static_cast<guint64>(word) << shift;
    g_variant_iter_free(words);
    return states;
}

std::vector<AccessibleNode> nodesIn(GVariant* answer) {
    std::vector<AccessibleNode> nodes;
    if (answer == nullptr)
        return nodes;
    GVariantIter* references = nullptr;
    g_variant_get(answer, "(a(so))", &references);
    const char* program = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_next(references, "(&s&o)", &program, &path) != FALSE) {
        AccessibleNode& node = nodes.emplace_back();
        node.program = program;
        node.path = path;
    }
    g_variant_iter_free(references);
    return nodes;
}

} // namespace

const AccessibleNode* AccessibleNode::find(std::string_view wantedRole, std::string_view wantedName) const {
    if (role == wantedRole && name == wantedName)
        return this;
    for (const AccessibleNode& child : children)
        if (const AccessibleNode* found = child.find(wantedRole, wantedName))
            return found;
    return nullptr;
}

AccessibilityBus::AccessibilityBus() {
    const Bus session(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!session)
        throw std::runtime_error("this test needs a session bus");
    const Value answer =
        call(session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress", nullptr);
    if (!answer)
        throw std::runtime_error("this test needs at-spi2-core");
    const char* address = nullptr;
    g_variant_get(answer.get(), "(&s)", &address);
    bus_.reset(g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!bus_)
        throw std::runtime_error("the accessibility bus does not answer");
}

/// `method` with its interface before it. Null when the other side is gone or does not know the method.
AccessibilityBus::Value AccessibilityBus::call(GDBusConnection* bus, const char* program, const char* path,
                                               const char* method, GVariant* parameters) {
    const std::string_view whole = method;
    const std::size_t point = whole.rfind('.');
    return Value(g_dbus_connection_call_sync(bus, program, path, std::string(whole.substr(0, point)).c_str(),
                                             std::string(whole.substr(point + 1)).c_str(), parameters,
                                             nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

AccessibilityBus::Value AccessibilityBus::ask(const AccessibleNode& node, const char* method,
                                              GVariant* parameters) const {
    return call(bus_.get(), node.program.c_str(), node.path.c_str(), method, parameters);
}

pid_t AccessibilityBus::processOf(const std::string& program) const {
    const Value answer =
        call(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
             "org.freedesktop.DBus.GetConnectionUnixProcessID", g_variant_new("(s)", program.c_str()));
    guint32 process = 0;
    if (answer)
        g_variant_get(answer.get(), "(u)", &process);
    return static_cast<pid_t>(process);
}

void AccessibilityBus::fill(const std::vector<AccessibleNode*>& nodes) const {
    constexpr std::size_t questions = 4;
    std::vector<Value> answers(nodes.size() * questions);
    std::size_t awaited = answers.size();
    struct Question {
        Value& answer;
        std::size_t& awaited;
    };
    const auto ask = [&](const AccessibleNode& node, std::size_t number, const char* interface,
                         const char* method, GVariant* parameters) {
        g_dbus_connection_call(
            bus_.get(), node.program.c_str(), node.path.c_str(), interface, method, parameters, nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
            +[](GObject* bus, GAsyncResult* result, gpointer data) {
                const std::unique_ptr<Question> question(static_cast<Question*>(data));
                question->answer.reset(
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr));
                --question->awaited;
            },
            std::make_unique<Question>(Question{answers[number], awaited}).release());
    };
    constexpr const char* accessible = "org.a11y.atspi.Accessible";
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        ask(*nodes[i], i * questions, accessible, "GetRoleName", nullptr);
        ask(*nodes[i], i * questions + 1, "org.freedesktop.DBus.Properties", "Get",
            g_variant_new("(ss)", accessible, "Name"));
        ask(*nodes[i], i * questions + 2, accessible, "GetState", nullptr);
        ask(*nodes[i], i * questions + 3, accessible, "GetChildren", nullptr);
    }
    while (awaited > 0)
        g_main_context_iteration(nullptr, TRUE);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        AccessibleNode& node = *nodes[i];
        node.role = stringIn(answers[i * questions].get());
        node.name = stringIn(answers[i * questions + 1].get());
        node.states = statesIn(answers[i * questions + 2].get());
        node.children = nodesIn(answers[i * questions + 3].get());
    }
}

std::vector<AccessibleNode> AccessibilityBus::windowsOf(pid_t process) const {
    AccessibleNode registry;
    registry.program = "org.a11y.atspi.Registry";
    registry.path = "/org/a11y/atspi/accessible/root";
    fill({&registry});
    for (AccessibleNode& program : registry.children) {
        if (processOf(program.program) != process)
            continue;
        // Level by level: a question waits for the program's main loop, and many wait no longer than one.
        std::vector<AccessibleNode*> level{&program};
        for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
            fill(level);
            std::vector<AccessibleNode*> next;
            for (AccessibleNode* node : level)
                for (AccessibleNode& child : node->children)
                    next.push_back(&child);
            level = std::move(next);
        }
        return std::move(program.children);
    }
    return {};
}

std::string AccessibilityBus::textOf(const AccessibleNode& node) const {
    const Value answer = ask(node, "org.a11y.atspi.Text.GetText", g_variant_new("(ii)", 0, -1));
    const char* text = "";
    if (answer)
        g_variant_get(answer.get(), "(&s)", &text);
    return text;
}

void AccessibilityBus::press(const AccessibleNode& node) const {
    ask(node, "org.a11y.atspi.Action.DoAction", g_variant_new("(i)", 0));
}

} // namespace corvanta
