#pragma once

#include "Platform/FileDescriptor.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace corvanta {

/// A regular file opened for reading, as the body of an answer that is too large to be held in memory.
struct FileBody {
    FileDescriptor file;
    /// In bytes.
    std::uint64_t size = 0;

    /// Nothing when there is no regular file at `path` or when it may not be read. Never waits.
    static std::optional<FileBody> open(const std::filesystem::path& path);
};

} // namespace corvanta
