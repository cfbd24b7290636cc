#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace corvanta {

/// The character references of HTML that an edit in the preview may touch.
struct CharacterReferences {
    CharacterReferences() = delete;

    /// The longest reference that is decoded, from "&" to ";", in characters.
    static constexpr std::size_t longest = 12;

    /// The character (a Unicode scalar value) that "&" `name` ";" stands for: "#" and a decimal number, "#x"
    /// or
    /// "#X" and a hexadecimal one, or one of 58 names. Nothing for any other name and for a number that is
    /// not a scalar value.
    static std::optional<char32_t> decoded(std::string_view name);
};

} // namespace corvanta
