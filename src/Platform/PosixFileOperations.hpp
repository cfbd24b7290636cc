#pragma once

#include "Platform/FileOperations.hpp"

namespace corvanta {

/// The real system calls. Has no state: any number of objects, used on any thread, are the same.
class PosixFileOperations final : public FileOperations {
public:
    int open(const std::filesystem::path& path, int flags, mode_t mode) override;
    int close(int descriptor) override;
    ssize_t read(int descriptor, void* bytes, std::size_t size) override;
    ssize_t write(int descriptor, const void* bytes, std::size_t size) override;
    int ftruncate(int descriptor, off_t size) override;
    int fallocate(int descriptor, off_t size) override;
    int fsync(int descriptor) override;
    int fdatasync(int descriptor) override;
    int flock(int descriptor, int operation) override;
    int fstat(int descriptor, struct stat& status) override;
    int fchown(int descriptor, uid_t owner, gid_t group) override;
    int fchmod(int descriptor, mode_t mode) override;
    ssize_t flistxattr(int descriptor, char* list, std::size_t size) override;
    ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) override;
    int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size) override;
    int fremovexattr(int descriptor, const char* name) override;
    int lstat(const std::filesystem::path& path, struct stat& status) override;
    ssize_t readlink(const std::filesystem::path& path, char* target, std::size_t size) override;
    int rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    int unlink(const std::filesystem::path& path) override;
    int mkdir(const std::filesystem::path& path, mode_t mode) override;
    int rmdir(const std::filesystem::path& path) override;
    std::optional<std::vector<std::string>> entries(const std::filesystem::path& path) override;
};

} // namespace corvanta
