#pragma once

#include <cerrno>
#include <system_error>

namespace corvanta {

/// Why the last system call of this thread failed.
inline std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// Calls a system call again as long as a signal interrupts it.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// The outcome of a system call that answers with zero; it is called again as long as a signal interrupts it.
template <typename Call>
std::error_code outcome(Call call) {
    return uninterrupted(call) == 0 ? std::error_code() : lastError();
}

} // namespace corvanta
