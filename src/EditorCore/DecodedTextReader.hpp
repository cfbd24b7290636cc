#pragma once

#include "EditorCore/CharacterCodes.hpp"

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

    /// Starts at `position`, where a character of the text starts. Both texts must outlive the reader.
    DecodedTextReader(std::string_view source, std::size_t position, const CharacterCodes& codes)
        : source_(source), codes_(codes), position_(position) {}

    /// The byte of the source at which the next character starts.
    std::size_t position() const { return position_; }

    /// The code of the next character, which must not be the end of the source.
    char32_t next() {
        const auto first = static_cast<unsigned char>(source_[position_]);
        if (first >= 0x80 || first == '&' || first == '\r' || !isASCII(position_ + 1))
            return nextOfAnyKind();
        ++position_;
        return first;
    }

private:
    /// Whether nothing but ASCII is at `position`.
    bool isASCII(std::size_t position) const {
        return position == source_.size() || static_cast<unsigned char>(source_[position]) < 0x80;
    }

    char32_t nextOfAnyKind();

    /// The code of the reference that the "&" at the position starts, which is then read to its end.
    std::optional<char32_t> nextReference();

    std::string_view source_;
    const CharacterCodes& codes_;
    std::size_t position_ = 0;
};

} // namespace corvanta
