#include "Preview/StandardizedPath.hpp"

namespace corvanta {

std::filesystem::path standardizedPath(const std::filesystem::path& path) {
    std::filesystem::path normal = path.lexically_normal();
    const bool endsInSlash = normal.has_relative_path() && !normal.has_filename();
    return endsInSlash ? normal.parent_path() : normal;
}

} // namespace corvanta
