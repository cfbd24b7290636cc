#include "Preview/PreviewFileManager.hpp"

#include "Preview/PreviewSite.hpp"
#include "Preview/StandardizedPath.hpp"

namespace corvanta {

PreviewFileManager::PreviewFileManager(const FileManager& fileManager,
                                       const std::filesystem::path& homeFolder)
    : fileManager_(fileManager), homeFolder_(fileManager.resolvingSymlinks(standardizedPath(homeFolder))) {}

std::optional<std::string> PreviewFileManager::contents(const std::filesystem::path& path,
                                                        std::error_code& error) const {
    return fileManager_.contents(path, error);
}

std::optional<std::uintmax_t> PreviewFileManager::fileSize(const std::filesystem::path& path) const {
    return fileManager_.fileSize(path);
}

std::optional<std::vector<std::filesystem::path>>
PreviewFileManager::contentsOfFolder(const std::filesystem::path& path) const {
    return isListable(path) ? fileManager_.contentsOfFolder(path) : std::nullopt;
}

bool PreviewFileManager::isListable(const std::filesystem::path& path) const {
    const std::filesystem::path folder = fileManager_.resolvingSymlinks(standardizedPath(path));
    const bool isFileSystemRoot = folder == folder.root_path();
    const bool holdsHome =
        folder == homeFolder_ || PreviewSite::relativePath(homeFolder_, folder).has_value();
    return !isFileSystemRoot && !holdsHome && fileManager_.isListable(path);
}

std::filesystem::path PreviewFileManager::resolvingSymlinks(const std::filesystem::path& path) const {
    return fileManager_.resolvingSymlinks(path);
}

} // namespace corvanta
