#pragma once

#include <cstdint>

namespace corvanta {

/// One place in a text in the three ways of counting that meet in the code pane: bytes of UTF-8 (the text in
/// memory), code points (the toolkit's text buffer) and UTF-16 code units (ranges exchanged with the text
/// view).
struct TextPosition {
    std::int64_t byte = 0;
    std::int64_t codePoint = 0;
    std::int64_t codeUnit = 0;

    friend constexpr bool operator==(const TextPosition&, const TextPosition&) = default;
};

} // namespace corvanta
