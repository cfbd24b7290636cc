#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// The encodings that files are read in. Each takes the bytes of a whole text, byte-order marks being
/// characters like any other, and gives the text in UTF-8; or nothing when one byte does not belong to it.
/// Nothing is ever replaced.
struct CharacterEncoding {
    CharacterEncoding() = delete;

    static std::optional<std::string> utf8(std::string_view bytes);

    /// Nothing for an odd number of bytes and for a surrogate that stands alone.
    static std::optional<std::string> utf16LittleEndian(std::string_view bytes);
    static std::optional<std::string> utf16BigEndian(std::string_view bytes);

    /// Nothing when one of the five bytes occurs that stand for no character: 81, 8D, 8F, 90 and 9D.
    static std::optional<std::string> windows1252(std::string_view bytes);

    /// ISO 8859-1 with its control characters, which takes everything.
    static std::optional<std::string> latin1(std::string_view bytes);

    /// With the euro sign and, at F0, Apple's logo (U+F8FF). Takes everything.
    static std::optional<std::string> macOSRoman(std::string_view bytes);
};

} // namespace corvanta
