#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvanta {

/// Names of folders that can be kept in the settings and still lead to the folder at a later launch.
class FolderBookmarks {
public:
    FolderBookmarks() = default;
    FolderBookmarks(const FolderBookmarks&) = delete;
    FolderBookmarks& operator=(const FolderBookmarks&) = delete;
    virtual ~FolderBookmarks() = default;

    /// A bookmark of `folder`, opaque ASCII text, or nothing when none can be made.
    virtual std::optional<std::string> make(const std::filesystem::path& folder) const = 0;

    /// Where the bookmark's folder lies now, or nothing when it cannot be found.
    virtual std::optional<std::filesystem::path> resolve(const std::string& bookmark) const = 0;
};

} // namespace corvanta
