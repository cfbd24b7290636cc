#include "CodePaneFixture.hpp"

#include <gtksourceview/gtksource.h>

namespace corvanta {
namespace {

class CodePaneKeysTest : public CodePaneFixture {};

TEST_F(CodePaneKeysTest, PublishesASelectionTypedOverOnceAndTakesItBackInOneStep) {
    open("eins zwei");
    view->textView().setSelectedRange({5, 4});
    keyboard.type("x");
    ASSERT_TRUE(becomes("eins x"));
    EXPECT_EQ(published, std::vector<std::string>{"eins x"});
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei"));
    EXPECT_EQ(published, (std::vector<std::string>{"eins x", "eins zwei"}));
    EXPECT_TRUE(selects({5, 4}));
}

TEST_F(CodePaneKeysTest, MakesAgainWhatWasTakenBack) {
    open("");
    keyboard.type("abc");
    ASSERT_TRUE(becomes("abc"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes(""));
    keyboard.press("Control+Shift+z");
    ASSERT_TRUE(becomes("abc"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes(""));
    keyboard.press("Control+y");
    EXPECT_TRUE(becomes("abc"));
}

TEST_F(CodePaneKeysTest, TakesAPasteBackInOneStep) {
    open("eins");
    view->textView().get_clipboard()->set_text("zwei\ndrei ");
    keyboard.press("Control+v");
    ASSERT_TRUE(becomes("zwei\ndrei eins"));
    EXPECT_EQ(published.size(), 1U);
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("eins"));
    EXPECT_EQ(published.size(), 2U);
}

TEST_F(CodePaneKeysTest, TakesAReformattingBackInOneStepWithItsSelection) {
    open("<ul><li>x</li></ul>");
    view->textView().setSelectedRange({4, 4});
    model->reformatIndentation();
    ASSERT_EQ(view->textView().text(), "<ul>\n\t<li>x</li>\n</ul>");
    published.clear();
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("<ul><li>x</li></ul>"));
    EXPECT_EQ(published.size(), 1U);
    EXPECT_TRUE(selects({4, 4}));
}

TEST_F(CodePaneKeysTest, InsertsFromTheMenuInOneStep) {
    open("eins zwei");
    view->textView().setSelectedRange({0, 4});
    model->insertAtCursor("<a href=\"\"></a>", 9);
    EXPECT_EQ(published, std::vector<std::string>{"<a href=\"\"></a> zwei"});
    EXPECT_TRUE(selects({9, 0}));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei"));
    EXPECT_TRUE(selects({0, 4}));
}

TEST_F(CodePaneKeysTest, TogglesACommentInOneStep) {
    open("ü😀 zwei");
    view->textView().setSelectedRange({4, 4});
    model->toggleComment();
    ASSERT_EQ(*model->text, "ü😀 <!-- zwei -->");
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("ü😀 zwei"));
    EXPECT_TRUE(selects({4, 4}));
}

TEST_F(CodePaneKeysTest, RemembersStepsThroughANewView) {
    open("");
    keyboard.type("ab");
    ASSERT_TRUE(becomes("ab"));
    build();
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes(""));
}

TEST_F(CodePaneKeysTest, IndentsASelectionOfLinesInOneStep) {
    open("a\nb\nc\n");
    keyboard.press("Shift+Down");
    keyboard.press("Shift+Right");
    ASSERT_TRUE(waitUntil([&] { return selects({0, 3}); }));
    keyboard.press("Tab");
    ASSERT_TRUE(becomes("\ta\n\tb\nc\n"));
    keyboard.press("Shift+Tab");
    ASSERT_TRUE(becomes("a\nb\nc\n"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("\ta\n\tb\nc\n"));
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("a\nb\nc\n"));
    EXPECT_EQ(published.size(), 4U);
}

TEST_F(CodePaneKeysTest, MovesADraggedSelectionInOneStep) {
    open("eins zwei drei");
    view->textView().setSelectedRange({0, 5});
    drag(2, 14);
    ASSERT_TRUE(becomes("zwei dreieins "));
    EXPECT_EQ(published, std::vector<std::string>{"zwei dreieins "});
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei drei"));
    EXPECT_TRUE(selects({0, 5}));
    EXPECT_FALSE(view->textView().canUndo());
    keyboard.press("Control+y");
    EXPECT_TRUE(becomes("zwei dreieins "));
}

