#include "EditorCore/HTMLFormatterNames.hpp"

#include "EditorCore/CharacterTable.hpp"
#include "EditorCore/Utf8.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <unicode/uchar.h>

#include <utility>

namespace corvanta {

namespace {

constexpr CharacterTable::Classes asciiNameCharacter = CharacterTable::nameCharacter | CharacterTable::dot;

bool isLetter(char32_t character) {
    return u_isalpha(static_cast<UChar32>(character)) != 0;
}

bool isLetterOrDigit(char32_t character) {
    return isLetter(character) || u_isdigit(static_cast<UChar32>(character)) != 0;
}

bool isASCII(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

} // namespace

std::size_t HTMLFormatterNames::end(std::string_view text, std::size_t position) {
    for (;;) {
        position = characterTable.endOfRun(asciiNameCharacter, text, position);
        if (position == text.size() || isASCII(text[position]))
            return position;
        const Utf8Character character = Utf8Character::first(text.substr(position));
        if (!isLetterOrDigit(character.value))
            return position;
        position += character.size;
    }
}

bool HTMLFormatterNames::startsAt(std::string_view text, std::size_t position) {
    if (position >= text.size())
        return false;
    if (isASCII(text[position]))
        return characterTable.is(text[position], CharacterTable::wordStart);
    return isLetter(Utf8Character::first(text.substr(position)).value);
}

HTMLFormatterNames::Name HTMLFormatterNames::of(std::string_view name) {
    std::size_t known = htmlFormatterElements.find(name);
    if (known < HTMLFormatterElements::elements.size())
        return {known, HTMLFormatterElements::elements[known].traits};

    std::string lower = lowercased(name);
    known = htmlFormatterElements.find(lower);
    if (known < HTMLFormatterElements::elements.size())
        return {known, HTMLFormatterElements::elements[known].traits};
    return {others_.try_emplace(std::move(lower), count()).first->second, 0};
}

std::string HTMLFormatterNames::lowercased(std::string_view name) {
    std::string lower;
    lower.reserve(name.size());
    while (!name.empty()) {
        const Utf8Character character = Utf8Character::first(name);
        Utf8::append(lower, static_cast<char32_t>(u_tolower(static_cast<UChar32>(character.value))));
        name.remove_prefix(character.size);
    }
    return lower;
}

} // namespace corvanta
