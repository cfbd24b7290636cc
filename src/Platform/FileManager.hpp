#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace corvanta {

/// What the program asks of the file system besides saving a document. Paths are absolute.
class FileManager {
public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager() = default;

    /// The bytes of the regular file at `path`, read whole, links followed. Nothing when it cannot be read,
    /// and then `error` says why; `std::errc::not_supported` means that something else than a regular file (a
    /// folder, a device, a pipe) lies there. Never waits for a pipe's writer.
    virtual std::optional<std::string> contents(const std::filesystem::path& path,
                                                std::error_code& error) const = 0;

    /// The size in bytes of the regular file at `path`, or nothing.
    virtual std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) const = 0;

    /// The paths of everything directly inside the folder at `path`, hidden entries too, in the order of
    /// their names' bytes. Nothing when the folder cannot be listed.
    virtual std::optional<std::vector<std::filesystem::path>>
    contentsOfFolder(const std::filesystem::path& path) const = 0;

    /// Whether the entries of the folder at `path` may be listed.
    virtual bool isListable(const std::filesystem::path& path) const = 0;

    /// `path` with "." and ".." resolved and, as far as it exists, with symbolic links followed.
    virtual std::filesystem::path resolvingSymlinks(const std::filesystem::path& path) const = 0;
};

} // namespace corvanta
