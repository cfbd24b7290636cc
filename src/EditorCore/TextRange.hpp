#pragma once

#include <cstdint>

namespace corvanta {

/// A range of a text, counted in UTF-16 code units from the start of the text.
struct TextRange {
    std::int64_t location = 0;
    std::int64_t length = 0;

    constexpr std::int64_t end() const { return location + length; }

    friend constexpr bool operator==(const TextRange&, const TextRange&) = default;
};

} // namespace corvanta
