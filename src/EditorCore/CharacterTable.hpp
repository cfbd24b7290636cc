#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta {

/// What each byte of a page's text means to the tokenizer. ASCII alone counts: a byte of any other character
/// has no class, so the answers never depend on a locale.
class CharacterTable {
public:
    /// A set of classes, one bit each.
    using Classes = std::uint16_t;

    static constexpr Classes letter = 1U << 0U;
    static constexpr Classes digit = 1U << 1U;
    static constexpr Classes hexLetter = 1U << 2U;
    static constexpr Classes underscore = 1U << 3U;
    static constexpr Classes hyphen = 1U << 4U;
    static constexpr Classes colon = 1U << 5U;
    static constexpr Classes dot = 1U << 6U;
    static constexpr Classes percent = 1U << 7U;
    /// What starts a string, a comment, a colour, a variable or the end of a script.
    static constexpr Classes mark = 1U << 8U;

    static constexpr Classes hexDigit = digit | hexLetter;
    /// Names of tags and attributes.
    static constexpr Classes nameCharacter = letter | digit | hyphen | colon | underscore;

    /// Words, variables and numbers of scripts and PHP.
    static constexpr Classes wordStart = letter | underscore;
    static constexpr Classes wordCharacter = letter | digit | underscore;
    static constexpr Classes numberCharacter = digit | dot | underscore;
    /// All that means something there.
    static constexpr Classes codeStart = wordStart | digit | mark;

    /// Words of style sheets (property names, selectors, values) and their numbers, the unit included.
    static constexpr Classes styleWordStart = letter | hyphen;
    static constexpr Classes styleWordCharacter = letter | digit | hyphen | underscore;
    static constexpr Classes styleNumberCharacter = digit | dot | underscore | letter | percent;
    /// All that means something there.
    static constexpr Classes styleStart = styleWordStart | digit | mark;

    constexpr CharacterTable() {
        add('a', 'z', letter);
        add('A', 'Z', letter);
        add('0', '9', digit);
        add('a', 'f', hexLetter);
        add('A', 'F', hexLetter);
        add('_', '_', underscore);
        add('-', '-', hyphen);
        add(':', ':', colon);
        add('.', '.', dot);
        add('%', '%', percent);
        for (const char byte : std::string_view("\"'`/<?#$"))
            add(byte, byte, mark);
    }

    constexpr bool is(char byte, Classes classes) const {
        return (classes_[static_cast<unsigned char>(byte)] & classes) != 0;
    }

    /// The end of the run of `classes` that starts at `position` of `text`; `position` itself when none does.
    constexpr std::size_t endOfRun(Classes classes, std::string_view text, std::size_t position) const {
        while (position < text.size() && is(text[position], classes))
            ++position;
        return position;
    }

    /// The position of the first byte of `classes` at or after `position` of `text`; the text's end when none
    /// comes.
    constexpr std::size_t next(Classes classes, std::string_view text, std::size_t position) const {
        while (position < text.size() && !is(text[position], classes))
            ++position;
        return position;
    }

private:
    constexpr void add(char first, char last, Classes added) {
        const auto end = std::size_t{1} + static_cast<unsigned char>(last);
        for (std::size_t byte = static_cast<unsigned char>(first); byte < end; ++byte)
            classes_[byte] = static_cast<Classes>(classes_[byte] | added);
    }

    std::array<Classes, 256> classes_{};
};

inline constexpr CharacterTable characterTable;

} // namespace corvanta
