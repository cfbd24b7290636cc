#pragma once

#include "Preview/TypeRegistry.hpp"

#include <filesystem>
#include <string>

namespace corvanta {

/// The MIME types of the files that the preview serves.
struct PreviewMIMEType {
    PreviewMIMEType() = delete;

    /// The type that belongs to the file's extension: from a fixed table of what web pages link, else from
    /// the desktop, else "application/octet-stream". The file is not looked at.
    static std::string forFile(const std::filesystem::path& file, const TypeRegistry& registry);
};

} // namespace corvanta
