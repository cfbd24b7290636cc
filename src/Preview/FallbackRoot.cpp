#include "Preview/FallbackRoot.hpp"

#include "Preview/StandardizedPath.hpp"

namespace corvanta {

std::optional<std::filesystem::path> fallbackRoot(const std::filesystem::path& document,
                                                  const FileManager& fileManager) {
    std::filesystem::path folder = fileManager.resolvingSymlinks(standardizedPath(document)).parent_path();
    if (!fileManager.isListable(folder))
        return std::nullopt;
    return folder;
}

} // namespace corvanta
