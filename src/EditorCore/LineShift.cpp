#include "EditorCore/LineShift.hpp"

#include <algorithm>
#include <cstdint>
#include <string>

namespace corvanta {

namespace {

constexpr std::string_view level = "\t";

/// A level that somebody else wrote with blanks has as many of them.
constexpr std::size_t blanksOfLevel = 4;

constexpr std::string_view lineEnds = "\r\n";

std::size_t startOfLine(std::string_view text, std::size_t byte) {
    const std::size_t before = text.substr(0, byte).find_last_of(lineEnds);
    return before == std::string_view::npos ? 0 : before + 1;
}

/// The start of the line after the one that starts at `start`; the text's end when there is none.
std::size_t startOfNextLine(std::string_view text, std::size_t start) {
    const std::size_t end = text.find_first_of(lineEnds, start);
    if (end == std::string_view::npos)
        return text.size();
    return end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
}

/// The starts, in bytes, of the lines that the bytes from `first` to `last` touch.
std::vector<std::size_t> lineStarts(std::string_view text, std::size_t first, std::size_t last) {
    std::vector<std::size_t> starts;
    std::size_t start = startOfLine(text, first);
    do {
        starts.push_back(start);
        start = startOfNextLine(text, start);
    } while (start < last && start < text.size());
    return starts;
}

/// How many bytes of white space at `start` make one level.
std::size_t levelAt(std::string_view text, std::size_t start) {
    std::size_t length = 0;
    while (length < blanksOfLevel && start + length < text.size() && text[start + length] == ' ')
        ++length;
    const bool endsInTab =
        length < blanksOfLevel && start + length < text.size() && text[start + length] == '\t';
    return length + (endsInTab ? 1 : 0);
}

/// Where a place of the text before the change is after it.
std::int64_t moved(std::int64_t place, const LineShift& shift) {
    std::int64_t result = place;
    for (const TextRange& range : shift.ranges) {
        if (range.location >= place)
            break;
        result +=
            static_cast<std::int64_t>(shift.text.size()) - std::min(range.length, place - range.location);
    }
    return result;
}

/// Replaces at the start of each line that `selection` touches as many bytes as `length` says of it, a
/// negative number for a line that stays as it is.
template <typename Length>
LineShift shifted(const SharedText& text, TextRange selection, std::string_view inserted, Length length) {
    const std::string bytes = text.string();
    const auto first = static_cast<std::size_t>(text.atCodeUnit(selection.location).byte);
    const auto last = static_cast<std::size_t>(text.atCodeUnit(selection.end()).byte);
    LineShift shift;
    shift.text = inserted;
    for (const std::size_t start : lineStarts(bytes, first, last)) {
        const std::int64_t replaced = length(std::string_view(bytes), start);
        if (replaced >= 0)
            shift.ranges.push_back({text.atByte(static_cast<std::int64_t>(start)).codeUnit, replaced});
    }
    const std::int64_t location = moved(selection.location, shift);
    shift.selection = {location, moved(selection.end(), shift) - location};
    return shift;
}

} // namespace

LineShift LineShift::toTheRight(const SharedText& text, TextRange selection) {
    return shifted(text, selection, level, [](std::string_view bytes, std::size_t start) -> std::int64_t {
        const bool isEmpty = start == bytes.size() || lineEnds.find(bytes[start]) != std::string_view::npos;
        return isEmpty ? -1 : 0;
    });
}

LineShift LineShift::toTheLeft(const SharedText& text, TextRange selection) {
    return shifted(text, selection, {}, [](std::string_view bytes, std::size_t start) -> std::int64_t {
        const std::size_t length = levelAt(bytes, start);
        return length == 0 ? -1 : static_cast<std::int64_t>(length);
    });
}

} // namespace corvanta
