#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvanta {

/// One character of a text in UTF-8, to ask Unicode's tables about it.
struct Utf8Character {
    /// The code point; U+FFFD for a byte that belongs to no character.
    char32_t value = U'\uFFFD';

    /// In bytes.
    std::size_t size = 1;

    /// The character at the start of `text`, which is not empty. Meant for well-formed text; any other one is
    /// read without harm.
    static constexpr Utf8Character first(std::string_view text) {
        const auto lead = static_cast<unsigned char>(text.front());
        if (lead < 0x80)
            return {lead, 1};
        const std::size_t size = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (size == 1 || size > text.size() || lead > 0xF4)
            return {};
        // Without a loop, whose end the processor would guess wrong where scripts mix.
        const bool isWhole =
            isContinuation(text[1]) && isContinuation(text[size / 2]) && isContinuation(text[size - 1]);
        if (!isWhole)
            return {};
        const auto bits = [text](std::size_t index) {
            return static_cast<char32_t>(static_cast<unsigned char>(text[index]) & 0x3FU);
        };
        const char32_t start = (lead & (0x7FU >> size)) << 6U | bits(1);
        if (size == 2)
            return {start, size};
        return {size == 3 ? start << 6U | bits(2) : start << 12U | bits(2) << 6U | bits(3), size};
    }

    /// The same for the character at the end of `text`.
    static constexpr Utf8Character last(std::string_view text) {
        constexpr std::size_t longest = 4;
        for (std::size_t size = 1; size <= std::min(longest, text.size()); ++size) {
            if (isContinuation(text[text.size() - size]))
                continue;
            const Utf8Character character = first(text.substr(text.size() - size));
            return character.size == size ? character : Utf8Character{};
        }
        return {};
    }

private:
    static constexpr bool isContinuation(char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    }
};

} // namespace corvanta
