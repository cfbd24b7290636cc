#pragma once

#include <cstdint>

namespace corvanta {

/// One of the system's fonts in a size and a weight.
struct Schriftart {
    enum class Form : std::uint8_t { standard, dicktengleich };

    /// The values are the weights of style sheets.
    enum class Gewicht : std::uint16_t { light = 300, regular = 400, medium = 500, semibold = 600 };

    /// In points.
    double groesse;

    Gewicht gewicht = Gewicht::regular;
    Form form = Form::standard;

    friend constexpr bool operator==(const Schriftart&, const Schriftart&) = default;
};

} // namespace corvanta
