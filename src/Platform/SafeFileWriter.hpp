#pragma once

#include "Platform/FileOperations.hpp"

#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace corvanta {

/// Saves a file so that at every moment either the whole old or the whole new content is on the disk.
struct SafeFileWriter {
    SafeFileWriter() = delete;

    /// Puts the new content on the disk in another place. Called before an old file is overwritten, which is
    /// not done when it fails.
    using KeepCopy = std::function<std::error_code()>;

    /// Makes `bytes` the content of the regular file that `file` names, symbolic links followed; a file that
    /// does not exist yet is made, also behind a link that leads nowhere. An old file keeps its owner, mode
    /// and extended attributes (access control lists are such), a new one receives what the umask and its
    /// folder prescribe. After success the content has reached the disk.
    ///
    /// The content is written to a hidden file beside the old one, which it then replaces. Only where that
    /// would lose something (the file has several names, its owner or attributes cannot be kept, its folder
    /// takes no new file) is the old file overwritten instead, after `keepCopy` has made the content last
    /// elsewhere and the room that it needs has been reserved.
    ///
    /// On failure the result says why and, as far as the disk lets itself be cleaned up, nothing is left
    /// behind; the old file is as it was, unless overwriting it failed halfway. A failure to make the new
    /// name last comes after the file was replaced. A file that may not be written is refused with
    /// `std::errc::permission_denied`, although it could be replaced, and something else than a regular file
    /// (a folder, a device, a pipe) with `std::errc::not_supported`.
    static std::error_code write(FileOperations& operations, const std::filesystem::path& file,
                                 std::string_view bytes, const KeepCopy& keepCopy);

    /// The same by the real system calls and without a copy elsewhere.
    static std::error_code write(const std::filesystem::path& file, std::string_view bytes);
};

} // namespace corvanta
