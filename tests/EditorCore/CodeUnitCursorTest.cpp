#include "EditorCore/CodeUnitCursor.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

namespace {

TextRange range(std::int64_t location, std::int64_t length) {
    return {location, length};
}

} // namespace

TEST(CodeUnitCursor, CountsBytesInASCII) {
    CodeUnitCursor cursor("abcdef");
    EXPECT_EQ(cursor.codeUnits(0, 2), range(0, 2));
    EXPECT_EQ(cursor.codeUnits(3, 6), range(3, 3));
}

TEST(CodeUnitCursor, CountsCharactersOfEveryLength) {
    CodeUnitCursor cursor("aä漢😀z");
    EXPECT_EQ(cursor.codeUnits(0, 1), range(0, 1));
    EXPECT_EQ(cursor.codeUnits(1, 3), range(1, 1));
    EXPECT_EQ(cursor.codeUnits(3, 6), range(2, 1));
    EXPECT_EQ(cursor.codeUnits(6, 10), range(3, 2));
    EXPECT_EQ(cursor.codeUnits(10, 11), range(5, 1));
}

TEST(CodeUnitCursor, MayJumpOverAnything) {
    const std::string text = std::string(5000, 'a') + "ä😀" + std::string(5000, 'b') + "ß";
    CodeUnitCursor cursor(text);
    EXPECT_EQ(cursor.codeUnits(text.size() - 3, text.size()), range(10002, 2));
}

TEST(CodeUnitCursor, MayBeAskedForAnEmptyRange) {
    CodeUnitCursor cursor("ää");
    EXPECT_EQ(cursor.codeUnits(0, 0), range(0, 0));
    EXPECT_EQ(cursor.codeUnits(2, 2), range(1, 0));
    EXPECT_EQ(cursor.codeUnits(4, 4), range(2, 0));
}

TEST(CodeUnitCursor, SeesTheEndOfEveryASCIIStretchInALongText) {
    std::string text;
    for (std::size_t i = 0; i < 300; ++i)
        text += std::string(i * 7 % 131, 'a') + (i % 3 == 0 ? "ä" : "😀");
    CodeUnitCursor cursor(text);
    for (std::size_t offset = 0; offset + 5 <= text.size(); offset += 5) {
        const std::int64_t before = Utf8::codeUnitCount(text.substr(0, offset));
        const std::int64_t inside = Utf8::codeUnitCount(text.substr(offset, 5));
        ASSERT_EQ(cursor.codeUnits(offset, offset + 5), range(before, inside)) << offset;
    }
}

} // namespace corvanta
