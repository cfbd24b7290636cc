#include "EditorCore/DecodedSource.hpp"

#include "EditorCore/Graphemes.hpp"
#include "EditorCore/ReadAhead.hpp"

namespace corvanta {

namespace {

/// The offset of the next `character` (ASCII) that nothing joins; the source's end when none comes.
std::size_t nextAlone(char character, std::string_view source, std::size_t offset) {
    offset = source.find(character, offset);
    while (offset != std::string_view::npos && !Graphemes::isAlone(source, offset))
        offset = source.find(character, offset + 1);
    return offset == std::string_view::npos ? source.size() : offset;
}

/// Whether nothing joins the sign (ASCII) of `size` bytes at `offset`: it can only be joined at its ends.
bool isSignAlone(std::string_view source, std::size_t offset, std::size_t size) {
    return Graphemes::isAlone(source, offset) && Graphemes::isAlone(source, offset + size - 1);
}

std::size_t endOfComment(std::string_view source, std::size_t offset) {
    constexpr std::string_view closing = "-->";
    // Looks at the place of the ">" first: at anything else than a "-" there, all three places are passed by.
    for (std::size_t last = offset + 2; last < source.size(); last += source[last] == '-' ? 1U : 3U) {
        ReadAhead::from(source, last);
        if (source.substr(last - 2).starts_with(closing) && isSignAlone(source, last - 2, closing.size()))
            return last + 1;
    }
    return source.size();
}

/// `offset` is behind the tag's "<". A ">" in a quoted value does not end the tag.
std::size_t endOfTag(std::string_view source, std::size_t offset) {
    for (; offset < source.size(); ++offset) {
        if (offset % ReadAhead::step == 0)
            ReadAhead::from(source, offset);
        const char byte = source[offset];
        if ((byte != '>' && byte != '"' && byte != '\'') || !Graphemes::isAlone(source, offset))
            continue;
        if (byte == '>')
            return offset + 1;
        offset = nextAlone(byte, source, offset + 1);
    }
    return source.size();
}

/// `offset` is that of a "<".
std::size_t endOfMarkup(std::string_view source, std::size_t offset) {
    constexpr std::string_view comment = "<!--";
    if (source.substr(offset).starts_with(comment) && isSignAlone(source, offset, comment.size()))
        return endOfComment(source, offset + comment.size());
    return endOfTag(source, offset + 1);
}

/// For every start of `text`, the length of the longest shorter start that it also ends with: how much of a
/// match remains when its next character differs. With it the search never looks at a character of the source
/// twice, even in a long row of the same letter.
std::vector<std::size_t> borders(const std::vector<char32_t>& text) {
    std::vector<std::size_t> lengths(text.size());
    std::size_t matched = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        while (matched > 0 && text[matched] != text[i])
            matched = lengths[matched - 1];
        if (text[matched] == text[i])
            ++matched;
        lengths[i] = matched;
    }
    return lengths;
}

} // namespace

std::vector<std::size_t> DecodedSource::textContentMatches(const std::vector<char32_t>& text) const {
    std::vector<std::size_t> matches = wholeMatches(text);
    if (matches.empty()) {
        if (const auto match = onlyMatch(text))
            matches.push_back(*match);
    }
    return matches;
}

std::size_t DecodedSource::advanced(std::size_t offset, std::size_t count) const {
    if (count == 0)
        return offset;
    reader_.forEach(offset, [&](char32_t, std::size_t end) {
        offset = end;
        return --count > 0;
    });
    return offset;
}

std::vector<std::size_t> DecodedSource::wholeMatches(const std::vector<char32_t>& text) const {
    std::vector<std::size_t> matches;
    std::size_t offset = 0;
    while (offset < source_.size()) {
        const std::size_t end = nextAlone('<', source_, offset);
        if (end > offset && isWhole(offset, end, text))
            matches.push_back(offset);
        offset = end == source_.size() ? end : endOfMarkup(source_, end);
    }
    return matches;
}

bool DecodedSource::isWhole(std::size_t runBegin, std::size_t runEnd,
                            const std::vector<char32_t>& text) const {
    std::size_t matched = 0;
    bool isWhole = false;
    reader_.forEach(runBegin, [&](char32_t character, std::size_t end) {
        if (text[matched] != character)
            return false;
        ++matched;
        isWhole = matched == text.size() && end == runEnd;
        return matched < text.size() && end < runEnd;
    });
    return isWhole;
}

std::optional<std::size_t> DecodedSource::onlyMatch(const std::vector<char32_t>& text) const {
    const std::vector<std::size_t> remaining = borders(text);
    std::optional<std::size_t> only;
    bool isOnly = true;
    std::size_t offset = 0;
    while (offset < source_.size() && isOnly) {
        const std::size_t runBegin = offset;
        std::size_t matched = 0;
        std::size_t read = 0;
        reader_.forEach(runBegin, [&](char32_t character, std::size_t end) {
            // A "<" that is written as a reference takes more than one byte.
            if (character == U'<' && end == offset + 1)
                return false;
            offset = end;
            ++read;
            while (matched > 0 && text[matched] != character)
                matched = remaining[matched - 1];
            if (text[matched] == character)
                ++matched;
            if (matched == text.size()) {
                isOnly = !only;
                only = advanced(runBegin, read - text.size());
                matched = remaining[matched - 1];
            }
            return isOnly;
        });
        if (offset < source_.size())
            offset = endOfMarkup(source_, offset);
    }
    return isOnly ? only : std::nullopt;
}

} // namespace corvanta
