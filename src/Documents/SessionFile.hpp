#pragma once

#include "Documents/Session.hpp"
#include "Platform/FileOperations.hpp"

#include <filesystem>
#include <system_error>

namespace corvanta {

/// Where a session is kept, as JSON.
struct SessionFile {
    SessionFile() = delete;

    /// What can be read of the session at `path`; an empty one when there is nothing. What is no JSON is set
    /// aside under another name.
    static Session read(FileOperations& operations, const std::filesystem::path& path);

    /// Replaces the session at `path`. Waits for the disk. A window whose file has a name that is no UTF-8 is
    /// left out.
    static std::error_code write(FileOperations& operations, const std::filesystem::path& path,
                                 const Session& session);
};

} // namespace corvanta
