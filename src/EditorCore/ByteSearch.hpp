#pragma once

#include "EditorCore/ByteWord.hpp"
#include "EditorCore/ReadAhead.hpp"

#include <cstddef>
#include <string_view>

namespace corvanta {

/// Searches for one of several ASCII characters, eight bytes at a time.
struct ByteSearch {
    ByteSearch() = delete;

    /// The position of the first of `characters` at or after `position` of `text`, or the text's end.
    template <typename... Characters>
    static std::size_t next(std::string_view text, std::size_t position, Characters... characters) {
        for (; position + ByteWord::size <= text.size(); position += ByteWord::size) {
            ReadAhead::from(text, position);
            const ByteWord word(text.data() + position);
            const ByteWord::Marks marks = (word.equalTo(characters) | ...);
            if (marks != 0)
                return position + ByteWord::first(marks);
        }
        while (position < text.size() && ((text[position] != characters) && ...))
            ++position;
        return position;
    }

    /// The position after the first `sign` (ASCII, not empty) that starts at or after
    /// `position` of `text`, or the text's end. Looks for its last character, which a text is less likely to
    /// be full of than of the first ones.
    static std::size_t endAfter(std::string_view sign, std::string_view text, std::size_t position) {
        std::size_t last = position + sign.size() - 1;
        while ((last = next(text, last, sign.back())) < text.size()) {
            ++last;
            if (text.substr(0, last).ends_with(sign))
                return last;
        }
        return text.size();
    }
};

} // namespace corvanta
