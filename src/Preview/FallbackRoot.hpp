#pragma once

#include "Platform/FileManager.hpp"

#include <filesystem>
#include <optional>

namespace corvanta {

/// The site's root for a document without a granted folder: the folder that holds it, symbolic links
/// resolved, when its contents can be listed.
std::optional<std::filesystem::path> fallbackRoot(const std::filesystem::path& document,
                                                  const FileManager& fileManager);

} // namespace corvanta
