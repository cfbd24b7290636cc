#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// The file in which the maker announces the newest version.
struct UpdateFeed {
    std::string version;

    /// The feed in `text`, a JSON object with a string under "version" and anything else beside it, or
    /// nothing.
    static std::optional<UpdateFeed> decode(std::string_view text);
};

} // namespace corvanta
