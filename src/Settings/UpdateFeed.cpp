#include "Settings/UpdateFeed.hpp"

#include <nlohmann/json.hpp>

namespace corvanta {

std::optional<UpdateFeed> UpdateFeed::decode(std::string_view text) {
    const auto feed = nlohmann::json::parse(text, nullptr, false);
    if (!feed.is_object())
        return std::nullopt;
    const auto version = feed.find("version");
    if (version == feed.end() || !version->is_string())
        return std::nullopt;
    return UpdateFeed{version->get<std::string>()};
}

} // namespace corvanta
