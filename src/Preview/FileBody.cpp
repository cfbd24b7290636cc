#include "Preview/FileBody.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

namespace corvanta {

std::optional<FileBody> FileBody::open(const std::filesystem::path& path) {
    // O_NONBLOCK so that a pipe that took the file's place cannot hold the program up.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileBody{std::move(file), static_cast<std::uint64_t>(status.st_size)};
}

} // namespace corvanta
