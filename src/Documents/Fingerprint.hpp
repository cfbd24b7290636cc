#pragma once

#include "Documents/Hash.hpp"

#include <cstdint>
#include <string_view>

namespace corvanta {

/// By what two contents are known to be the same without having both.
struct Fingerprint {
    /// In bytes.
    std::uint64_t size = 0;
    std::uint64_t hash = Hash::of({});

    static Fingerprint of(std::string_view bytes) { return {bytes.size(), Hash::of(bytes)}; }

    friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
};

} // namespace corvanta
