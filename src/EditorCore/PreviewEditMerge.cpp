#include "EditorCore/PreviewEditMerge.hpp"

#include "EditorCore/CharacterCodes.hpp"
#include "EditorCore/DecodedSource.hpp"
#include "EditorCore/DecodedTextReader.hpp"
#include "EditorCore/Graphemes.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace corvanta {

namespace {

using Codes = std::vector<char32_t>;

bool isWhiteSpace(std::string_view text) {
    while (!text.empty()) {
        const auto character = Utf8Character::first(text);
        if (u_isUWhiteSpace(static_cast<UChar32>(character.value)) == 0)
            return false;
        text.remove_prefix(character.size);
    }
    return true;
}

void makeNoBreakSpacesBlanks(Codes& text) {
    std::replace(text.begin(), text.end(), DecodedTextReader::noBreakSpace, DecodedTextReader::blank);
}

std::size_t commonPrefix(const Codes& a, const Codes& b) {
    const auto end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    return static_cast<std::size_t>(end - a.begin());
}

/// The common end of what is left of both texts behind the first `prefix` characters.
std::size_t commonSuffix(const Codes& a, const Codes& b, std::size_t prefix) {
    const auto length = static_cast<Codes::difference_type>(prefix);
    const auto end = std::mismatch(a.rbegin(), a.rend() - length, b.rbegin(), b.rend() - length).first;
    return static_cast<std::size_t>(end - a.rbegin());
}

/// The one that the edit belongs to: the only one, or the one that stands where the page says, provided that
/// page and source agree on how many there are.
std::optional<std::size_t> chosen(const std::vector<std::size_t>& candidates, std::int64_t occurrence,
                                  std::int64_t total) {
    if (candidates.size() == 1)
        return candidates.front();
    const auto count = static_cast<std::int64_t>(candidates.size());
    if (occurrence < 0 || occurrence >= count || count != total)
        return std::nullopt;
    return candidates[static_cast<std::size_t>(occurrence)];
}

/// The `count` characters of `text` behind the first `start` ones.
std::string_view characters(std::string_view text, std::size_t start, std::size_t count) {
    const auto advance = [text](std::size_t position, std::size_t steps) {
        for (std::size_t i = 0; i < steps; ++i)
            position = Graphemes::end(text, position);
        return position;
    };
    const std::size_t begin = advance(0, start);
    return text.substr(begin, advance(begin, count) - begin);
}

/// Escapes code points, not characters: to the browser a "<" with an accent on it still opens a tag.
std::string encoded(std::string_view text) {
    constexpr std::string_view noBreakSpace = "\u00A0";
    std::string html;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&') {
            html += "&amp;";
        } else if (text[i] == '<') {
            html += "&lt;";
        } else if (text[i] == '>') {
            html += "&gt;";
        } else if (text.substr(i).starts_with(noBreakSpace)) {
            html += "&nbsp;";
            i += noBreakSpace.size() - 1;
        } else {
            html += text[i];
        }
    }
    return html;
}

} // namespace

std::optional<std::string> PreviewEditMerge::applyTextEdit(std::string_view before, std::string_view after,
                                                           std::int64_t occurrence, std::int64_t total,
                                                           std::string_view source) {
    CharacterCodes codes;
    Codes old = codes.add(before);
    Codes edited = codes.add(after);
    if (old == edited)
        return std::string(source);
    // Such nodes stand between almost any two tags.
    if (isWhiteSpace(before))
        return std::nullopt;
    makeNoBreakSpacesBlanks(old);
    makeNoBreakSpacesBlanks(edited);

    const DecodedSource decoded(source, codes);
    const auto start = chosen(decoded.textContentMatches(old), occurrence, total);
    if (!start)
        return std::nullopt;

    const std::size_t prefix = commonPrefix(old, edited);
    const std::size_t suffix = commonSuffix(old, edited, prefix);
    const std::size_t replacedBegin = decoded.advanced(*start, prefix);
    const std::size_t replacedEnd = decoded.advanced(replacedBegin, old.size() - prefix - suffix);

    const std::string replacement = encoded(characters(after, prefix, edited.size() - prefix - suffix));
    std::string merged;
    merged.reserve(source.size() + replacement.size());
    merged += source.substr(0, replacedBegin);
    merged += replacement;
    merged += source.substr(replacedEnd);
    return merged;
}

} // namespace corvanta
