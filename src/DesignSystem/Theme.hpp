#pragma once

#include "DesignSystem/Schriftart.hpp"
#include "Platform/Color.hpp"

namespace corvanta {

/// The colours and fonts of the program.
struct Theme {
    Theme() = delete;

    static constexpr Color anthracite{20, 20, 20};
    static constexpr Color silver{142, 144, 146};
    static constexpr Color accentGreen{132, 189, 0};

    /// The system's fonts. Sizes are in points.
    struct Typography {
        Typography() = delete;

        /// For code.
        static constexpr Schriftart editor(double size) {
            return {size, Schriftart::Gewicht::regular, Schriftart::Form::dicktengleich};
        }

        /// For the interface.
        static constexpr Schriftart ui(double size, Schriftart::Gewicht weight) { return {size, weight}; }
    };
};

} // namespace corvanta
