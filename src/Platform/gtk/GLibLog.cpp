#include "Platform/gtk/GLibLog.hpp"

#include <glib.h>

#include <array>

namespace corvanta {

namespace {

GLogField field(const char* key, std::string_view value) {
    return {key, value.data(), static_cast<gssize>(value.size())};
}

} // namespace

void GLibLog::write(Level level, std::string_view category, const std::string& message) {
    // An error of the program's own is a warning to GLib: its "error" level ends the process.
    const GLogLevelFlags flags = level == Level::error ? G_LOG_LEVEL_WARNING : G_LOG_LEVEL_INFO;
    const std::array fields{field("MESSAGE", message), field("PRIORITY", level == Level::error ? "4" : "6"),
                            field("GLIB_DOMAIN", subsystem_), field("CORVANTA_CATEGORY", category)};
    g_log_structured_array(flags, fields.data(), fields.size());
}

} // namespace corvanta
