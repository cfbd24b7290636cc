#include "EditorCore/EditorViewModel.hpp"

#include "StringTextView.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class EditorViewModelTest : public testing::Test {
protected:
    void show(const std::string& text, TextRange selection = {}) {
        model.text = SharedText(text);
        view = std::make_shared<StringTextView>(*model.text, model.undoHistory);
        view->setSelectedRange(selection);
        model.textView = view;
        following = Subscription(view->signalTextDidChange().connect([this] { model.text = view->text(); }));
    }

    EditorViewModel model{SharedText()};
    std::shared_ptr<StringTextView> view;
    Subscription following;
    std::vector<std::string> published;
    Subscription recording =
        model.text.subscribe([this](const SharedText& text) { published.push_back(text); });
};

TEST_F(EditorViewModelTest, HasNothingToRestoreAtFirst) {
    EXPECT_TRUE(model.textView.expired());
    EXPECT_FALSE(model.persistedSelection);
    EXPECT_FALSE(model.persistedScrollOrigin);
    EXPECT_FALSE(model.hasHadTextView);
    EXPECT_FALSE(model.hadFocus);
}

TEST_F(EditorViewModelTest, DoesNotKeepItsViewAlive) {
    show("x");
    view.reset();
    EXPECT_TRUE(model.textView.expired());
}

TEST_F(EditorViewModelTest, ReformatsItsWholeText) {
    model.text = "<ul><li>x</li></ul>";
    model.reformatIndentation();
    EXPECT_EQ(*model.text, "<ul>\n\t<li>x</li>\n</ul>");
}

TEST_F(EditorViewModelTest, PublishesAReformattingThatChangesNothing) {
    model.text = "<p>x</p>";
    model.reformatIndentation();
    EXPECT_EQ(published, (std::vector<std::string>{"<p>x</p>", "<p>x</p>"}));
}

TEST_F(EditorViewModelTest, AsksTheViewsFindBarByTag) {
    show("x");
    model.showFindBar();
    model.findNext();
    model.findPrevious();
    model.useSelectionForFind();
    model.showReplaceBar();
    EXPECT_EQ(view->findPanelActions, (std::vector{1, 2, 3, 7, 12}));
}

TEST_F(EditorViewModelTest, GivesTheViewTheFocusBeforeItsFindBarIsShownAndOnlyThen) {
    const std::vector<std::pair<void (EditorViewModel::*)() const, bool>> operations{
        {&EditorViewModel::showFindBar, true},
        {&EditorViewModel::showReplaceBar, true},
        {&EditorViewModel::findNext, false},
        {&EditorViewModel::findPrevious, false},
        {&EditorViewModel::useSelectionForFind, false}};
    for (const auto& [operation, takesFocus] : operations) {
        show("x");
        (model.*operation)();
        EXPECT_EQ(view->focusAtFindPanelAction, std::vector{takesFocus});
    }
}

TEST_F(EditorViewModelTest, DoesNothingWithoutAView) {
    model.text = "x";
    model.showFindBar();
    model.findNext();
    model.toggleComment();
    EXPECT_EQ(*model.text, "x");
    EXPECT_EQ(published.size(), 1U);
}

TEST_F(EditorViewModelTest, AppendsWithoutAView) {
    model.text = "ab";
    model.insertAtCursor("<br>", 1);
    EXPECT_EQ(*model.text, "ab<br>");
    EXPECT_EQ(published.size(), 2U);
}

TEST_F(EditorViewModelTest, InsertsInTheSelectionsPlace) {
    show("eins zwei drei", {5, 4});
    model.insertAtCursor("<a href=\"\"></a>", 9);
    EXPECT_EQ(*model.text, "eins <a href=\"\"></a> drei");
    EXPECT_EQ(view->selectedRange(), (TextRange{14, 0}));
    EXPECT_TRUE(view->isFocused);
}

TEST_F(EditorViewModelTest, LeavesTheCaretBehindAnInsertionWithoutAnOffset) {
    show("ab", {1, 0});
    model.insertAtCursor("<br>", std::nullopt);
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 0}));
}

TEST_F(EditorViewModelTest, LeavesTheCaretBeforeAnInsertionWithAnOffsetOfZero) {
    show("ab", {1, 0});
    model.insertAtCursor("<br>", 0);
    EXPECT_EQ(view->selectedRange(), (TextRange{1, 0}));
}

TEST_F(EditorViewModelTest, CountsTheOffsetInCodeUnits) {
    show("😀ü", {2, 1});
    model.insertAtCursor("😀<br>", 2);
    EXPECT_EQ(*model.text, "😀😀<br>");
    EXPECT_EQ(view->selectedRange(), (TextRange{4, 0}));
}

TEST_F(EditorViewModelTest, PublishesAnInsertionOnceAndUndoesItInOneStep) {
    show("eins zwei", {0, 4});
    published.clear();
    model.insertAtCursor("<hr>", 4);
    EXPECT_EQ(published, std::vector<std::string>{"<hr> zwei"});
    view->undo();
    EXPECT_EQ(published, (std::vector<std::string>{"<hr> zwei", "eins zwei"}));
    EXPECT_EQ(view->selectedRange(), (TextRange{0, 4}));
}

TEST_F(EditorViewModelTest, PutsTheSelectionIntoAComment) {
    show("a { b: c }", {0, 10});
    model.toggleComment();
    EXPECT_EQ(*model.text, "<!-- a { b: c } -->");
    EXPECT_EQ(view->selectedRange(), (TextRange{19, 0}));
    EXPECT_TRUE(view->isFocused);
}

TEST_F(EditorViewModelTest, PutsABareCaretBetweenTheMarks) {
    show("xy", {1, 0});
    model.toggleComment();
    EXPECT_EQ(*model.text, "x<!--  -->y");
    EXPECT_EQ(view->selectedRange(), (TextRange{6, 0}));
}

TEST_F(EditorViewModelTest, TakesACommentApart) {
    show("a  <!--  W -->\n b", {1, 14});
    model.toggleComment();
    EXPECT_EQ(*model.text, "aW b");
}

TEST_F(EditorViewModelTest, WrapsWhatOnlyBeginsLikeAComment) {
    show("<!-- a", {0, 6});
    model.toggleComment();
    EXPECT_EQ(*model.text, "<!-- <!-- a -->");
}

TEST_F(EditorViewModelTest, TakesBackACommentInOneStepWithItsSelection) {
    show("eins zwei", {5, 4});
    model.toggleComment();
    ASSERT_EQ(*model.text, "eins <!-- zwei -->");
    view->undo();
    EXPECT_EQ(*model.text, "eins zwei");
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 4}));
}

TEST_F(EditorViewModelTest, ForgetsItsHistoryWhenTheTextChangesUnseen) {
    show("eins");
    view->type("x");
    following = Subscription();
    view.reset();
    ASSERT_TRUE(model.undoHistory.canUndo());
    model.text = "anders";
    EXPECT_FALSE(model.undoHistory.canUndo());
}

} // namespace
} // namespace corvanta
