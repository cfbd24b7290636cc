#pragma once

namespace corvanta {

/// How far a page is scrolled, in the page's pixels.
struct ScrollOffset {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(const ScrollOffset&, const ScrollOffset&) = default;
};

} // namespace corvanta
