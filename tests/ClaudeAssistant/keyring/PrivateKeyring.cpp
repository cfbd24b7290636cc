#include "PrivateKeyring.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <libsecret/secret.h>

#include <array>
#include <stdexcept>

namespace corvanta {

namespace {

constexpr const char* serviceName = "org.freedesktop.secrets";
constexpr const char* password = "geheim";

/// The address of the bus. It stays until the process ends, because the library keeps its connection, which
/// cannot be moved to another bus; then it is ended from outside.
const char* busAddress() {
    static GTestDBus* const bus = [] {
        GTestDBus* started = g_test_dbus_new(G_TEST_DBUS_NONE);
        g_test_dbus_up(started);
        return started;
    }();
    return g_test_dbus_get_bus_address(bus);
}

/// Lets no question through to whoever would answer it.
GDBusMessage* dropQuestions(GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer) {
    const bool isQuestion = g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL;
    if (isIncoming == FALSE || !isQuestion)
        return message;
    g_object_unref(message);
    return nullptr;
}

} // namespace

PrivateKeyring::PrivateKeyring() {
    connection_.reset(g_dbus_connection_new_for_address_sync(
        busAddress(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection_)
        throw std::runtime_error("cannot reach the bus of the test");
}

PrivateKeyring::~PrivateKeyring() {
    if (passwordDialog_ != 0)
        g_bus_unown_name(passwordDialog_);
    stop();
    secret_service_disconnect();
}

void PrivateKeyring::startUnlocked() {
    const std::array arguments{"gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock",
                               static_cast<const char*>(nullptr)};
    start(arguments.data(), password);
}

void PrivateKeyring::startLocked() {
    const std::array arguments{"gnome-keyring-daemon", "--foreground", "--components=secrets",
                               static_cast<const char*>(nullptr)};
    start(arguments.data(), "");
}

void PrivateKeyring::stop() {
    if (!service_)
        return;
    g_subprocess_force_exit(service_.get());
    g_subprocess_wait(service_.get(), nullptr, nullptr);
    service_.reset();
    if (!waitUntil([this] { return !isServiceThere(); }))
        throw std::runtime_error("the key service does not end");
}

void PrivateKeyring::letPasswordDialogHang() {
    g_dbus_connection_add_filter(connection_.get(), dropQuestions, nullptr, nullptr);
    passwordDialog_ =
        g_bus_own_name_on_connection(connection_.get(), "org.gnome.keyring.SystemPrompter",
                                     G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
}

void PrivateKeyring::start(const char* const* arguments, const std::string& input) {
    const GObjectReference<GSubprocessLauncher> launcher(g_subprocess_launcher_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                      G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        g_subprocess_launcher_setenv(launcher.get(), variable, folder_.path().c_str(), TRUE);
    g_subprocess_launcher_setenv(launcher.get(), "DBUS_SESSION_BUS_ADDRESS", busAddress(), TRUE);
    service_.reset(g_subprocess_launcher_spawnv(launcher.get(), arguments, nullptr));
    if (!service_)
        throw std::runtime_error("cannot start gnome-keyring-daemon");
    GOutputStream* pipe = g_subprocess_get_stdin_pipe(service_.get());
    g_output_stream_write_all(pipe, input.data(), input.size(), nullptr, nullptr, nullptr);
    g_output_stream_close(pipe, nullptr, nullptr);
    if (!waitUntil([this] { return isServiceThere(); }))
        throw std::runtime_error("the key service does not come");
}

bool PrivateKeyring::isServiceThere() const {
    GVariant* reply =
        g_dbus_connection_call_sync(connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus", "NameHasOwner", g_variant_new("(s)", serviceName),
                                    G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    gboolean isThere = FALSE;
    if (reply != nullptr) {
        g_variant_get(reply, "(b)", &isThere);
        g_variant_unref(reply);
    }
    return isThere != FALSE;
}

} // namespace corvanta
