#include "EditorCore/DecodedSource.hpp"

#include "EditorCore/DecodedTextReader.hpp"
#include "EditorCore/Graphemes.hpp"

namespace corvanta {

namespace {

/// The offset of the next `character` (ASCII) that nothing joins; the source's end when none comes.
std::size_t nextAlone(char character, std::string_view source, std::size_t offset) {
    offset = source.find(character, offset);
    while (offset != std::string_view::npos && !Graphemes::isAlone(source, offset))
        offset = source.find(character, offset + 1);
    return offset == std::string_view::npos ? source.size() : offset;
}

/// Whether `sign` (ASCII) stands at `offset` with nothing that joins it: it can only be joined at its ends.
bool standsAt(std::size_t offset, std::string_view sign, std::string_view source) {
    return source.substr(offset).starts_with(sign) && Graphemes::isAlone(source, offset) &&
           Graphemes::isAlone(source, offset + sign.size() - 1);
}

std::size_t endOfComment(std::string_view source, std::size_t offset) {
    constexpr std::string_view closing = "-->";
    offset = source.find(closing, offset);
    while (offset != std::string_view::npos && !standsAt(offset, closing, source))
        offset = source.find(closing, offset + 1);
    return offset == std::string_view::npos ? source.size() : offset + closing.size();
}

/// `offset` is behind the tag's "<". A ">" in a quoted value does not end the tag.
std::size_t endOfTag(std::string_view source, std::size_t offset) {
    for (; offset < source.size(); ++offset) {
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
    if (standsAt(offset, comment, source))
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

/// The runs are found anew each time: a list of them would take as much memory as the page.
template <typename Visit>
void DecodedSource::forEachTextRun(Visit visit) const {
    std::size_t offset = 0;
    while (offset < source_.size()) {
        const std::size_t end = nextAlone('<', source_, offset);
        if (end > offset && !visit(TextRun{offset, end}))
            return;
        offset = end == source_.size() ? end : endOfMarkup(source_, end);
    }
}

std::vector<std::size_t> DecodedSource::textContentMatches(const std::vector<char32_t>& text) const {
    std::vector<std::size_t> matches;
    forEachTextRun([&](const TextRun& run) {
        if (isWhole(run, text))
            matches.push_back(run.begin);
        return true;
    });
    if (matches.empty()) {
        if (const auto match = onlyMatch(text))
            matches.push_back(*match);
    }
    return matches;
}

std::size_t DecodedSource::advanced(std::size_t offset, std::size_t count) const {
    DecodedTextReader reader(source_, offset, codes_);
    for (std::size_t i = 0; i < count; ++i)
        reader.next();
    return reader.position();
}

bool DecodedSource::isWhole(const TextRun& run, const std::vector<char32_t>& text) const {
    DecodedTextReader reader(source_, run.begin, codes_);
    for (const char32_t character : text) {
        if (reader.position() == run.end || reader.next() != character)
            return false;
    }
    return reader.position() == run.end;
}

std::optional<std::size_t> DecodedSource::onlyMatch(const std::vector<char32_t>& text) const {
    const std::vector<std::size_t> remaining = borders(text);
    std::optional<std::size_t> only;
    bool isOnly = true;
    forEachTextRun([&](const TextRun& run) {
        DecodedTextReader reader(source_, run.begin, codes_);
        std::size_t matched = 0;
        for (std::size_t read = 1; reader.position() < run.end && isOnly; ++read) {
            const char32_t character = reader.next();
            while (matched > 0 && text[matched] != character)
                matched = remaining[matched - 1];
            if (text[matched] == character)
                ++matched;
            if (matched < text.size())
                continue;
            isOnly = !only;
            only = advanced(run.begin, read - text.size());
            matched = remaining[matched - 1];
        }
        return isOnly;
    });
    return isOnly ? only : std::nullopt;
}

} // namespace corvanta
