#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// A universally unique identifier as of RFC 9562.
class UUID {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    /// A fresh random one (version 4).
    UUID();

    explicit UUID(const Bytes& bytes) : bytes_(bytes) {}

    /// Reads the form with hyphens, "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6", in either case; nothing for any
    /// other text.
    static std::optional<UUID> parse(std::string_view text);

    /// The form with hyphens, in capitals.
    std::string text() const;

    const Bytes& bytes() const { return bytes_; }

    friend auto operator<=>(const UUID&, const UUID&) = default;

private:
    Bytes bytes_;
};

} // namespace corvanta
