#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace corvanta {

/// Letters of markup and of programming languages: nothing but ASCII is folded, whatever the locale.
struct ASCII {
    ASCII() = delete;

    static constexpr char lowercased(char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
    }

    static std::string lowercased(std::string_view text) {
        std::string lower(text);
        std::ranges::transform(lower, lower.begin(), [](char byte) { return lowercased(byte); });
        return lower;
    }

    /// Whether `text` is `lowercase` but for capitals; `lowercase` holds none.
    static constexpr bool equals(std::string_view text, std::string_view lowercase) {
        return text.size() == lowercase.size() &&
               std::equal(text.begin(), text.end(), lowercase.begin(),
                          [](char a, char b) { return lowercased(a) == b; });
    }
};

} // namespace corvanta
