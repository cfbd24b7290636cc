#include "Settings/VersionNumber.hpp"

#include "EditorCore/Utf8Character.hpp"

#include <unicode/uchar.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace corvanta {

namespace {

bool isNumber(const Utf8Character& character) {
    return u_getIntPropertyValue(static_cast<UChar32>(character.value), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

/// The characters at the start of `piece` that are numbers, in whatever script.
std::string_view leadingNumbers(std::string_view piece) {
    std::size_t end = 0;
    while (end < piece.size() && isNumber(Utf8Character::first(piece.substr(end))))
        end += Utf8Character::first(piece.substr(end)).size;
    return piece.substr(0, end);
}

/// The number that `digits` are as a whole, or 0.
std::int64_t parsed(std::string_view digits) {
    std::int64_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? number : 0;
}

std::int64_t partAt(const std::vector<std::int64_t>& parts, std::size_t index) {
    return index < parts.size() ? parts[index] : 0;
}

} // namespace

bool VersionNumber::isNewer(std::string_view a, std::string_view b) {
    const std::vector<std::int64_t> partsOfA = parts(a);
    const std::vector<std::int64_t> partsOfB = parts(b);
    for (std::size_t index = 0; index < std::max(partsOfA.size(), partsOfB.size()); ++index) {
        if (partAt(partsOfA, index) != partAt(partsOfB, index))
            return partAt(partsOfA, index) > partAt(partsOfB, index);
    }
    return false;
}

std::vector<std::int64_t> VersionNumber::parts(std::string_view version) {
    std::vector<std::int64_t> parts;
    while (!version.empty()) {
        const std::string_view piece = version.substr(0, version.find('.'));
        if (!piece.empty())
            parts.push_back(parsed(leadingNumbers(piece)));
        version.remove_prefix(std::min(piece.size() + 1, version.size()));
    }
    return parts;
}

} // namespace corvanta
