#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

namespace corvanta {

/// The unified system log. Messages are fixed English texts with arguments; `category` names the part of the
/// program that speaks ("documents", "preview", "update").
class Log {
public:
    enum class Level { info, error };

    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    template <typename... Arguments>
    void info(std::string_view category, fmt::format_string<Arguments...> message, Arguments&&... arguments) {
        write(Level::info, category, fmt::format(message, std::forward<Arguments>(arguments)...));
    }

    template <typename... Arguments>
    void error(std::string_view category, fmt::format_string<Arguments...> message,
               Arguments&&... arguments) {
        write(Level::error, category, fmt::format(message, std::forward<Arguments>(arguments)...));
    }

    virtual void write(Level level, std::string_view category, const std::string& message) = 0;
};

} // namespace corvanta
