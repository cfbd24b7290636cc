#include "CodePaneFixture.hpp"

namespace corvanta {
namespace {

/// The find bar, as far as it needs a display.
class FindInPaneTest : public CodePaneFixture {
protected:
    testing::AssertionResult says(const std::string& status) {
        if (waitUntil([&] { return view->findBar().status() == status; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the bar says: " << view->findBar().status();
    }

    /// Has "a" found in "a b a", and an "x" typed in its place; the field for it has the keyboard.
    testing::AssertionResult asksToReplaceBothLetters() {
        open("a b a");
        model->showReplaceBar();
        keyboard.type("a");
        testing::AssertionResult found = says("1 von 2");
        for (int control = 0; control < 6; ++control)
            keyboard.press("Tab");
        keyboard.type("x");
        return found;
    }
};

TEST_F(FindInPaneTest, SearchesWhileTheStringIsTyped) {
    open("<p>Wort</p>\n<p>wort</p>\n");
    model->showFindBar();
    keyboard.type("wo");
    ASSERT_TRUE(says("1 von 2"));
    EXPECT_TRUE(selects({3, 2}));
    keyboard.press("Return");
    ASSERT_TRUE(selects({15, 2}));
    ASSERT_TRUE(says("2 von 2"));
    keyboard.press("Return");
    ASSERT_TRUE(selects({3, 2}));
    keyboard.press("Shift+Return");
    ASSERT_TRUE(selects({15, 2}));
    keyboard.type("x");
    EXPECT_TRUE(says("Keine Treffer"));
}

TEST_F(FindInPaneTest, ReturnsToTheTextOnEscape) {
    open("ab ab");
    model->showFindBar();
    keyboard.type("b");
    ASSERT_TRUE(selects({1, 1}));
    keyboard.press("Escape");
    keyboard.type("x");
    ASSERT_TRUE(becomes("ax ab"));
    EXPECT_FALSE(view->findBar().get_visible());
}

TEST_F(FindInPaneTest, GoesOnSearchingWithoutTheBar) {
    open("ab ab ab");
    view->textView().setSelectedRange({0, 2});
    model->useSelectionForFind();
    model->findNext();
    ASSERT_TRUE(selects({3, 2}));
    model->findPrevious();
    ASSERT_TRUE(selects({0, 2}));
    EXPECT_FALSE(view->findBar().get_visible());
}

TEST_F(FindInPaneTest, ReplacesInTheTextThroughTheBar) {
    open("a b a");
    model->showReplaceBar();
    keyboard.type("a");
    ASSERT_TRUE(says("1 von 2"));
    keyboard.press("Tab");
    for (int control = 0; control < 5; ++control)
        keyboard.press("Tab");
    keyboard.type("x");
    keyboard.press("Return");
    ASSERT_TRUE(becomes("x b a"));
}

TEST_F(FindInPaneTest, ReplacesOnceForEachReturnHoweverQuicklyTheyFollow) {
    ASSERT_TRUE(asksToReplaceBothLetters());
    keyboard.press("Return");
    keyboard.press("Return");
    ASSERT_TRUE(becomes("x b x"));
}

TEST_F(FindInPaneTest, KeepsTheKeyboardInTheBarWhenThereIsNothingLeftToReplace) {
    ASSERT_TRUE(asksToReplaceBothLetters());
    for (int control = 0; control < 2; ++control)
        keyboard.press("Tab");
    keyboard.press("space");
    ASSERT_TRUE(becomes("x b x"));
    ASSERT_TRUE(says("Keine Treffer"));
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return !view->findBar().get_visible(); }));
}

TEST_F(FindInPaneTest, MarksTheMatchesThatAreOnScreen) {
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "eins\n";
    open(text);
    model->showFindBar();
    keyboard.type("ns");
    ASSERT_TRUE(says("1 von 500"));
    const auto isMarked = [this](int codePoint) {
        return view->textView().get_buffer()->get_iter_at_offset(codePoint).has_tag(view->findBar().mark());
    };
    EXPECT_TRUE(waitUntil([&] { return isMarked(2) && isMarked(7); }));
    EXPECT_FALSE(isMarked(0));
    EXPECT_FALSE(isMarked(5 * 400 + 2));
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return !isMarked(7); }));
}

} // namespace
} // namespace corvanta
