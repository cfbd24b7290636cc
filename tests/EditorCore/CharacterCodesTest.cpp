#include "EditorCore/CharacterCodes.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace corvanta {

namespace {

using Codes = std::vector<char32_t>;

/// Latin letters, each with each of the accents that Unicode has for itself.
std::vector<std::string> accentedLetters() {
    std::vector<std::string> letters;
    for (char32_t letter = 'a'; letter <= 'z'; ++letter) {
        for (char32_t accent = 0x346; accent <= 0x362; ++accent) {
            // Joins nothing visible and belongs to no letter.
            if (accent == 0x34F)
                continue;
            Utf8::append(letters.emplace_back(), letter);
            Utf8::append(letters.back(), accent);
        }
    }
    return letters;
}

} // namespace

TEST(CharacterCodes, OfSingleCodePointsAreTheCodePoints) {
    CharacterCodes codes;
    EXPECT_EQ(codes.add("aü漢й\U0001F600"), (Codes{'a', 0xFC, 0x6F22, 0x439, 0x1F600}));
    EXPECT_EQ(codes.find("ж"), 0x436);
    EXPECT_EQ(codes.find(U'ж'), 0x436);
}

TEST(CharacterCodes, OfEquivalentCharactersAreTheSame) {
    CharacterCodes codes;
    EXPECT_EQ(codes.add("u\u0308"), codes.add("ü"));
    EXPECT_EQ(codes.add("\u212A"), Codes{'K'});
    EXPECT_EQ(codes.find(U'\u212A'), U'K');
    EXPECT_EQ(codes.add("a\u0323\u0307"), codes.add("a\u0307\u0323"));
    EXPECT_NE(codes.add("a\u0323\u0307"), codes.add("a\u0323"));
}

TEST(CharacterCodes, OfALineEndIsOne) {
    CharacterCodes codes;
    EXPECT_EQ(codes.add("\r\n\n\r"), (Codes{CharacterCodes::carriageReturnLineFeed, '\n', '\r'}));
}

TEST(CharacterCodes, AreUnknownUntilTheCharacterIsAdded) {
    CharacterCodes codes;
    EXPECT_EQ(codes.find("x\u0301"), CharacterCodes::unknown);
    EXPECT_EQ(codes.find("x\u0301"), CharacterCodes::unknown);
    const Codes added = codes.add("x\u0301");
    EXPECT_NE(added.front(), CharacterCodes::unknown);
    EXPECT_EQ(codes.find("x\u0301"), added.front());
    EXPECT_EQ(codes.find("y\u0301\u0323"), CharacterCodes::unknown);
}

TEST(CharacterCodes, OfManyCharactersAreAllDifferentAndStay) {
    const auto letters = accentedLetters();
    CharacterCodes codes;
    Codes added;
    for (const auto& letter : letters) {
        EXPECT_EQ(codes.find(letter), CharacterCodes::unknown) << letter;
        added.push_back(codes.add(letter).front());
    }
    for (std::size_t i = 0; i < letters.size(); ++i)
        EXPECT_EQ(codes.find(letters[i]), added[i]) << letters[i];
    std::ranges::sort(added);
    EXPECT_EQ(std::ranges::adjacent_find(added), added.end());
}

} // namespace corvanta
