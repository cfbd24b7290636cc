#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace corvanta {

/// The texts that the program says of itself, in German, which is what they are looked up under.
struct Textkatalog {
    Textkatalog() = delete;

    static constexpr std::size_t anzahl = 78;

    /// In the order in which they came into being. The view that shows a text has the same literal.
    static const std::array<std::string_view, anzahl> alle;
};

} // namespace corvanta
