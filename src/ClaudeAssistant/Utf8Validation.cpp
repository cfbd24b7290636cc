#include "ClaudeAssistant/Utf8Validation.hpp"

#include <algorithm>
#include <cstddef>

namespace corvanta {

namespace {

/// Whether `byte` follows the first byte of a character.
bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The length that the first byte of a character announces, or 0 when it can begin none.
std::size_t announcedLength(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/// Whether the second byte is one that the first allows; for the others any continuation will do.
bool isAllowedSecond(unsigned char first, unsigned char second) {
    switch (first) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second <= 0x9F;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second <= 0x8F;
    default:
        return true;
    }
}

} // namespace

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto first = static_cast<unsigned char>(bytes[0]);
        const std::size_t length = announcedLength(first);
        if (length == 0 || length > bytes.size())
            return false;
        const std::string_view rest = bytes.substr(1, length - 1);
        if (!std::ranges::all_of(rest, isContinuation))
            return false;
        if (!rest.empty() && !isAllowedSecond(first, static_cast<unsigned char>(rest[0])))
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

} // namespace corvanta
