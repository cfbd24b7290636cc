#include "Platform/OpenedFile.hpp"

#include "Platform/SystemCall.hpp"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace corvanta {

OpenedFile::OpenedFile(FileOperations& operations, const std::filesystem::path& path, int flags, mode_t mode)
    : operations_(operations),
      descriptor_(uninterrupted([&] { return operations.open(path, flags, mode); })) {}

OpenedFile::OpenedFile(OpenedFile&& other) noexcept
    : operations_(other.operations_), descriptor_(std::exchange(other.descriptor_, -1)) {}

OpenedFile::~OpenedFile() {
    if (isOpen())
        operations_.close(descriptor_);
}

std::error_code OpenedFile::status(struct stat& status) const {
    return outcome([&] { return operations_.fstat(descriptor_, status); });
}

std::optional<std::string> OpenedFile::readAll(std::error_code& error) const {
    struct stat status {};
    error = this->status(status);
    if (error)
        return std::nullopt;

    // One byte more than the size, so that the end of a file that did not grow is seen without another
    // buffer.
    std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = uninterrupted(
            [&] { return operations_.read(descriptor_, bytes.data() + length, bytes.size() - length); });
        if (count < 0) {
            error = lastError();
            return std::nullopt;
        }
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
        if (length == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.resize(length);
    return bytes;
}

std::error_code OpenedFile::writeAll(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count =
            uninterrupted([&] { return operations_.write(descriptor_, bytes.data(), bytes.size()); });
        if (count < 0)
            return lastError();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

std::error_code OpenedFile::truncate(std::size_t size) const {
    return outcome([&] { return operations_.ftruncate(descriptor_, static_cast<off_t>(size)); });
}

std::error_code OpenedFile::sync() const {
    return outcome([&] { return operations_.fsync(descriptor_); });
}

std::error_code OpenedFile::syncData() const {
    return outcome([&] { return operations_.fdatasync(descriptor_); });
}

std::error_code OpenedFile::close() {
    // An interrupted close has closed the file all the same.
    const bool closed = operations_.close(std::exchange(descriptor_, -1)) == 0;
    return closed || errno == EINTR ? std::error_code() : lastError();
}

std::error_code syncFolder(FileOperations& operations, const std::filesystem::path& folder) {
    const OpenedFile file(operations, folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (!file.isOpen())
        return {};
    const std::error_code error = file.sync();
    const bool unknown = error == std::errc::invalid_argument || error == std::errc::not_supported;
    return unknown ? std::error_code() : error;
}

} // namespace corvanta
