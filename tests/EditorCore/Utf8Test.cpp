#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <random>
#include <string>

namespace corvanta {

namespace {

using namespace std::string_literals;

/// Whether ICU finds no ill-formed sequence.
bool isValidForICU(const std::string& bytes) {
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
    return error != U_INVALID_CHAR_FOUND;
}

std::string repairedByICU(const std::string& bytes) {
    std::string text;
    icu::UnicodeString::fromUTF8(bytes).toUTF8String(text);
    return text;
}

} // namespace

TEST(Utf8, AcceptsWellFormedText) {
    for (const std::string& text :
         {""s, "a"s, "\0"s, "\x7F"s, "\u0080"s, "\u07FF"s, "\u0800"s, "\uD7FF"s, "\uE000"s, "\uFFFD"s,
          "\uFFFE"s, "\uFFFF"s, "\U00010000"s, "\U0010FFFF"s, "Straße 漢字 😀"s})
        EXPECT_TRUE(Utf8::isValid(text)) << text;
}

TEST(Utf8, RefusesOverlongForms) {
    for (const char* text :
         {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF"})
        EXPECT_FALSE(Utf8::isValid(text));
}

TEST(Utf8, RefusesSurrogates) {
    EXPECT_FALSE(Utf8::isValid("\xED\xA0\x80"));
    EXPECT_FALSE(Utf8::isValid("\xED\xBF\xBF"));
}

TEST(Utf8, RefusesWhatLiesAboveUnicode) {
    EXPECT_FALSE(Utf8::isValid("\xF4\x90\x80\x80"));
    EXPECT_FALSE(Utf8::isValid("\xF5\x80\x80\x80"));
    EXPECT_FALSE(Utf8::isValid("\xFF"));
}

TEST(Utf8, RefusesWhatIsCutOffOrOutOfPlace) {
    for (const char* text :
         {"\x80", "\xBF", "a\x80", "\xC3", "\xC3(", "\xE2\x82", "\xE2\x82(", "\xF0\x9F\x98", "\xF0\x9F(\x80"})
        EXPECT_FALSE(Utf8::isValid(text));
}

TEST(Utf8, FindsABadByteAtEveryPlaceOfALongText) {
    for (std::size_t place = 0; place < 200; ++place) {
        std::string text(200, 'a');
        text[place] = '\xE4';
        EXPECT_FALSE(Utf8::isValid(text)) << place;
        EXPECT_EQ(Utf8::asciiPrefixLength(text), place);
    }
    EXPECT_EQ(Utf8::asciiPrefixLength(std::string(200, 'a')), 200U);
}

TEST(Utf8, RepairsOneSequenceAtATime) {
    EXPECT_EQ(Utf8::repaired("a\x80z"), "a\uFFFDz");
    EXPECT_EQ(Utf8::repaired("\xE2\x82"), "\uFFFD");
    EXPECT_EQ(Utf8::repaired("\xE2\x82z"), "\uFFFDz");
    EXPECT_EQ(Utf8::repaired("\xF0\x9F\x98\xF0\x9F\x98\x80"), "\uFFFD😀");
    EXPECT_EQ(Utf8::repaired("\xC0\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(Utf8::repaired("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8::repaired("\xF1\x80\x80\xE1\x80\xC2z"), "\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(Utf8::repaired("heil ä"), "heil ä");
    EXPECT_EQ(Utf8::repaired(""), "");
}

TEST(Utf8, AgreesWithICUOnRandomBytes) {
    static constexpr std::array<unsigned char, 24> bytes{'a',  0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                                         0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC,
                                                         0xED, 0xEF, 0xF0, 0xF1, 0xF4, 0xF5, 0xFF, 0x80};
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> byte(0, bytes.size() - 1);
    std::uniform_int_distribution<std::size_t> length(0, 12);
    for (int i = 0; i < 200000; ++i) {
        std::string text(length(random), ' ');
        for (char& character : text)
            character = static_cast<char>(bytes[byte(random)]);
        ASSERT_EQ(Utf8::isValid(text), isValidForICU(text));
        ASSERT_EQ(Utf8::repaired(text), repairedByICU(text));
    }
}

TEST(Utf8, WritesEveryScalarValueAsICUDoes) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character == 0xD800)
            character = 0xE000;
        std::string text;
        Utf8::append(text, character);
        std::string expected;
        icu::UnicodeString(static_cast<UChar32>(character)).toUTF8String(expected);
        ASSERT_EQ(text, expected);
    }
}

TEST(Utf8, CountsCodeUnits) {
    EXPECT_EQ(Utf8::codeUnitCount(""), 0);
    EXPECT_EQ(Utf8::codeUnitCount("aä漢😀"), 5);
    EXPECT_EQ(Utf8::codeUnitCount("\x80\x80"), 0);
}

} // namespace corvanta
