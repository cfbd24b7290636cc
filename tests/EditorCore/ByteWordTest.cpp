#include "EditorCore/ByteWord.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

namespace {

bool isASCIILetter(int byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

/// Eight bytes of which only the one at `place` is `byte`; the others are 0xFF, the worst neighbours for a
/// carry.
ByteWord wordWith(int byte, std::size_t place) {
    std::string bytes(ByteWord::size, '\xFF');
    bytes[place] = static_cast<char>(byte);
    return ByteWord(bytes.data());
}

} // namespace

TEST(ByteWord, MarksEveryByteRightAtEveryPlace) {
    for (std::size_t place = 0; place < ByteWord::size; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            const ByteWord word = wordWith(byte, place);
            const auto expected = [place](bool isMarked) { return isMarked ? place : ByteWord::size; };
            EXPECT_EQ(ByteWord::first(word.letters()), expected(isASCIILetter(byte))) << byte;
            EXPECT_EQ(ByteWord::first(word.inRange('0', ':')), expected(byte >= '0' && byte <= ':')) << byte;
            EXPECT_EQ(ByteWord::first(word.equalTo('_')), expected(byte == '_')) << byte;
            EXPECT_EQ(ByteWord::first(word.equalTo('\0')), expected(byte == 0)) << byte;
            EXPECT_EQ(ByteWord::first(word.equalTo('\x7F')), expected(byte == 0x7F)) << byte;
        }
    }
}

TEST(ByteWord, FindsTheFirstOfSeveralMarks) {
    EXPECT_EQ(ByteWord::first(ByteWord("12ab45cd").letters()), 2U);
    EXPECT_EQ(ByteWord::first(ByteWord::others(ByteWord("ab12cd34").letters())), 2U);
    EXPECT_EQ(ByteWord::first(ByteWord::others(ByteWord("abcdefgh").letters())), ByteWord::size);
}

} // namespace corvanta
