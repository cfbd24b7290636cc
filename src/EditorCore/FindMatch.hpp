#pragma once

#include <cstdint>

namespace corvanta {

/// A place where something was found, in bytes from the start of the text.
struct FindMatch {
    std::int64_t first = 0;
    std::int64_t last = 0;

    friend constexpr bool operator==(const FindMatch&, const FindMatch&) = default;
};

} // namespace corvanta