TEST_F(CodePaneKeysTest, PastesTheSelectionWithTheMiddleButtonInOneStep) {
    open("eins\nzwei");
    keyboard.press("Shift+End");
    ASSERT_TRUE(selects({0, 4}));
    pointAt(9, 0);
    pressPointer(view->textView(), 2);
    releasePointer(view->textView(), 2);
    ASSERT_TRUE(becomes("eins\nzweieins"));
    EXPECT_EQ(published.size(), 1U);
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("eins\nzwei"));
}

TEST_F(CodePaneKeysTest, LeavesQuotesDashesAndWordsAsTheyWereTyped) {
    open("");
    for (const char* key : {"quotedbl", "a", "quotedbl", "minus", "minus", "apostrophe", "t", "e", "h",
                            "space", "period", "period", "period"})
        keyboard.press(key);
    EXPECT_TRUE(becomes("\"a\"--'teh ..."));
}

TEST_F(CodePaneKeysTest, ShowsLineNumbersTheLineOfTheCaretAndMatchingBrackets) {
    open("{}");
    auto* source = GTK_SOURCE_VIEW(view->textView().gobj());
    EXPECT_TRUE(gtk_source_view_get_show_line_numbers(source));
    EXPECT_TRUE(gtk_source_view_get_highlight_current_line(source));
    EXPECT_TRUE(gtk_source_buffer_get_highlight_matching_brackets(
        GTK_SOURCE_BUFFER(view->textView().get_buffer()->gobj())));
}

TEST_F(CodePaneKeysTest, InsertsATabWithoutASelection) {
    open("ab");
    keyboard.press("Right");
    keyboard.press("Tab");
    EXPECT_TRUE(becomes("a\tb"));
}

TEST_F(CodePaneKeysTest, GoesToTheFirstNonBlankAndThenToTheStart) {
    open("\t  wort");
    keyboard.press("End");
    ASSERT_TRUE(selects({7, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({3, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({0, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({3, 0}));
    keyboard.press("End");
    ASSERT_TRUE(selects({7, 0}));
    keyboard.press("Shift+Home");
    EXPECT_TRUE(selects({3, 4}));
}

TEST_F(CodePaneKeysTest, AsksForAnotherFontSizeWithinTheBounds) {
    open("x");
    std::vector<double> sizes;
    view->signalFontSizeRequested().connect([&](double size) {
        sizes.push_back(size);
        view->setFontSize(size);
    });
    keyboard.press("Control+plus");
    keyboard.press("Control+minus");
    keyboard.press("Control+minus");
    keyboard.press("Control+0");
    ASSERT_TRUE(waitUntil([&] { return sizes.size() == 4; }));
    EXPECT_EQ(sizes, (std::vector<double>{14, 13, 12, 13}));
    view->setFontSize(24);
    keyboard.press("Control+plus");
    keyboard.type("y");
    ASSERT_TRUE(becomes("yx"));
    EXPECT_EQ(sizes.size(), 4U);
}

TEST_F(CodePaneKeysTest, RestoresSelectionScrollPositionAndFocusInANewView) {
    std::string text;
    for (int line = 0; line < 1000; ++line)
        text += "Zeile\n";
    open(text);
    view->textView().setSelectedRange({6 * 500, 5});
    view->textView().revealSelection();
    ASSERT_TRUE(waitUntil([&] { return view->textView().scrollOrigin()->y > 1000; }));
    view->textView().setSelectedRange({6 * 500, 4});
    const double scrolled = view->textView().scrollOrigin()->y;
    build();
    EXPECT_TRUE(selects({6 * 500, 4}));
    EXPECT_TRUE(waitUntil([&] { return view->textView().get_vadjustment()->get_value() == scrolled; }))
        << view->textView().get_vadjustment()->get_value() << " instead of " << scrolled;
    EXPECT_TRUE(view->textView().isFirstResponder());
}

} // namespace
} // namespace corvanta
