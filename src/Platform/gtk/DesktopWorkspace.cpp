#include "Platform/gtk/DesktopWorkspace.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <gio/gio.h>

#include <array>
#include <memory>

namespace corvanta {

namespace {

std::string urlOf(const std::filesystem::path& path) {
    const GObjectReference<GFile> file(g_file_new_for_path(path.c_str()));
    const std::unique_ptr<char, decltype(&g_free)> url(g_file_get_uri(file.get()), g_free);
    return url.get();
}

void launch(const std::string& url) {
    g_app_info_launch_default_for_uri_async(url.c_str(), nullptr, nullptr, nullptr, nullptr);
}

/// Opens the folder after all when no file manager showed the item.
void itemsShown(GObject* bus, GAsyncResult* result, gpointer folderURL) {
    const std::unique_ptr<std::string> folder(static_cast<std::string*>(folderURL));
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr);
    if (answer != nullptr)
        g_variant_unref(answer);
    else
        launch(*folder);
}

void askFileManager(GDBusConnection* bus, const std::string& itemURL, std::unique_ptr<std::string> folder) {
    const std::array<const char*, 2> items{itemURL.c_str(), nullptr};
    g_dbus_connection_call(bus, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           "org.freedesktop.FileManager1", "ShowItems",
                           g_variant_new("(^ass)", items.data(), ""), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                           nullptr, itemsShown, folder.release());
}

} // namespace

void DesktopWorkspace::open(const std::string& url) {
    launch(url);
}

void DesktopWorkspace::showInFileManager(const std::filesystem::path& path) {
    auto folder = std::make_unique<std::string>(urlOf(path.parent_path()));
    const GObjectReference<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        askFileManager(bus.get(), urlOf(path), std::move(folder));
    else
        launch(*folder);
}

} // namespace corvanta
