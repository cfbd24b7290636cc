#pragma once

namespace corvanta {

/// The upper left corner of what a scrolled view shows, in points from that of all it could show.
struct ScrollOrigin {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(const ScrollOrigin&, const ScrollOrigin&) = default;
};

} // namespace corvanta
