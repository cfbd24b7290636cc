#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvanta {

/// Operations on text in UTF-8.
struct Utf8 {
    Utf8() = delete;

    /// The number of bytes before the first one that is not ASCII.
    static std::size_t asciiPrefixLength(std::string_view bytes);

    /// The number of UTF-16 code units that `text` has. An ill-formed sequence counts like the well-formed
    /// one that starts with the same byte; stray continuation bytes count nothing.
    static std::int64_t codeUnitCount(std::string_view text);

    /// Whether `bytes` are well-formed: no overlong form, no surrogate, nothing above U+10FFFF, nothing cut
    /// off.
    static bool isValid(std::string_view bytes);

    /// `bytes` with one U+FFFD for every ill-formed sequence: for each longest start of a character that
    /// could still have become well-formed, and for each byte that starts none.
    static std::string repaired(std::string_view bytes);

    /// Appends a Unicode scalar value.
    static void append(std::string& text, char32_t character);
};

} // namespace corvanta
