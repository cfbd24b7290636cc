#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace corvanta {

/// What takes the place of a placeholder in a text: a text in UTF-8 or a number.
class Textwert {
public:
    template <typename Wert>
    requires std::convertible_to<const Wert&, std::string_view> Textwert(const Wert& wert)
        : wert_(std::string(std::string_view(wert))) {}
    template <std::integral Wert>
    Textwert(Wert wert) : wert_(static_cast<std::int64_t>(wert)) {}
    template <std::floating_point Wert>
    Textwert(Wert wert) : wert_(static_cast<double>(wert)) {}

    /// As text; a number with as many decimal places as it needs.
    std::string text() const;

    /// As a whole number, what is behind the point cut off. A text stays a text.
    std::string ganzzahl() const;

    /// With this many decimal places. A text stays a text.
    std::string kommazahl(int stellen) const;

private:
    std::variant<std::string, std::int64_t, double> wert_;
};

} // namespace corvanta
