#pragma once

#include "EditorCore/CharacterCodes.hpp"
#include "EditorCore/CharacterProperties.hpp"
#include "EditorCore/CharacterTable.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <cstddef>
#include <optional>
#include <string_view>

namespace corvanta {

/// Reads the text between two pieces of markup as the browser shows it: character by character, a character
/// reference as the one character that it stands for. A no-break space reads as a blank: design mode types
/// the one for the other.
class DecodedTextReader {
public:
    static constexpr char32_t blank = U' ';
    static constexpr char32_t noBreakSpace = U'\u00A0';

    /// Both must outlive the reader.
    DecodedTextReader(std::string_view source, const CharacterCodes& codes)
        : source_(source), codes_(codes) {}

    /// Calls `visit` with the code of one character after another and the byte of the source at which it
    /// ends, from `position` on, where a character of the text starts, as long as it answers true.
    template <typename Visit>
    void forEach(std::size_t position, Visit visit) const {
        CodePoint first = codePointAt(position);
        while (position < source_.size()) {
            Character character{first.code, position + first.size};
            CodePoint second = codePointAt(character.end);
            if (!first.isPlain || !second.isIndependent) {
                character = characterOfAnyKind(position);
                second = codePointAt(character.end);
            }
            if (!visit(character.code, character.end))
                return;
            position = character.end;
            first = second;
        }
    }

private:
    /// What can be told of a code point, or a line end of CR LF, before the ones around it are known.
    struct CodePoint {
        char32_t code = 0;
        /// In bytes; 0 at the end of the source.
        std::size_t size = 0;
        /// Whether nothing independent before it joins it.
        bool isIndependent = true;
        /// Whether `code` is that of the character, if nothing joins it from behind.
        bool isPlain = false;
    };

    struct Character {
        char32_t code = 0;
        std::size_t end = 0;
    };

    static char32_t withBlank(char32_t code) { return code == noBreakSpace ? blank : code; }

    CodePoint codePointAt(std::size_t position) const {
        if (position == source_.size())
            return {};
        const auto first = static_cast<unsigned char>(source_[position]);
        if (first < 0x80)
            return asciiAt(position, first);
        const Utf8Character character = Utf8Character::first(source_.substr(position));
        const auto properties = CharacterProperties::of(character.value);
        return {withBlank(character.value), character.size, properties.isIndependent(),
                properties.isIndependent() && properties.isCanonical()};
    }

    CodePoint asciiAt(std::size_t position, unsigned char first) const {
        if (first == '\r' && source_.substr(position + 1).starts_with('\n'))
            return {CharacterCodes::carriageReturnLineFeed, 2, true, true};
        return {first, 1, true, first != '&' || !mayStartReference(position)};
    }

    /// Whether the "&" at `position` is followed by what may be a reference's name.
    bool mayStartReference(std::size_t position) const {
        const std::size_t next = position + 1;
        return next < source_.size() &&
               (source_[next] == '#' || characterTable.is(source_[next], CharacterTable::letter));
    }

    Character characterOfAnyKind(std::size_t position) const;

    /// The character that the reference stands for that the "&" at `position` starts, if it starts one.
    std::optional<Character> referenceAt(std::size_t position) const;

    std::string_view source_;
    const CharacterCodes& codes_;
};

} // namespace corvanta
