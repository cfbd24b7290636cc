#include "Documents/FileIdentity.hpp"

#include <sys/stat.h>

#include <system_error>

namespace corvanta {

namespace {

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path result = std::filesystem::weakly_canonical(path, error);
    return error ? path.lexically_normal() : result;
}

} // namespace

std::optional<FileIdentity> FileIdentity::of(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

bool areSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    const auto identity = FileIdentity::of(one);
    if (identity && identity == FileIdentity::of(other))
        return true;
    return resolved(one) == resolved(other);
}

} // namespace corvanta
