#include "EditorCore/SharedText.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace corvanta {
namespace {

std::int64_t size(const std::string& text) {
    return static_cast<std::int64_t>(text.size());
}

std::string longText() {
    std::string text;
    for (int line = 0; line < 5000; ++line)
        text += "Zeile ü € 😀 " + std::to_string(line) + "\n";
    return text;
}

TEST(SharedText, IsEmptyAtFirst) {
    const SharedText text;
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text, "");
    EXPECT_EQ(text.end(), TextPosition{});
    EXPECT_EQ(text.atCodeUnit(3), TextPosition{});
    EXPECT_EQ(text, SharedText(""));
}

TEST(SharedText, BecomesEmptyAgain) {
    SharedText text("abc");
    text.replace(0, 3, "");
    EXPECT_TRUE(text.empty());
    text.replace(0, 0, "x");
    EXPECT_EQ(text, "x");
}

TEST(SharedText, CountsInAllThreeWays) {
    const SharedText text("aü€😀b");
    EXPECT_EQ(text.end(), (TextPosition{11, 5, 6}));
    EXPECT_EQ(text.atByte(3), (TextPosition{3, 2, 2}));
    EXPECT_EQ(text.atCodePoint(4), (TextPosition{10, 4, 5}));
    EXPECT_EQ(text.atCodeUnit(5), (TextPosition{10, 4, 5}));
}

TEST(SharedText, TakesThePlaceInsideACharacterForItsStart) {
    const SharedText text("aü😀");
    EXPECT_EQ(text.atCodeUnit(3), (TextPosition{3, 2, 2}));
    EXPECT_EQ(text.atByte(2), (TextPosition{1, 1, 1}));
    EXPECT_EQ(text.atByte(6), (TextPosition{3, 2, 2}));
}

TEST(SharedText, TakesThePlaceBehindTheEndForTheEnd) {
    EXPECT_EQ(SharedText("ab").atCodeUnit(7), (TextPosition{2, 2, 2}));
}

TEST(SharedText, LeavesCopiesAlone) {
    SharedText text(longText());
    const SharedText copy = text;
    text.replace(5, 6, "anders");
    EXPECT_EQ(copy, longText());
    EXPECT_NE(text, copy);
}

TEST(SharedText, HoldsNul) {
    const std::string bytes("a\0b", 3);
    const SharedText text(bytes);
    EXPECT_EQ(text.string(), bytes);
    EXPECT_TRUE(text.contains('\0'));
    EXPECT_FALSE(SharedText("ab").contains('\0'));
}

TEST(SharedText, StaysWholeWhenLittleIsLeftOfItsFirstAndItsLastPart) {
    std::string expected(200'000, 'x');
    for (std::size_t at = 0; at < expected.size(); at += 7)
        expected[at] = static_cast<char>('a' + at % 26);
    SharedText text(expected);
    const auto erase = [&](std::size_t first, std::size_t last) {
        expected.erase(first, last - first);
        text.replace(static_cast<std::int64_t>(first), static_cast<std::int64_t>(last), "");
        EXPECT_EQ(text, expected);
        EXPECT_EQ(text.end().byte, static_cast<std::int64_t>(expected.size()));
    };
    erase(10, 90'000);
    erase(20'000, expected.size() - 10);
    erase(0, expected.size());
}

TEST(SharedText, TellsWhatTwoTextsHaveInCommon) {
    const auto change = [](const std::string& before, const std::string& after) {
        const TextChange found = SharedText::change(before, after);
        return std::pair(found.unchangedBefore, found.unchangedAfter);
    };
    EXPECT_EQ(change("abcd", "abXcd"), std::pair(2L, 2L));
    EXPECT_EQ(change("aaa", "aa"), std::pair(2L, 0L));
    EXPECT_EQ(change("", "x"), std::pair(0L, 0L));
    EXPECT_EQ(change("x", "x"), std::pair(1L, 0L));
}

TEST(SharedText, CutsNoCharacterWhereTwoTextsDiffer) {
    // Both differ from the other in one byte of the character only.
    const TextChange front = SharedText::change("aüb", "aöb");
    EXPECT_EQ(front.unchangedBefore, 1);
    EXPECT_EQ(front.unchangedAfter, 1);
    const TextChange end = SharedText::change("\u00FC", "\u01FC");
    EXPECT_EQ(end.unchangedBefore, 0);
    EXPECT_EQ(end.unchangedAfter, 0);
}

class SharedTextAgainstAString : public testing::TestWithParam<unsigned> {};

TEST_P(SharedTextAgainstAString, GivesTheSameThroughRandomEdits) {
    std::mt19937 random(GetParam());
    const std::vector<std::string> pieces{
        "a", "ü", "€", "😀", "", std::string(900, 'x'), longText().substr(0, 30000)};
    std::string expected = longText();
    SharedText text(expected);
    const auto boundary = [&] {
        std::size_t at = random() % (expected.size() + 1);
        while (at < expected.size() && (static_cast<unsigned char>(expected[at]) & 0xC0U) == 0x80U)
            ++at;
        return at;
    };
    for (int step = 0; step < 150; ++step) {
        const SharedText before = text;
        const std::string expectedBefore = expected;
        std::size_t first = boundary();
        std::size_t last = random() % 3 == 0 ? boundary() : first;
        if (last < first)
            std::swap(first, last);
        if (expected.size() < 50'000)
            last = first;
        std::string inserted = pieces[random() % pieces.size()];
        while (!inserted.empty() && !Utf8::isValid(inserted))
            inserted.pop_back();
        expected.replace(first, last - first, inserted);
        text.replace(static_cast<std::int64_t>(first), static_cast<std::int64_t>(last), inserted);

        ASSERT_EQ(text.size(), expected.size());
        ASSERT_EQ(text.end().codeUnit, Utf8::codeUnitCount(expected));
        const std::size_t place = boundary();
        const TextPosition position = text.atByte(static_cast<std::int64_t>(place));
        ASSERT_EQ(position.byte, static_cast<std::int64_t>(place));
        ASSERT_EQ(position.codeUnit, Utf8::codeUnitCount(std::string_view(expected).substr(0, place)));
        ASSERT_EQ(text.atCodeUnit(position.codeUnit), position);
        ASSERT_EQ(text.atCodePoint(position.codePoint), position);

        const TextChange change = SharedText::change(before, text);
        SharedText rebuilt = before;
        rebuilt.replace(change.unchangedBefore, size(expectedBefore) - change.unchangedAfter,
                        text.substring(change.unchangedBefore, size(expected) - change.unchangedAfter));
        ASSERT_EQ(rebuilt, text);
        ASSERT_EQ(before == text, expectedBefore == expected);
        if (step % 20 == 0) {
            ASSERT_EQ(text.string(), expected);
            ASSERT_EQ(before.string(), expectedBefore);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SharedTextAgainstAString, testing::Range(0U, 4U));

} // namespace
} // namespace corvanta
