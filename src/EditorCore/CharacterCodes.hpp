#pragma once

#include "EditorCore/CharacterProperties.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvanta {

/// Gives every character (grapheme cluster) a number, so that texts are compared number by number. Characters
/// that are canonically equivalent get the same one: a page that writes "ü" as a u and a diaeresis and a page
/// that writes it as one code point show the same, and an input method need not type it as the file has it.
class CharacterCodes {
public:
    /// The code of every character that was never added; no added one has it.
    static constexpr char32_t unknown = 0xFFFFFFFF;

    /// The code of a line end of CR LF: behind the last code point.
    static constexpr char32_t carriageReturnLineFeed = 0x110000;

    /// Whether `character`, when nothing joins it, is its own code: unless it is only another way to write
    /// something else. Nothing before U+0340 is.
    static bool isOwnCode(char32_t character) {
        return character < 0x340 || CharacterProperties::of(character).isCanonical();
    }

    /// The codes of the characters of `text` (UTF-8), in order.
    std::vector<char32_t> add(std::string_view text);

    /// The code of one character.
    char32_t find(std::string_view grapheme) const;

    /// The code of the single code point `character`.
    char32_t find(char32_t character) const;

private:
    /// A character that was met, and its code at the time.
    struct Met {
        std::string grapheme;
        char32_t code = unknown;
        /// How many clusters were known.
        std::size_t knownClusters = 0;
    };

    char32_t codeOfCanonical(const std::string& canonical) const;
    char32_t addCluster(const std::string& canonical);

    /// The characters of more than one code point, in their canonical form.
    std::unordered_map<std::string, char32_t> clusters_;

    /// To find a canonical form takes long, and texts are made of the same few hundred characters. Each has
    /// one place here, which the next one with the same hash takes.
    mutable std::array<Met, 1024> met_{};
};

} // namespace corvanta
