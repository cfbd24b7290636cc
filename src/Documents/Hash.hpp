#pragma once

#include <cstdint>
#include <string_view>

namespace corvanta {

/// The 64-bit hash of the XXH64 algorithm. It finds accidents, not forgeries.
struct Hash {
    Hash() = delete;

    static std::uint64_t of(std::string_view bytes, std::uint64_t seed = 0);
};

} // namespace corvanta
