#include "EditorCore/HTMLFormatterCode.hpp"

#include <algorithm>
#include <cstdint>

namespace corvanta {

namespace {

/// The carriage return belongs to the line's end.
constexpr std::string_view lineEdges = "\t\r ";

std::string_view trimmed(std::string_view line) {
    const std::size_t start = line.find_first_not_of(lineEdges);
    if (start == std::string_view::npos)
        return {};
    return line.substr(start, line.find_last_not_of(lineEdges) + 1 - start);
}

/// The position after the quote that closes the string opened at `position`, or after the line's end.
std::size_t endOfString(std::string_view line, std::size_t position) {
    const char quote = line[position];
    for (++position; position < line.size() && line[position] != quote; ++position) {
        if (line[position] == '\\')
            ++position;
    }
    return position + 1;
}

/// How many more braces a line opens than it closes, outside strings and before a "//".
std::int64_t braceDelta(std::string_view line) {
    std::int64_t delta = 0;
    std::size_t position = 0;
    while ((position = line.find_first_of("{}\"'`/", position)) < line.size()) {
        switch (line[position]) {
        case '{':
            ++delta;
            break;
        case '}':
            --delta;
            break;
        case '/':
            if (line.substr(position).starts_with("//"))
                return delta;
            break;
        default:
            position = endOfString(line, position);
            continue;
        }
        ++position;
    }
    return delta;
}

bool startsWithClosingBracket(std::string_view line) {
    return line.front() == '}' || line.front() == ')' || line.front() == ']';
}

} // namespace

void HTMLFormatterCode::print(std::string_view code, std::size_t depth, HTMLFormatterLines& lines) {
    std::int64_t braces = 0;
    std::size_t emptyLines = 0;
    bool hasLines = false;
    for (std::size_t start = 0; start <= code.size();) {
        const std::size_t end = std::min(code.find('\n', start), code.size());
        const std::string_view line = trimmed(code.substr(start, end - start));
        start = end + 1;
        if (line.empty()) {
            ++emptyLines;
            continue;
        }
        if (hasLines)
            lines.leaveEmpty(emptyLines);
        hasLines = true;
        emptyLines = 0;
        const std::int64_t level =
            startsWithClosingBracket(line) ? std::max<std::int64_t>(braces - 1, 0) : braces;
        lines.start(depth + static_cast<std::size_t>(level));
        lines.append(line);
        braces = std::max<std::int64_t>(braces + braceDelta(line), 0);
    }
}

} // namespace corvanta
