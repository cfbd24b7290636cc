#include "Preview/PercentEncoding.hpp"

#include "EditorCore/Utf8.hpp"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>

namespace corvanta {

namespace {

bool isAlphanumeric(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
}

/// Whether `byte` may stand unescaped in a path: "pchar" of RFC 3986, and the slash.
bool isAllowedInPath(char byte) {
    return isAlphanumeric(byte) ||
           std::string_view("-._~!$&'()*+,;=:@/").find(byte) != std::string_view::npos;
}

/// `text` with every byte escaped that `isAllowed` does not let through.
std::string encoding(std::string_view text, bool (*isAllowed)(char byte)) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char byte : text) {
        if (isAllowed(byte))
            encoded += byte;
        else
            fmt::format_to(std::back_inserter(encoded), "%{:02X}", static_cast<std::uint8_t>(byte));
    }
    return encoded;
}

/// The byte that two hexadecimal digits name.
std::optional<char> byteNamed(std::string_view digits) {
    std::uint8_t byte = 0;
    const char* const end = digits.data() + digits.size();
    if (digits.size() != 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end)
        return std::nullopt;
    return static_cast<char>(byte);
}

} // namespace

std::string PercentEncoding::encodingPath(std::string_view path) {
    return encoding(path, isAllowedInPath);
}

std::string PercentEncoding::encodingAllButLettersAndDigits(std::string_view text) {
    return encoding(text, isAlphanumeric);
}

std::optional<std::string> PercentEncoding::bytes(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] != '%') {
            decoded += text[position];
            continue;
        }
        const std::optional<char> byte = byteNamed(text.substr(position + 1, 2));
        if (!byte)
            return std::nullopt;
        decoded += *byte;
        position += 2;
    }
    return decoded;
}

std::optional<std::string> PercentEncoding::removing(std::string_view text) {
    std::optional<std::string> decoded = bytes(text);
    if (decoded && !Utf8::isValid(*decoded))
        return std::nullopt;
    return decoded;
}

} // namespace corvanta
