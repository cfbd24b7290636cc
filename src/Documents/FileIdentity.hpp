#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>

namespace corvanta {

/// Which file it is, whatever path, link or second name leads to it.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;

    /// Of what is at `path`, links followed; nothing when nothing is there.
    static std::optional<FileIdentity> of(const std::filesystem::path& path);

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Whether both paths lead to the same file, or would if there was one.
bool areSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

} // namespace corvanta
