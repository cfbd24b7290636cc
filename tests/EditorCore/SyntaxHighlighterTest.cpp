#include "EditorCore/SyntaxHighlighter.hpp"

#include "EditorCore/RecordedTextStorage.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {

namespace {

constexpr EditorFont font{17};
constexpr DynamicColor baseColor{{1, 2, 3}, {4, 5, 6}};

RecordedTextStorage::Run run(TextRange range, SyntaxToken token, const EditorTheme& theme) {
    return {range, token, theme.color(token)};
}

} // namespace

TEST(SyntaxHighlighter, PaintsEverySpanInTheColorOfItsKind) {
    const EditorTheme& theme = EditorTheme::klassisch();
    RecordedTextStorage storage("<p id=\"x\">ä</p>");
    SyntaxHighlighter::highlight(storage, theme, font, baseColor);
    EXPECT_THAT(
        storage.runs,
        testing::ElementsAre(run({0, 2}, SyntaxToken::tag, theme), run({3, 2}, SyntaxToken::attribute, theme),
                             run({6, 3}, SyntaxToken::string, theme), run({9, 1}, SyntaxToken::tag, theme),
                             run({11, 3}, SyntaxToken::tag, theme), run({14, 1}, SyntaxToken::tag, theme)));
}

TEST(SyntaxHighlighter, SetsFontAndBaseColorOnTheWholeText) {
    RecordedTextStorage storage("eins 😀");
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    EXPECT_EQ(storage.base, (RecordedTextStorage::Base{{0, 7}, font, baseColor}));
    EXPECT_TRUE(storage.runs.empty());
}

TEST(SyntaxHighlighter, MakesAllChangesInOneBatch) {
    RecordedTextStorage storage("<b>");
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    EXPECT_EQ(storage.log, "begin set add add end ");
}

TEST(SyntaxHighlighter, SetsTheAttributesOfAnEmptyText) {
    RecordedTextStorage storage("");
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    EXPECT_EQ(storage.log, "begin set end ");
    EXPECT_EQ(storage.base, (RecordedTextStorage::Base{{0, 0}, font, baseColor}));
}

TEST(SyntaxHighlighter, PaintsASpanThatEndsWithTheText) {
    RecordedTextStorage storage("<!-- offen");
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    EXPECT_THAT(storage.runs,
                testing::ElementsAre(run({0, 10}, SyntaxToken::comment, EditorTheme::dezent())));
}

TEST(SyntaxHighlighter, LeavesOutASpanThatEndsOneUnitBeyondTheText) {
    RecordedTextStorage storage("<p><!-- offen");
    storage.reportedLength -= 1;
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    EXPECT_THAT(storage.runs, testing::ElementsAre(run({0, 2}, SyntaxToken::tag, EditorTheme::dezent()),
                                                   run({2, 1}, SyntaxToken::tag, EditorTheme::dezent())));
    EXPECT_EQ(storage.log, "begin set add add end ");
}

TEST(SyntaxHighlighter, RemovesWhatAnEarlierRunPainted) {
    RecordedTextStorage storage("<p>");
    SyntaxHighlighter::highlight(storage, EditorTheme::dezent(), font, baseColor);
    SyntaxHighlighter::highlight(storage, EditorTheme::kontrast(), font, baseColor);
    EXPECT_THAT(storage.runs, testing::ElementsAre(run({0, 2}, SyntaxToken::tag, EditorTheme::kontrast()),
                                                   run({2, 1}, SyntaxToken::tag, EditorTheme::kontrast())));
}

TEST(SyntaxHighlighter, UsesTheStandardColorForKindsThatAThemeLeavesOut) {
    RecordedTextStorage storage("<p>");
    SyntaxHighlighter::highlight(storage, EditorTheme{"leer", {}}, font, baseColor);
    ASSERT_EQ(storage.runs.size(), 2U);
    EXPECT_EQ(storage.runs[0].foreground, standardTextColor);
}

} // namespace corvanta
