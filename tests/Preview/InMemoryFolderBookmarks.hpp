#pragma once

#include "Preview/FolderBookmarks.hpp"

#include <set>

namespace corvanta {

/// Bookmarks that read "bookmark of <path>"; folders in `lost` can neither be bookmarked nor found.
class InMemoryFolderBookmarks final : public FolderBookmarks {
public:
    static constexpr const char* prefix = "bookmark of ";

    std::optional<std::string> make(const std::filesystem::path& folder) const override {
        return lost.contains(folder) ? std::nullopt : std::optional(prefix + folder.string());
    }

    std::optional<std::filesystem::path> resolve(const std::string& bookmark) const override {
        if (!bookmark.starts_with(prefix))
            return std::nullopt;
        const std::filesystem::path folder = bookmark.substr(std::char_traits<char>::length(prefix));
        return lost.contains(folder) ? std::nullopt : std::optional(folder);
    }

    std::set<std::filesystem::path> lost;
};

} // namespace corvanta
