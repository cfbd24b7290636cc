#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The system calls by which user data reaches the disk, as something handed in: a test can let any of them
/// fail or be the last before the power goes. Each behaves like the call of its name: a negative result is a
/// failure with the reason in errno, and a signal may interrupt it (EINTR).
class FileOperations {
public:
    FileOperations() = default;
    FileOperations(const FileOperations&) = delete;
    FileOperations& operator=(const FileOperations&) = delete;
    virtual ~FileOperations() = default;

    /// `mode` matters when `flags` make a new file, and is subject to the umask then.
    virtual int open(const std::filesystem::path& path, int flags, mode_t mode) = 0;
    virtual int close(int descriptor) = 0;

    virtual ssize_t read(int descriptor, void* bytes, std::size_t size) = 0;
    virtual ssize_t write(int descriptor, const void* bytes, std::size_t size) = 0;
    virtual int ftruncate(int descriptor, off_t size) = 0;
    /// Claims room for the first `size` bytes and makes the file at least that long.
    virtual int fallocate(int descriptor, off_t size) = 0;
    virtual int fsync(int descriptor) = 0;
    virtual int fdatasync(int descriptor) = 0;
    virtual int flock(int descriptor, int operation) = 0;

    virtual int fstat(int descriptor, struct stat& status) = 0;
    virtual int fchown(int descriptor, uid_t owner, gid_t group) = 0;
    virtual int fchmod(int descriptor, mode_t mode) = 0;
    virtual ssize_t flistxattr(int descriptor, char* list, std::size_t size) = 0;
    virtual ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) = 0;
    virtual int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size) = 0;
    virtual int fremovexattr(int descriptor, const char* name) = 0;

    virtual int lstat(const std::filesystem::path& path, struct stat& status) = 0;
    virtual ssize_t readlink(const std::filesystem::path& path, char* target, std::size_t size) = 0;
    virtual int rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    virtual int unlink(const std::filesystem::path& path) = 0;
    virtual int mkdir(const std::filesystem::path& path, mode_t mode) = 0;
    virtual int rmdir(const std::filesystem::path& path) = 0;

    /// The names in the folder at `path` in no order, without "." and "..", or nothing on a failure.
    virtual std::optional<std::vector<std::string>> entries(const std::filesystem::path& path) = 0;
};

} // namespace corvanta
