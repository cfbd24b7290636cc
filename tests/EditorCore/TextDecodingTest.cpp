#include "EditorCore/TextDecoding.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace corvanta {

namespace {

using namespace std::string_literals;

} // namespace

TEST(TextDecoding, GivesTheEmptyTextForNoBytes) {
    EXPECT_EQ(TextDecoding::string(""), "");
}

TEST(TextDecoding, ReadsASCIIAndUtf8AsTheyAre) {
    EXPECT_EQ(TextDecoding::string("nur ASCII\r\n\t\0"s), "nur ASCII\r\n\t\0"s);
    EXPECT_EQ(TextDecoding::string("Größe: 1 € 😀"), "Größe: 1 € 😀");
}

TEST(TextDecoding, DropsTheByteOrderMarkOfUtf8) {
    EXPECT_EQ(TextDecoding::string("\xEF\xBB\xBFäh"), "äh");
    EXPECT_EQ(TextDecoding::string("\xEF\xBB\xBF"), "");
}

TEST(TextDecoding, DropsOnlyOneByteOrderMark) {
    EXPECT_EQ(TextDecoding::string("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\uFEFFx");
    EXPECT_EQ(TextDecoding::string("x\xEF\xBB\xBF"), "x\uFEFF");
}

TEST(TextDecoding, KeepsTheMarkOfWhatIsNotUtf8AfterAll) {
    EXPECT_EQ(TextDecoding::string("\xEF\xBB\xBF\xE4h"), "ï»¿äh");
}

TEST(TextDecoding, ACutOffMarkIsNone) {
    EXPECT_EQ(TextDecoding::string("\xEF\xBB"), "ï»");
    EXPECT_EQ(TextDecoding::string("\xFF"), "ÿ");
}

TEST(TextDecoding, ReadsUtf16WithAMark) {
    EXPECT_EQ(TextDecoding::string("\xFF\xFE<\0\xE4\0"s), "<ä");
    EXPECT_EQ(TextDecoding::string("\xFE\xFF\0<\0\xE4"s), "<ä");
    EXPECT_EQ(TextDecoding::string("\xFF\xFE\x3D\xD8\x00\xDE"s), "😀");
    EXPECT_EQ(TextDecoding::string("\xFF\xFE"), "");
    EXPECT_EQ(TextDecoding::string("\xFE\xFF"), "");
}

TEST(TextDecoding, TakesUtf16WithAnOddByteForAnotherEncoding) {
    EXPECT_EQ(TextDecoding::string("\xFF\xFE"
                                   "a"),
              "ÿþa");
    EXPECT_EQ(TextDecoding::string("\xFE\xFF\0a\x81"s), "þÿ\0a\u0081"s);
}

TEST(TextDecoding, TakesUtf16WithALoneSurrogateForAnotherEncoding) {
    EXPECT_EQ(TextDecoding::string("\xFF\xFE\x3D\xD8"s), "ÿþ=Ø");
    EXPECT_EQ(TextDecoding::string("\xFE\xFF\xDE\x41"s), "þÿÞA");
}

TEST(TextDecoding, FindsNoUtf16WithoutAMark) {
    EXPECT_EQ(TextDecoding::string("a\0b\0"s), "a\0b\0"s);
}

TEST(TextDecoding, FindsNoUtf32) {
    EXPECT_EQ(TextDecoding::string("\xFF\xFE\0\0a\0\0\0"s), "\0a\0"s);
    EXPECT_EQ(TextDecoding::string("\0\0\xFE\xFF"s), "\0\0þÿ"s);
}

TEST(TextDecoding, ReadsALatin1FileByWayOfWindows1252) {
    EXPECT_EQ(TextDecoding::string("<p>B\xE4r, Stra\xDF"
                                   "e</p>"),
              "<p>Bär, Straße</p>");
    EXPECT_EQ(TextDecoding::string("\x80 \x84\x93 \x96"), "€ „“ –");
}

TEST(TextDecoding, ReadsAsLatin1WhatWindows1252DoesNotKnow) {
    for (const char* byte : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"}) {
        std::string expected = "\u0080ä";
        Utf8::append(expected, static_cast<unsigned char>(*byte));
        EXPECT_EQ(TextDecoding::string("\x80\xE4"s + byte), expected);
    }
}

TEST(TextDecoding, OneBadByteMakesAWholeFileNotUtf8) {
    EXPECT_EQ(TextDecoding::string("\xC3\xA4 \xE4"), "Ã¤ ä");
}

TEST(TextDecoding, IgnoresACharsetInThePage) {
    EXPECT_EQ(TextDecoding::string("<meta charset=\"iso-8859-2\">\xB1"), "<meta charset=\"iso-8859-2\">±");
}

TEST(TextDecoding, GivesValidUtf8ForAnyBytes) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes(static_cast<std::size_t>(byte(random) % 24), ' ');
        for (char& character : bytes)
            character = static_cast<char>(byte(random));
        if (i % 3 == 0)
            bytes.insert(0, i % 2 == 0 ? "\xFF\xFE" : "\xFE\xFF");
        ASSERT_TRUE(Utf8::isValid(TextDecoding::string(bytes)));
    }
}

} // namespace corvanta
