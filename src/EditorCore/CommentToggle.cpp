#include "EditorCore/CommentToggle.hpp"

#include "EditorCore/Utf8.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view opener = "<!--";
constexpr std::string_view closer = "-->";

/// Counts the opener and the blank behind it, in UTF-16 code units.
constexpr std::int64_t caretInEmptyComment = 5;

bool isWhiteSpace(const Utf8Character& character) {
    return u_isUWhiteSpace(static_cast<UChar32>(character.value)) != 0;
}

/// `text` without the white space of Unicode at its ends.
std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isWhiteSpace(Utf8Character::first(text)))
        text.remove_prefix(Utf8Character::first(text).size);
    while (!text.empty() && isWhiteSpace(Utf8Character::last(text)))
        text.remove_suffix(Utf8Character::last(text).size);
    return text;
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// What the comment says that `selected` is; nothing when it is none. The marks may share their hyphens.
std::optional<std::string_view> commentContent(std::string_view selected) {
    std::string_view comment = trimmed(selected);
    if (!comment.starts_with(opener) || !comment.ends_with(closer))
        return std::nullopt;
    comment.remove_prefix(opener.size());
    comment.remove_suffix(std::min(comment.size(), closer.size()));
    return withoutBlanks(comment);
}

/// The part of a text between two of its places.
struct Selection {
    TextPosition first;
    TextPosition last;

    TextRange range() const { return {first.codeUnit, last.codeUnit - first.codeUnit}; }
};

Selection wholeCharacters(const SharedText& text, TextRange range) {
    const std::int64_t length = text.end().codeUnit;
    const std::int64_t location = std::clamp<std::int64_t>(range.location, 0, length);
    const std::int64_t end = location + std::clamp<std::int64_t>(range.length, 0, length - location);

    const TextPosition first = text.atCodeUnit(location);
    if (end == location)
        return {first, first};
    const TextPosition last = text.atCodeUnit(end);
    return {first, last.codeUnit < end ? text.atCodeUnit(end + 1) : last};
}

} // namespace

TextReplacement CommentToggle::toggled(const SharedText& text, TextRange selection) {
    const Selection selected = wholeCharacters(text, selection);
    const std::string selectedText = text.substring(selected.first.byte, selected.last.byte);
    TextReplacement replacement{selected.range(), {}, {selected.first.codeUnit, 0}};

    if (const std::optional<std::string_view> content = commentContent(selectedText)) {
        replacement.text = *content;
    } else {
        replacement.text = opener;
        replacement.text += ' ';
        replacement.text += selectedText;
        replacement.text += ' ';
        replacement.text += closer;
    }
    replacement.selection.location +=
        replacement.range.length == 0 ? caretInEmptyComment : Utf8::codeUnitCount(replacement.text);
    return replacement;
}

} // namespace corvanta
