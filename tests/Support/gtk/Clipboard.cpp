#include "Support/gtk/Clipboard.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <gdk/gdk.h>

#include <memory>
#include <optional>

namespace corvanta {

std::string clipboardText() {
    const auto text = std::make_shared<std::optional<std::string>>();
    GdkClipboard* clipboard = gdk_display_get_clipboard(gdk_display_get_default());
    gdk_clipboard_read_text_async(
        clipboard, nullptr,
        +[](GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<std::shared_ptr<std::optional<std::string>>> answer(
                static_cast<std::shared_ptr<std::optional<std::string>>*>(data));
            const std::unique_ptr<char, decltype(&g_free)> read(
                gdk_clipboard_read_text_finish(GDK_CLIPBOARD(source), result, nullptr), g_free);
            **answer = read ? read.get() : "";
        },
        std::make_unique<std::shared_ptr<std::optional<std::string>>>(text).release());
    waitUntil([&] { return text->has_value(); });
    return text->value_or("");
}

} // namespace corvanta
