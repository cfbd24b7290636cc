#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvanta {

/// Characters as people count them: extended grapheme clusters (Unicode Standard Annex #29) of UTF-8 text. A
/// letter with its accents is one, a flag, a family of joined emoji, and a line end of CR LF. Offsets are in
/// bytes; an ill-formed byte counts as one character that nothing joins.
struct Graphemes {
    Graphemes() = delete;

    /// The longest cluster, in bytes, that is normalised. Text that is meant to be read holds none that is
    /// nearly as long, and the time to sort the accents of one letter grows with the square of their number.
    static constexpr std::size_t longestNormalised = 256;

    /// The end of the cluster that starts at `position`, which is before the end of `text`.
    static std::size_t end(std::string_view text, std::size_t position) {
        const std::size_t end = position + plainLength(text, position);
        return end > position && (end == text.size() || plainLength(text, end) > 0)
                   ? end
                   : endOfAnyKind(text, position);
    }

    /// How many clusters `text` has.
    static std::size_t count(std::string_view text) {
        std::size_t clusters = 0;
        for (std::size_t position = 0; position < text.size(); position = end(text, position))
            ++clusters;
        return clusters;
    }

    /// Whether the character at `position`, an ASCII one but no control character, is a whole cluster:
    /// nothing before or after it joins it.
    static bool isAlone(std::string_view text, std::size_t position) {
        const std::size_t next = position + 1;
        const bool isBetweenASCII =
            (position == 0 || isASCII(text[position - 1])) && (next == text.size() || isASCII(text[next]));
        return isBetweenASCII || isAloneAmongOthers(text, position);
    }

    /// Normalization form C of a cluster: the same for those that are canonically equivalent, such as "ü" as
    /// one code point and as a u with a diaeresis. A cluster above `longestNormalised` is given back as it
    /// is.
    static std::string canonical(std::string_view grapheme);

private:
    /// The length of the character at `position` if its first byte tells that nothing else than an accent or
    /// the like ever joins it: ASCII but the carriage return, Latin letters up to U+02FF, ideographs from
    /// U+4000. Otherwise 0. These are most of every page, and need no look-up in Unicode's tables.
    static std::size_t plainLength(std::string_view text, std::size_t position) {
        const auto lead = static_cast<unsigned char>(text[position]);
        if (lead < 0x80)
            return lead == '\r' ? 0 : 1;
        const std::size_t length = lead >= 0xC3 && lead <= 0xCB ? 2 : lead >= 0xE4 && lead <= 0xE9 ? 3 : 0;
        if (length == 0 || length > text.size() - position || !isContinuation(text[position + 1]) ||
            !isContinuation(text[position + length - 1]))
            return 0;
        return length;
    }

    static bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

    static bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

    static bool isAloneAmongOthers(std::string_view text, std::size_t position);

    static std::size_t endOfAnyKind(std::string_view text, std::size_t position);
};

} // namespace corvanta
