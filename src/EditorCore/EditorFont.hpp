#pragma once

namespace corvanta {

/// The font of the code pane: the system's monospaced font, regular weight.
struct EditorFont {
    /// What the user can choose between, in points.
    static constexpr double smallest = 10.0;
    static constexpr double largest = 24.0;

    /// In points.
    double size = 13.0;

    friend constexpr bool operator==(const EditorFont&, const EditorFont&) = default;
};

} // namespace corvanta
