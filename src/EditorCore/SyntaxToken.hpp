#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvanta {

/// The kinds of text that the editor colours.
enum class SyntaxToken : std::uint8_t { tag, attribute, string, comment, keyword, number };

/// Every kind, in order.
inline constexpr std::array allCases{SyntaxToken::tag,     SyntaxToken::attribute, SyntaxToken::string,
                                     SyntaxToken::comment, SyntaxToken::keyword,   SyntaxToken::number};

/// The place of a kind in `allCases`, for tables with an entry a kind.
constexpr std::size_t index(SyntaxToken token) {
    return static_cast<std::size_t>(token);
}

} // namespace corvanta
