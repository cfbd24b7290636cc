#include "EditorCore/CharacterCodes.hpp"

#include "EditorCore/Graphemes.hpp"
#include "EditorCore/Utf8.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <cstddef>
#include <optional>

namespace corvanta {

namespace {

constexpr char32_t firstCluster = CharacterCodes::carriageReturnLineFeed + 1;

/// The code point that is all of `text`, if there is just one.
std::optional<char32_t> onlyCodePoint(std::string_view text) {
    const auto first = Utf8Character::first(text);
    return first.size == text.size() ? std::optional(first.value) : std::nullopt;
}

/// The code of a character that needs no canonical form to tell it; `unknown` for any other.
char32_t plainCode(std::string_view grapheme) {
    const auto first = Utf8Character::first(grapheme);
    if (first.size == grapheme.size() && CharacterCodes::isOwnCode(first.value))
        return first.value;
    // It is its own canonical form, and files of some systems are full of it.
    return grapheme == "\r\n" ? CharacterCodes::carriageReturnLineFeed : CharacterCodes::unknown;
}

/// Of a character of two bytes at least. Those of one script differ in the bytes at the end of a code point.
std::size_t hash(std::string_view grapheme) {
    const auto byte = [grapheme](std::size_t index) {
        return std::size_t{static_cast<unsigned char>(grapheme[index])};
    };
    const std::size_t size = grapheme.size();
    const std::size_t key = size << 40U | byte(0) << 32U | byte(size / 2) << 24U | byte(size / 2 - 1) << 16U |
                            byte(size - 2) << 8U | byte(size - 1);
    return key * 0x9E3779B97F4A7C15U >> 32U;
}

} // namespace

std::vector<char32_t> CharacterCodes::add(std::string_view text) {
    std::vector<char32_t> codes;
    codes.reserve(text.size());
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t end = Graphemes::end(text, position);
        const std::string_view grapheme = text.substr(position, end - position);
        const char32_t code = find(grapheme);
        codes.push_back(code == unknown ? addCluster(Graphemes::canonical(grapheme)) : code);
        position = end;
    }
    return codes;
}

char32_t CharacterCodes::find(std::string_view grapheme) const {
    if (const char32_t code = plainCode(grapheme); code != unknown)
        return code;
    Met& met = met_[hash(grapheme) % met_.size()];
    const bool isOutdated = met.code == unknown && met.knownClusters != clusters_.size();
    if (isOutdated || met.grapheme != grapheme)
        met = {std::string(grapheme), codeOfCanonical(Graphemes::canonical(grapheme)), clusters_.size()};
    return met.code;
}

char32_t CharacterCodes::find(char32_t character) const {
    if (isOwnCode(character))
        return character;
    std::string text;
    Utf8::append(text, character);
    return find(text);
}

char32_t CharacterCodes::codeOfCanonical(const std::string& canonical) const {
    if (const auto character = onlyCodePoint(canonical))
        return *character;
    const auto found = clusters_.find(canonical);
    return found == clusters_.end() ? unknown : found->second;
}

char32_t CharacterCodes::addCluster(const std::string& canonical) {
    const auto next = static_cast<char32_t>(firstCluster + clusters_.size());
    return clusters_.try_emplace(canonical, next).first->second;
}

} // namespace corvanta
