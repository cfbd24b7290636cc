#pragma once

namespace corvanta {

/// Lengths of the interface, in points.
struct Mass {
    Mass() = delete;

    static constexpr int haar = 2;
    static constexpr int eng = 4;
    static constexpr int knapp = 6;
    static constexpr int klein = 8;
    static constexpr int mittel = 12;
    static constexpr int gross = 16;
    static constexpr int rand = 20;
    static constexpr int block = 24;
    static constexpr int weit = 32;

    /// Radius of a corner.
    static constexpr int ecke = 10;
    static constexpr int eckeKlein = 7;
};

} // namespace corvanta
