#pragma once

#include "Preview/FolderBookmarks.hpp"

namespace corvanta {

/// Bookmarks that name a folder by its path and its identity in the file system. A folder is found under its
/// path or, when it was renamed, beside it.
class PosixFolderBookmarks final : public FolderBookmarks {
public:
    std::optional<std::string> make(const std::filesystem::path& folder) const override;
    std::optional<std::filesystem::path> resolve(const std::string& bookmark) const override;
};

} // namespace corvanta
