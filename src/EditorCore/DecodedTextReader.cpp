#include "EditorCore/DecodedTextReader.hpp"

#include "EditorCore/CharacterReferences.hpp"
#include "EditorCore/CharacterTable.hpp"
#include "EditorCore/Graphemes.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <cstddef>
#include <string_view>

namespace corvanta {

namespace {

/// Whether the "&" at `position` is followed by what may be a reference's name.
bool mayStartReference(std::string_view text, std::size_t position) {
    const std::size_t next = position + 1;
    return next < text.size() && (text[next] == '#' || characterTable.is(text[next], CharacterTable::letter));
}

/// The name of the reference that the "&" at `position` starts, without "&" and ";"; empty when it starts
/// none. Only ASCII letters, digits and "#" can be part of one that is known.
std::string_view referenceName(std::string_view text, std::size_t position) {
    const std::string_view start = text.substr(position, CharacterReferences::longest);
    const std::size_t first = start[1] == '#' ? 2 : 1;
    const std::size_t end =
        characterTable.endOfRun(CharacterTable::letter | CharacterTable::digit, start, first);
    if (end == first || end == start.size() || start[end] != ';' || !Graphemes::isAlone(text, position + end))
        return {};
    return start.substr(1, end - 1);
}

} // namespace

char32_t DecodedTextReader::nextOfAnyKind() {
    if (source_[position_] == '&' && mayStartReference(source_, position_)) {
        if (const auto code = nextReference())
            return *code;
    }
    const std::string_view rest = source_.substr(position_);
    const Utf8Character first = Utf8Character::first(rest);
    const std::size_t size = Graphemes::end(rest, 0);
    position_ += size;
    if (size == first.size && CharacterCodes::isOwnCode(first.value))
        return first.value == noBreakSpace ? blank : first.value;
    return codes_.find(rest.substr(0, size));
}

std::optional<char32_t> DecodedTextReader::nextReference() {
    const std::string_view name = referenceName(source_, position_);
    const auto decoded = name.empty() ? std::nullopt : CharacterReferences::decoded(name);
    if (!decoded)
        return std::nullopt;
    position_ += name.size() + 2;
    return *decoded == noBreakSpace ? blank : codes_.find(*decoded);
}

} // namespace corvanta
