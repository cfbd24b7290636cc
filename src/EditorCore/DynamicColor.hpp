#pragma once

#include "Platform/Color.hpp"

namespace corvanta {

/// How the desktop draws at the moment.
enum class Appearance { light, dark };

/// A colour whose value is chosen each time it is drawn, from the appearance in effect.
struct DynamicColor {
    Color light;
    Color dark;

    constexpr Color resolved(Appearance appearance) const {
        return appearance == Appearance::dark ? dark : light;
    }

    friend constexpr bool operator==(const DynamicColor&, const DynamicColor&) = default;
};

} // namespace corvanta
