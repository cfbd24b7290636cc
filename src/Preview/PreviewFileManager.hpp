#pragma once

#include "Platform/FileManager.hpp"

#include <filesystem>

namespace corvanta {

/// The file system as the preview may see it: the home folder itself, the folders above it and the root of
/// the file system cannot be listed. A document's own folder becomes the root of its site only when it can be
/// listed, so a page that was saved straight into the home folder cannot read private files beside it.
class PreviewFileManager final : public FileManager {
public:
    /// `fileManager` must outlive this object.
    PreviewFileManager(const FileManager& fileManager, const std::filesystem::path& homeFolder);

    std::optional<std::string> contents(const std::filesystem::path& path,
                                        std::error_code& error) const override;
    std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) const override;
    std::optional<std::vector<std::filesystem::path>>
    contentsOfFolder(const std::filesystem::path& path) const override;
    bool isListable(const std::filesystem::path& path) const override;
    std::filesystem::path resolvingSymlinks(const std::filesystem::path& path) const override;

private:
    const FileManager& fileManager_;
    std::filesystem::path homeFolder_;
};

} // namespace corvanta
