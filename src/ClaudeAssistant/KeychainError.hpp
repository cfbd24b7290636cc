#pragma once

#include <cstdint>

namespace corvanta {

/// Why the keychain did not keep a key: the value of `Keychain::Status` that it answered with.
struct KeychainError {
    std::int32_t unhandled = 0;

    friend bool operator==(const KeychainError&, const KeychainError&) = default;
};

} // namespace corvanta
