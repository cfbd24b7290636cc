#pragma once

#include "Platform/FileOperations.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace corvanta {

/// A file opened through file operations, and closed with this object. Interrupted calls are repeated and
/// short ones continued.
class OpenedFile {
public:
    /// Check `isOpen`; when it is not, errno says why. `operations` outlives the file.
    OpenedFile(FileOperations& operations, const std::filesystem::path& path, int flags, mode_t mode = 0);
    OpenedFile(OpenedFile&& other) noexcept;
    OpenedFile& operator=(OpenedFile&&) = delete;
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    ~OpenedFile();

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

    std::error_code status(struct stat& status) const;

    /// Everything from the current position to the end.
    std::optional<std::string> readAll(std::error_code& error) const;

    /// On a failure a part may have been written.
    std::error_code writeAll(std::string_view bytes) const;

    std::error_code truncate(std::size_t size) const;

    /// Returns when content and status have reached the disk.
    std::error_code sync() const;

    /// Returns when the content and what is needed to read it have reached the disk.
    std::error_code syncData() const;

    /// Closes now, for the one caller that must know whether the last write arrived.
    std::error_code close();

private:
    FileOperations& operations_;
    int descriptor_;
};

/// Makes the names in `folder` last. A folder that cannot be opened for reading, or a file system that syncs
/// no folders, is no failure.
std::error_code syncFolder(FileOperations& operations, const std::filesystem::path& folder);

} // namespace corvanta
