#include "NameHolder.hpp"

#include <stdexcept>

namespace corvanta {

namespace {

constexpr const char* name = "de.corvanta.Corvanta";
constexpr const char* path = "/de/corvanta/Corvanta";
/// The first thing that a second start asks.
constexpr const char* questions = "<node><interface name='org.gtk.Actions'><method name='DescribeAll'>"
                                  "<arg type='a{s(bgav)}' direction='out'/></method></interface></node>";

std::unique_ptr<char, decltype(&g_free)> addressOfTheBus() {
    return {g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr), &g_free};
}

} // namespace

NameHolder::NameHolder(WhenAsked whenAsked)
    : whenAsked_(whenAsked),
      // A connection of its own, because it is to break.
      bus_(g_dbus_connection_new_for_address_sync(
          addressOfTheBus().get(),
          static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
          nullptr, nullptr, nullptr)) {
    if (!bus_)
        throw std::runtime_error("this test needs a session bus");
    const auto call = +[](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
                          GDBusMethodInvocation* question,
                          gpointer self) { static_cast<NameHolder*>(self)->answer(question); };
    const GDBusInterfaceVTable table{
        .method_call = call, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(questions, nullptr);
    g_dbus_connection_register_object(bus_.get(), path, node->interfaces[0], &table, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);

    constexpr guint32 doNotQueue = 4;
    constexpr guint32 isOwner = 1;
    guint32 result = 0;
    GVariant* answer = g_dbus_connection_call_sync(
        bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", name, doNotQueue), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (answer != nullptr) {
        g_variant_get(answer, "(u)", &result);
        g_variant_unref(answer);
    }
    if (result != isOwner)
        throw std::runtime_error("the program runs already");
}

void NameHolder::answer(GDBusMethodInvocation* question) {
    wasAsked_ = true;
    if (whenAsked_ == WhenAsked::dies) {
        g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr);
        g_object_unref(question);
    } else {
        g_dbus_method_invocation_return_error(question, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, "no");
    }
}

} // namespace corvanta
