#pragma once

#include "EditorCore/CharacterCodes.hpp"
#include "EditorCore/DecodedTextReader.hpp"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace corvanta {

/// The source of a page seen as the browser shows its text: runs of text between pieces of markup (tags and
/// comments). Where markup starts and ends is decided by whole characters: a "<" with an accent on it is
/// text. Characters are decoded when they are looked at; offsets are bytes of the source.
class DecodedSource {
public:
    /// Both must outlive the decoded source. `codes` knows the characters of every text that is searched for.
    DecodedSource(std::string_view source, const CharacterCodes& codes)
        : source_(source), reader_(source, codes) {}

    /// Where `text` (codes, with blanks for no-break spaces, not empty) stands in the source, ascending: as
    /// the whole text between two pieces of markup, or else, when it stands nowhere so, as the only part of a
    /// text that equals it. Each is the offset of its first character.
    std::vector<std::size_t> textContentMatches(const std::vector<char32_t>& text) const;

    /// The offset that is `count` characters behind the one at `offset`, in the same run of text.
    std::size_t advanced(std::size_t offset, std::size_t count) const;

private:
    /// Where `text` is all that stands between two pieces of markup.
    std::vector<std::size_t> wholeMatches(const std::vector<char32_t>& text) const;

    /// Whether `text` is all that stands in the source from `runBegin` to `runEnd`, where a run of text ends.
    bool isWhole(std::size_t runBegin, std::size_t runEnd, const std::vector<char32_t>& text) const;

    /// Where `text` stands, if anywhere and only there, matches that overlap counted.
    std::optional<std::size_t> onlyMatch(const std::vector<char32_t>& text) const;

    std::string_view source_;
    DecodedTextReader reader_;
};

} // namespace corvanta
