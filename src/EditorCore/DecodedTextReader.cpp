#include "EditorCore/DecodedTextReader.hpp"

#include "EditorCore/CharacterReferences.hpp"
#include "EditorCore/CharacterTable.hpp"
#include "EditorCore/Graphemes.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <cstddef>
#include <string_view>

namespace corvanta {

namespace {

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

DecodedTextReader::Character DecodedTextReader::characterOfAnyKind(std::size_t position) const {
    if (source_[position] == '&' && mayStartReference(position))
        return referenceAt(position).value_or(Character{U'&', position + 1});
    const std::size_t end = Graphemes::end(source_, position);
    return {withBlank(codes_.find(source_.substr(position, end - position))), end};
}

std::optional<DecodedTextReader::Character> DecodedTextReader::referenceAt(std::size_t position) const {
    const std::string_view name = referenceName(source_, position);
    const auto decoded = name.empty() ? std::nullopt : CharacterReferences::decoded(name);
    if (!decoded)
        return std::nullopt;
    return Character{withBlank(codes_.find(*decoded)), position + name.size() + 2};
}

} // namespace corvanta
