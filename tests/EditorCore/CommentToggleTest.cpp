#include "EditorCore/CommentToggle.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

/// What the whole of `text` becomes when all of it is selected.
std::string toggledWhole(std::string_view text) {
    return CommentToggle::toggled(text, {0, static_cast<std::int64_t>(text.size())}).text;
}

constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();

} // namespace

TEST(CommentToggle, PutsTheSelectionBetweenMarks) {
    EXPECT_EQ(CommentToggle::toggled("ein Wort hier", {4, 4}),
              (TextReplacement{{4, 4}, "<!-- Wort -->", {17, 0}}));
}

TEST(CommentToggle, KeepsTheWhiteSpaceOfWhatItWraps) {
    EXPECT_EQ(toggledWhole(" \n Wort\t"), "<!--  \n Wort\t -->");
    EXPECT_EQ(toggledWhole("  "), "<!--    -->");
}

TEST(CommentToggle, StandsBetweenTheMarksAfterABareCaret) {
    EXPECT_EQ(CommentToggle::toggled("ab", {1, 0}), (TextReplacement{{1, 0}, "<!--  -->", {6, 0}}));
    EXPECT_EQ(CommentToggle::toggled("", {0, 0}), (TextReplacement{{0, 0}, "<!--  -->", {5, 0}}));
    EXPECT_EQ(CommentToggle::toggled("ab", {2, 0}), (TextReplacement{{2, 0}, "<!--  -->", {7, 0}}));
}

TEST(CommentToggle, WritesACommentOfHTMLInEveryLanguage) {
    EXPECT_EQ(toggledWhole("p { color: red }"), "<!-- p { color: red } -->");
    EXPECT_EQ(toggledWhole("// let a = 1;"), "<!-- // let a = 1; -->");
    EXPECT_EQ(toggledWhole("/* a */"), "<!-- /* a */ -->");
}

TEST(CommentToggle, TakesTheMarksOfACommentAway) {
    EXPECT_EQ(CommentToggle::toggled("a <!-- Wort --> b", {2, 13}),
              (TextReplacement{{2, 13}, "Wort", {6, 0}}));
    EXPECT_EQ(toggledWhole("<!--Wort-->"), "Wort");
    EXPECT_EQ(toggledWhole("<!-- eins --> <!-- zwei -->"), "eins --> <!-- zwei");
}

TEST(CommentToggle, TakesTheWhiteSpaceAroundACommentAwayToo) {
    EXPECT_EQ(toggledWhole("  <!--  Wort -->\n"), "Wort");
    EXPECT_EQ(toggledWhole("\n\n\t<!-- Wort -->\r\n\n"), "Wort");
}

TEST(CommentToggle, KnowsTheWhiteSpaceOfUnicode) {
    EXPECT_EQ(toggledWhole("\u00A0\u2003\u3000<!-- Wort -->\u2028\u2029\u0085\v\f"), "Wort");
    EXPECT_EQ(toggledWhole("\u200B<!-- Wort -->"), "<!-- \u200B<!-- Wort --> -->");
}

TEST(CommentToggle, StripsOnlyBlanksInsideTheMarks) {
    EXPECT_EQ(toggledWhole("<!--   Wort   -->"), "Wort");
    EXPECT_EQ(toggledWhole("<!-- \tWort\n -->"), "\tWort\n");
    EXPECT_EQ(toggledWhole("<!--\nWort\n-->"), "\nWort\n");
    EXPECT_EQ(toggledWhole("<!--\u00A0Wort-->"), "\u00A0Wort");
}

TEST(CommentToggle, LeavesNothingOfAnEmptyComment) {
    EXPECT_EQ(CommentToggle::toggled("<!---->", {0, 7}), (TextReplacement{{0, 7}, "", {0, 0}}));
    EXPECT_EQ(toggledWhole("<!--   -->"), "");
}

TEST(CommentToggle, LeavesNothingOfAnOpenerThatIsItsOwnEnd) {
    EXPECT_EQ(toggledWhole("<!-->"), "");
    EXPECT_EQ(toggledWhole("<!--->"), "");
}

TEST(CommentToggle, WrapsAgainWhatOnlyBeginsOrOnlyEndsLikeAComment) {
    EXPECT_EQ(toggledWhole("<!-- Wort"), "<!-- <!-- Wort -->");
    EXPECT_EQ(toggledWhole("Wort -->"), "<!-- Wort --> -->");
    EXPECT_EQ(toggledWhole("<!-- Wort --> mehr"), "<!-- <!-- Wort --> mehr -->");
    EXPECT_EQ(toggledWhole("-->"), "<!-- --> -->");
    EXPECT_EQ(toggledWhole("<!--"), "<!-- <!-- -->");
}

TEST(CommentToggle, UndoesItself) {
    const TextReplacement wrapped = CommentToggle::toggled("Größe 😀", {0, 8});
    EXPECT_EQ(wrapped, (TextReplacement{{0, 8}, "<!-- Größe 😀 -->", {17, 0}}));
    EXPECT_EQ(CommentToggle::toggled(wrapped.text, {0, 17}).text, "Größe 😀");
}

TEST(CommentToggle, CountsUtf16CodeUnits) {
    EXPECT_EQ(CommentToggle::toggled("ü😀€abc", {3, 2}), (TextReplacement{{3, 2}, "<!-- €a -->", {14, 0}}));
    EXPECT_EQ(CommentToggle::toggled("😀", {2, 0}), (TextReplacement{{2, 0}, "<!--  -->", {7, 0}}));
    EXPECT_EQ(CommentToggle::toggled("x<!-- 😀 -->", {1, 11}), (TextReplacement{{1, 11}, "😀", {3, 0}}));
}

TEST(CommentToggle, IgnoresWhatOfTheSelectionLiesOutsideTheText) {
    EXPECT_EQ(CommentToggle::toggled("ab", {1, 9}), (TextReplacement{{1, 1}, "<!-- b -->", {11, 0}}));
    EXPECT_EQ(CommentToggle::toggled("ab", {7, 2}), (TextReplacement{{2, 0}, "<!--  -->", {7, 0}}));
    EXPECT_EQ(CommentToggle::toggled("ab", {1, huge}), (TextReplacement{{1, 1}, "<!-- b -->", {11, 0}}));
    EXPECT_EQ(CommentToggle::toggled("ab", {huge, huge}), (TextReplacement{{2, 0}, "<!--  -->", {7, 0}}));
    EXPECT_EQ(CommentToggle::toggled("ab", {-1, -1}), (TextReplacement{{0, 0}, "<!--  -->", {5, 0}}));
}

TEST(CommentToggle, NeverCutsACharacterInTwo) {
    EXPECT_EQ(CommentToggle::toggled("a😀b", {1, 1}), (TextReplacement{{1, 2}, "<!-- 😀 -->", {12, 0}}));
    EXPECT_EQ(CommentToggle::toggled("a😀b", {2, 1}), (TextReplacement{{1, 2}, "<!-- 😀 -->", {12, 0}}));
    EXPECT_EQ(CommentToggle::toggled("a😀b", {2, 2}), (TextReplacement{{1, 3}, "<!-- 😀b -->", {13, 0}}));
    EXPECT_EQ(CommentToggle::toggled("a😀b", {2, 0}), (TextReplacement{{1, 0}, "<!--  -->", {6, 0}}));
}

TEST(CommentToggle, TakesATextWithNul) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(CommentToggle::toggled(text, {0, 3}).text, "<!-- " + text + " -->");
}

} // namespace corvanta
