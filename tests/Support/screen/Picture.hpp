#pragma once

#include "Support/screen/Rectangle.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvanta {

/// The pixels (0xRRGGBB) of a part of the screen, row by row.
struct Picture {
    Rectangle area;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y - area.y) * static_cast<std::size_t>(area.width) +
                      static_cast<std::size_t>(x - area.x)];
    }

    /// Whether the part of this picture that `other` shows looks otherwise there. `other` lies within this
    /// one.
    bool differsFrom(const Picture& other) const {
        for (int y = other.area.y; y < other.area.y + other.area.height; ++y) {
            for (int x = other.area.x; x < other.area.x + other.area.width; ++x) {
                if (at(x, y) != other.at(x, y))
                    return true;
            }
        }
        return false;
    }

    bool operator==(const Picture&) const = default;
};

} // namespace corvanta
