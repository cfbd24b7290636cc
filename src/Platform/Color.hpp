#pragma once

#include <cstdint>

namespace corvanta {

/// An opaque sRGB colour, 8 bits a channel.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

} // namespace corvanta
