#include "EditorCore/CharacterEncoding.hpp"

#include "EditorCore/Utf8.hpp"

#include <array>
#include <cstdint>

namespace corvanta {

namespace {

/// No character at all.
constexpr char16_t undefined = 0xFFFF;

/// 80 to 9F of Windows code page 1252 (unicode.org, MAPPINGS/VENDORS/MICSFT/WINDOWS/CP1252.TXT); the rest is
/// Latin-1.
constexpr std::array<char16_t, 32> windows1252Controls{
    0x20AC,    undefined, 0x201A, 0x0192, 0x201E, 0x2026,    0x2020, 0x2021,    //
    0x02C6,    0x2030,    0x0160, 0x2039, 0x0152, undefined, 0x017D, undefined, //
    undefined, 0x2018,    0x2019, 0x201C, 0x201D, 0x2022,    0x2013, 0x2014,    //
    0x02DC,    0x2122,    0x0161, 0x203A, 0x0153, undefined, 0x017E, 0x0178};

/// 80 to FF of Mac OS Roman (unicode.org, MAPPINGS/VENDORS/APPLE/ROMAN.TXT).
constexpr std::array<char16_t, 128> macOSRomanUpperHalf{
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

constexpr std::uint8_t byteAt(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint8_t>(bytes[offset]);
}

/// `character` gives the character of a byte from 80 to FF.
template <typename Character>
std::optional<std::string> singleBytes(std::string_view bytes, Character character) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 4);
    while (!bytes.empty()) {
        const std::size_t ascii = Utf8::asciiPrefixLength(bytes);
        text += bytes.substr(0, ascii);
        bytes.remove_prefix(ascii);
        for (; !bytes.empty() && byteAt(bytes, 0) >= 0x80; bytes.remove_prefix(1)) {
            const char16_t decoded = character(byteAt(bytes, 0));
            if (decoded == undefined)
                return std::nullopt;
            Utf8::append(text, decoded);
        }
    }
    return text;
}

constexpr bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// `highByte` is the place of the more significant byte in each pair.
std::optional<std::string> utf16(std::string_view bytes, std::size_t highByte) {
    if (bytes.size() % 2 != 0)
        return std::nullopt;

    const auto unitAt = [&](std::size_t offset) {
        return static_cast<char16_t>(byteAt(bytes, offset + highByte) << 8U |
                                     byteAt(bytes, offset + 1 - highByte));
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t offset = 0; offset < bytes.size(); offset += 2) {
        char32_t character = unitAt(offset);
        if (isLowSurrogate(unitAt(offset)))
            return std::nullopt;
        if (isHighSurrogate(unitAt(offset))) {
            offset += 2;
            if (offset == bytes.size() || !isLowSurrogate(unitAt(offset)))
                return std::nullopt;
            character = 0x10000U + ((character - 0xD800U) << 10U) + (unitAt(offset) - 0xDC00U);
        }
        Utf8::append(text, character);
    }
    return text;
}

} // namespace

std::optional<std::string> CharacterEncoding::utf8(std::string_view bytes) {
    if (!Utf8::isValid(bytes))
        return std::nullopt;
    return std::string(bytes);
}

std::optional<std::string> CharacterEncoding::utf16LittleEndian(std::string_view bytes) {
    return utf16(bytes, 1);
}

std::optional<std::string> CharacterEncoding::utf16BigEndian(std::string_view bytes) {
    return utf16(bytes, 0);
}

std::optional<std::string> CharacterEncoding::windows1252(std::string_view bytes) {
    return singleBytes(bytes, [](std::uint8_t byte) -> char16_t {
        return byte < 0xA0 ? windows1252Controls[byte - 0x80U] : byte;
    });
}

std::optional<std::string> CharacterEncoding::latin1(std::string_view bytes) {
    return singleBytes(bytes, [](std::uint8_t byte) -> char16_t { return byte; });
}

std::optional<std::string> CharacterEncoding::macOSRoman(std::string_view bytes) {
    return singleBytes(bytes, [](std::uint8_t byte) { return macOSRomanUpperHalf[byte - 0x80U]; });
}

} // namespace corvanta
