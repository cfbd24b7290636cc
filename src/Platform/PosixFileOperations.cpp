#include "Platform/PosixFileOperations.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

namespace corvanta {

int PosixFileOperations::open(const std::filesystem::path& path, int flags, mode_t mode) {
    return ::open(path.c_str(), flags, mode);
}

int PosixFileOperations::close(int descriptor) {
    return ::close(descriptor);
}

ssize_t PosixFileOperations::read(int descriptor, void* bytes, std::size_t size) {
    return ::read(descriptor, bytes, size);
}

ssize_t PosixFileOperations::write(int descriptor, const void* bytes, std::size_t size) {
    return ::write(descriptor, bytes, size);
}

int PosixFileOperations::ftruncate(int descriptor, off_t size) {
    return ::ftruncate(descriptor, size);
}

int PosixFileOperations::fallocate(int descriptor, off_t size) {
    return ::fallocate(descriptor, 0, 0, size);
}

int PosixFileOperations::fsync(int descriptor) {
    return ::fsync(descriptor);
}

int PosixFileOperations::fdatasync(int descriptor) {
    return ::fdatasync(descriptor);
}

int PosixFileOperations::flock(int descriptor, int operation) {
    return ::flock(descriptor, operation);
}

int PosixFileOperations::fstat(int descriptor, struct stat& status) {
    return ::fstat(descriptor, &status);
}

int PosixFileOperations::fchown(int descriptor, uid_t owner, gid_t group) {
    return ::fchown(descriptor, owner, group);
}

int PosixFileOperations::fchmod(int descriptor, mode_t mode) {
    return ::fchmod(descriptor, mode);
}

ssize_t PosixFileOperations::flistxattr(int descriptor, char* list, std::size_t size) {
    return ::flistxattr(descriptor, list, size);
}

ssize_t PosixFileOperations::fgetxattr(int descriptor, const char* name, void* value, std::size_t size) {
    return ::fgetxattr(descriptor, name, value, size);
}

int PosixFileOperations::fsetxattr(int descriptor, const char* name, const void* value, std::size_t size) {
    return ::fsetxattr(descriptor, name, value, size, 0);
}

int PosixFileOperations::fremovexattr(int descriptor, const char* name) {
    return ::fremovexattr(descriptor, name);
}

int PosixFileOperations::lstat(const std::filesystem::path& path, struct stat& status) {
    return ::lstat(path.c_str(), &status);
}

ssize_t PosixFileOperations::readlink(const std::filesystem::path& path, char* target, std::size_t size) {
    return ::readlink(path.c_str(), target, size);
}

int PosixFileOperations::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
    return ::rename(from.c_str(), to.c_str());
}

int PosixFileOperations::unlink(const std::filesystem::path& path) {
    return ::unlink(path.c_str());
}

int PosixFileOperations::mkdir(const std::filesystem::path& path, mode_t mode) {
    return ::mkdir(path.c_str(), mode);
}

int PosixFileOperations::rmdir(const std::filesystem::path& path) {
    return ::rmdir(path.c_str());
}

std::optional<std::vector<std::string>> PosixFileOperations::entries(const std::filesystem::path& path) {
    const auto closeFolder = [](DIR* folder) { ::closedir(folder); };
    const std::unique_ptr<DIR, decltype(closeFolder)> folder(::opendir(path.c_str()), closeFolder);
    if (!folder)
        return std::nullopt;
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    return errno == 0 ? std::optional(std::move(names)) : std::nullopt;
}

} // namespace corvanta
