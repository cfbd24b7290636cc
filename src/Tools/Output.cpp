#include "Tools/Output.hpp"

#include "Tools/Errors.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>

namespace corvanta {

namespace {

/// What is kept before it is handed over, in bytes.
constexpr std::size_t chunkSize = std::size_t{1} << 16U;

[[noreturn]] void failWithLastError() {
    throw Failure(fmt::format("standard output: {}", std::generic_category().message(errno)));
}

} // namespace

void Output::write(std::string_view text) {
    pending_ += text;
    if (pending_.size() >= chunkSize)
        flush();
}

void Output::flush() {
    std::string_view rest = pending_;
    while (!rest.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (count >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            failWithLastError();
        }
    }
    pending_.clear();
}

void Output::finish() {
    flush();
    if (::close(STDOUT_FILENO) != 0)
        failWithLastError();
}

} // namespace corvanta
