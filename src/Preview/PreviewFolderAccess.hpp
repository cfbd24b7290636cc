#pragma once

#include "Platform/FileManager.hpp"
#include "Platform/Log.hpp"
#include "Platform/Published.hpp"
#include "Platform/UserDefaults.hpp"
#include "Preview/FolderBookmarks.hpp"
#include "Preview/FolderPanel.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The folders that the user opened to the preview, kept from one launch to the next, and the root folder
/// that each document's site gets from them. One for the whole program.
class PreviewFolderAccess {
public:
    using Folders = std::vector<std::filesystem::path>;

    /// The value is a list of bookmarks in the order in which the folders were granted.
    static constexpr std::string_view defaultsKey = "previewFolderBookmarks";

    /// Opens the folders that were granted in earlier launches. Everything handed in outlives this object.
    PreviewFolderAccess(UserDefaults& defaults, const FolderBookmarks& folderBookmarks,
                        const FileManager& fileManager, Log& log);

    /// The folders that are open now, symbolic links resolved, in the order in which they were granted.
    Published<Folders> releasedFolders;

    /// The root folder for a document: a granted one, or else the one that holds it.
    std::optional<std::filesystem::path> root(const std::filesystem::path& document) const;

    /// The deepest granted folder that `document` lies in.
    std::optional<std::filesystem::path> releasedRoot(const std::filesystem::path& document) const;

    /// The folder that holds `document`, when it can be listed.
    std::optional<std::filesystem::path> fallbackRoot(const std::filesystem::path& document) const;

    /// Asks the user for the root of the site that `document` belongs to. A folder that does not hold the
    /// document is not granted.
    void requestAccess(const std::filesystem::path& document, FolderPanel& panel);

    /// Ends the grant of `folder`, one of `releasedFolders`.
    void release(const std::filesystem::path& folder);

private:
    /// A granted folder; without a bookmark when the grant ends with the program.
    struct Grant {
        std::filesystem::path folder;
        std::optional<std::string> bookmark;
    };

    void restore();
    void grantIfItHolds(const std::filesystem::path& document, const std::filesystem::path& folder);
    void remember(const std::filesystem::path& folder);
    void store();
    void publish();
    std::filesystem::path resolved(const std::filesystem::path& path) const;

    UserDefaults& defaults_;
    const FolderBookmarks& folderBookmarks_;
    const FileManager& fileManager_;
    Log& log_;
    std::vector<Grant> grants_;
};

} // namespace corvanta
