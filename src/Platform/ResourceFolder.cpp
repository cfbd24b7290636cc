#include "Platform/ResourceFolder.hpp"

namespace corvanta {

std::optional<std::filesystem::path> resourceFolder(const std::filesystem::path& executable) {
    if (!executable.is_absolute())
        return std::nullopt;
    const std::filesystem::path folder = executable.parent_path().parent_path() / "share" / "corvanta";
    std::error_code error;
    return std::filesystem::is_directory(folder, error) ? std::optional(folder) : std::nullopt;
}

std::filesystem::path runningExecutable() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

} // namespace corvanta
