#include "Tools/Input.hpp"

#include "EditorCore/TextDecoding.hpp"
#include "Platform/FileDescriptor.hpp"
#include "Tools/Errors.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace {

constexpr std::string_view standardInputName = "standard input";
constexpr std::size_t chunkSize = std::size_t{1} << 16U;

[[noreturn]] void failWithLastError(std::string_view name) {
    throw Failure(fmt::format("{}: {}", name, std::generic_category().message(errno)));
}

/// Appends the next bytes of `descriptor` to `bytes`. False at the end.
bool readChunk(int descriptor, std::string_view name, std::string& bytes) {
    const std::size_t length = bytes.size();
    bytes.resize(length + chunkSize);
    ssize_t count = 0;
    do {
        count = ::read(descriptor, bytes.data() + length, chunkSize);
    } while (count < 0 && errno == EINTR);
    if (count < 0)
        failWithLastError(name);
    bytes.resize(length + static_cast<std::size_t>(count));
    return count > 0;
}

std::string readBytes(int descriptor, std::string_view name) {
    std::string bytes;
    while (readChunk(descriptor, name, bytes)) {
    }
    return bytes;
}

} // namespace

std::string readText(const std::optional<std::string>& file) {
    if (!file || *file == "-")
        return TextDecoding::string(readBytes(STDIN_FILENO, standardInputName));

    const FileDescriptor descriptor(::open(file->c_str(), O_RDONLY | O_CLOEXEC));
    if (!descriptor.isOpen())
        failWithLastError(*file);
    return TextDecoding::string(readBytes(descriptor.get(), *file));
}

std::optional<std::string> InputLines::next() {
    std::size_t searched = start_;
    std::size_t end = 0;
    while ((end = buffer_.find('\n', searched)) == std::string::npos && !isAtEnd_) {
        buffer_.erase(0, start_);
        start_ = 0;
        searched = buffer_.size();
        isAtEnd_ = !readChunk(STDIN_FILENO, standardInputName, buffer_);
    }
    if (end == std::string::npos && start_ == buffer_.size())
        return std::nullopt;

    std::string line = buffer_.substr(start_, end - start_);
    start_ = end == std::string::npos ? buffer_.size() : end + 1;
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

} // namespace corvanta
