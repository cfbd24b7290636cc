#include "EditorCore/CharacterEncoding.hpp"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>

namespace corvanta {

namespace {

using namespace std::string_literals;

/// The character that ICU's converter `name` has for `byte`.
std::string decodedByICU(const char* name, int byte) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name, &error), ucnv_close);
    const auto bytes = static_cast<char>(byte);
    const icu::UnicodeString character(&bytes, 1, converter.get(), error);
    EXPECT_TRUE(U_SUCCESS(error)) << name;
    std::string text;
    character.toUTF8String(text);
    return text;
}

std::string oneByte(int byte) {
    return {static_cast<char>(byte)};
}

} // namespace

TEST(CharacterEncoding, Windows1252KnowsEveryByteButFive) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto text = CharacterEncoding::windows1252(oneByte(byte));
        if (byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D)
            EXPECT_EQ(text, std::nullopt) << byte;
        else
            EXPECT_EQ(text, decodedByICU("windows-1252", byte)) << byte;
    }
}

TEST(CharacterEncoding, Windows1252RefusesTheWholeTextForOneByte) {
    EXPECT_EQ(CharacterEncoding::windows1252("viel Text und \x81 darin"), std::nullopt);
}

TEST(CharacterEncoding, Latin1KnowsEveryByte) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(CharacterEncoding::latin1(oneByte(byte)), decodedByICU("ISO-8859-1", byte)) << byte;
}

TEST(CharacterEncoding, MacOSRomanKnowsEveryByte) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(CharacterEncoding::macOSRoman(oneByte(byte)), decodedByICU("macintosh", byte)) << byte;
    EXPECT_EQ(CharacterEncoding::macOSRoman("\x8A\x9F\xDB\xF0"), "äü€\uF8FF");
}

TEST(CharacterEncoding, Utf8IsStrict) {
    EXPECT_EQ(CharacterEncoding::utf8("Straße"), "Straße");
    EXPECT_EQ(CharacterEncoding::utf8("Stra\xDF"
                                      "e"),
              std::nullopt);
}

TEST(CharacterEncoding, Utf16KnowsBothOrders) {
    EXPECT_EQ(CharacterEncoding::utf16LittleEndian("a\0\xE4\0\x22\x6F\x3D\xD8\0\xDE"s), "aä漢😀");
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\0a\0\xE4\x6F\x22\xD8\x3D\xDE\0"s), "aä漢😀");
    EXPECT_EQ(CharacterEncoding::utf16LittleEndian(""), "");
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\0\0"s), "\0"s);
}

TEST(CharacterEncoding, Utf16ReachesFromTheFirstToTheLastSurrogatePair) {
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xD8\x00\xDC\x00"s), "\U00010000");
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xDB\xFF\xDF\xFF"s), "\U0010FFFF");
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xD7\xFF\xE0\x00"s), "\uD7FF\uE000");
}

TEST(CharacterEncoding, Utf16RefusesHalfAUnit) {
    EXPECT_EQ(CharacterEncoding::utf16LittleEndian("a"), std::nullopt);
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\0ab"s), std::nullopt);
}

TEST(CharacterEncoding, Utf16RefusesALoneSurrogate) {
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xD8\x3D"s), std::nullopt);
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xD8\x3D\0a"s), std::nullopt);
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xDE\0\xD8\x3D"s), std::nullopt);
    EXPECT_EQ(CharacterEncoding::utf16BigEndian("\xD8\x3D\xD8\x3D\xDE\0"s), std::nullopt);
    EXPECT_EQ(CharacterEncoding::utf16LittleEndian("\x3D\xD8"s), std::nullopt);
}

} // namespace corvanta
