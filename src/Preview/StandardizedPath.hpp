#pragma once

#include <filesystem>

namespace corvanta {

/// `path` with ".", "..", repeated slashes and a slash at its end removed, without asking the disk. Symbolic
/// links stay as they are.
std::filesystem::path standardizedPath(const std::filesystem::path& path);

} // namespace corvanta
