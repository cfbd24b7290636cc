#pragma once

#include <algorithm>

namespace corvanta {

/// A part of the screen in pixels.
struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool isEmpty() const { return width <= 0 || height <= 0; }

    Rectangle intersection(const Rectangle& other) const {
        const int left = std::max(x, other.x);
        const int top = std::max(y, other.y);
        return {left, top, std::min(x + width, other.x + other.width) - left,
                std::min(y + height, other.y + other.height) - top};
    }

    bool operator==(const Rectangle&) const = default;
};

/// A part of a window in shares of its width and height, so that it fits any window.
struct RelativeRectangle {
    double left;
    double top;
    double right;
    double bottom;

    Rectangle within(const Rectangle& window) const {
        const auto across = [&](double share) { return static_cast<int>(share * window.width); };
        const auto down = [&](double share) { return static_cast<int>(share * window.height); };
        return {window.x + across(left), window.y + down(top), across(right) - across(left),
                down(bottom) - down(top)};
    }
};

/// Where the text stands and where a preview stands: beside each other, below the header and above a status
/// bar.
constexpr RelativeRectangle textPane{0.02, 0.14, 0.46, 0.92};
constexpr RelativeRectangle previewPane{0.54, 0.14, 0.98, 0.92};

} // namespace corvanta
