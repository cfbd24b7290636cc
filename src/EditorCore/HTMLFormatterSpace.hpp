#pragma once

#include "EditorCore/ByteWord.hpp"
#include "EditorCore/ReadAhead.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvanta {

/// HTML's white space: tab, line feed, form feed, carriage return and blank. Positions count bytes.
struct HTMLFormatterSpace {
    HTMLFormatterSpace() = delete;

    static constexpr std::string_view characters = "\t\n\f\r ";

    static constexpr bool contains(char byte) {
        return byte == ' ' || (byte >= '\t' && byte <= '\r' && byte != '\v');
    }

    /// The position of the first byte at or after `position` that is not white space, or the text's end.
    static std::size_t skip(std::string_view text, std::size_t position) {
        for (; position < text.size() && contains(text[position]); ++position) {
            if (position % ReadAhead::step == 0)
                ReadAhead::from(text, position);
        }
        return position;
    }

    static bool fills(std::string_view text) { return skip(text, 0) == text.size(); }

    /// The start of the first run of white space at or after `position` that is not just one blank, or the
    /// text's end.
    static std::size_t nextToCollapse(std::string_view text, std::size_t position) {
        return nextToCollapse(text, position, text.size());
    }

    /// The end of a piece, from `position` on, that may be copied as it is. It may end early: what was just
    /// looked at is still in the processor's cache when it is copied.
    static std::size_t endOfCopy(std::string_view text, std::size_t position) {
        constexpr std::size_t longest = 16384;
        return nextToCollapse(text, position, position + std::min(longest, text.size() - position));
    }

    /// Appends `text` to `output`, which takes strings, with each run of white space made one blank.
    template <typename Output>
    static void appendCollapsed(std::string_view text, Output& output) {
        for (std::size_t position = 0; position < text.size();) {
            const std::size_t end = endOfCopy(text, position);
            output.append(text.substr(position, end - position));
            position = skip(text, end);
            if (position > end)
                output.append(" ");
        }
    }

private:
    /// The start of such a run before `limit`, or `limit`.
    static std::size_t nextToCollapse(std::string_view text, std::size_t position, std::size_t limit) {
        for (; limit - position > ByteWord::size; position += ByteWord::size) {
            ReadAhead::from(text, position);
            const ByteWord here(text.data() + position);
            const ByteWord after(text.data() + position + 1);
            const ByteWord::Marks blanks = here.equalTo(' ');
            const ByteWord::Marks marks =
                breaksAndTabs(here) | (blanks & (after.equalTo(' ') | breaksAndTabs(after)));
            if (marks != 0)
                return position + ByteWord::first(marks);
        }
        while (position < limit && !startsRunToCollapse(text, position))
            ++position;
        return position;
    }

    static ByteWord::Marks breaksAndTabs(const ByteWord& word) {
        return word.inRange('\t', '\n') | word.inRange('\f', '\r');
    }

    static bool startsRunToCollapse(std::string_view text, std::size_t position) {
        if (text[position] != ' ')
            return contains(text[position]);
        return position + 1 < text.size() && contains(text[position + 1]);
    }
};

} // namespace corvanta
