#include "EditorCore/LineShift.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

namespace {

std::string applied(SharedText text, const LineShift& shift) {
    for (auto range = shift.ranges.rbegin(); range != shift.ranges.rend(); ++range)
        text.replace(text.atCodeUnit(range->location).byte, text.atCodeUnit(range->end()).byte, shift.text);
    return text.string();
}

std::string right(const SharedText& text, TextRange selection) {
    return applied(text, LineShift::toTheRight(text, selection));
}

std::string left(const SharedText& text, TextRange selection) {
    return applied(text, LineShift::toTheLeft(text, selection));
}

} // namespace

TEST(LineShift, MovesEveryLineThatTheSelectionTouches) {
    EXPECT_EQ(right("eins\nzwei\ndrei", {2, 5}), "\teins\n\tzwei\ndrei");
    EXPECT_EQ(left("\teins\n\tzwei\n\tdrei", {2, 6}), "eins\nzwei\n\tdrei");
}

TEST(LineShift, LeavesALineAloneAtWhoseStartTheSelectionEnds) {
    EXPECT_EQ(right("a\nb\nc", {0, 4}), "\ta\n\tb\nc");
    EXPECT_EQ(left("\ta\n\tb", {0, 3}), "a\n\tb");
}

TEST(LineShift, MovesTheLineOfABareCaret) {
    EXPECT_EQ(left("a\n\tb\nc", {3, 0}), "a\nb\nc");
    EXPECT_EQ(left("\ta", {0, 0}), "a");
    EXPECT_EQ(left("\ta", {2, 0}), "a");
}

TEST(LineShift, PutsNoTabIntoEmptyLines) {
    EXPECT_EQ(right("a\n\nb", {0, 4}), "\ta\n\n\tb");
    EXPECT_EQ(right("a\r\n\r\nb", {0, 6}), "\ta\r\n\r\n\tb");
    EXPECT_EQ(right("", {0, 0}), "");
}

TEST(LineShift, KnowsEveryLineEnd) {
    EXPECT_EQ(right("a\rb\r\nc\nd", {0, 8}), "\ta\r\tb\r\n\tc\n\td");
}

TEST(LineShift, TakesBlanksForATab) {
    EXPECT_EQ(left("      a", {0, 0}), "  a");
    EXPECT_EQ(left("  a", {0, 0}), "a");
    EXPECT_EQ(left("  \ta", {0, 0}), "a");
    EXPECT_EQ(left("    \ta", {0, 0}), "\ta");
}

TEST(LineShift, LeavesALineWithoutIndentationAsItIs) {
    EXPECT_EQ(LineShift::toTheLeft("a\n\tb", {0, 0}).ranges, std::vector<TextRange>{});
    EXPECT_EQ(left("a\n\tb", {0, 4}), "a\nb");
}

TEST(LineShift, KeepsTheSameTextSelected) {
    EXPECT_EQ(LineShift::toTheRight("eins\nzwei", {2, 5}).selection, (TextRange{3, 6}));
    EXPECT_EQ(LineShift::toTheLeft("\teins\n\tzwei", {3, 6}).selection, (TextRange{2, 5}));
}

TEST(LineShift, KeepsASelectionOfWholeLinesOne) {
    EXPECT_EQ(LineShift::toTheRight("a\nb\n", {0, 4}).selection, (TextRange{0, 6}));
    EXPECT_EQ(LineShift::toTheLeft("\ta\n\tb\n", {0, 6}).selection, (TextRange{0, 4}));
}

TEST(LineShift, MovesACaretWithinWhatIsTakenToTheStartOfTheLine) {
    EXPECT_EQ(LineShift::toTheLeft("    a", {2, 0}).selection, (TextRange{0, 0}));
}

TEST(LineShift, CountsUtf16CodeUnits) {
    const LineShift shift = LineShift::toTheRight("ü😀\n😀", {0, 6});
    EXPECT_EQ(shift.ranges, (std::vector<TextRange>{{0, 0}, {4, 0}}));
    EXPECT_EQ(shift.selection, (TextRange{0, 8}));
}

TEST(LineShift, ToTheLeftUndoesToTheRight) {
    const SharedText text = "<ul>\n\t<li>\n\n  x</li>\n</ul>\n";
    const LineShift there = LineShift::toTheRight(text, {0, 25});
    EXPECT_EQ(left(applied(text, there), there.selection), text);
}

} // namespace corvanta
