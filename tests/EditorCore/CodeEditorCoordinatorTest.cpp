#include "EditorCore/CodeEditorCoordinator.hpp"

#include "EditorCore/SyntaxTokenizer.hpp"
#include "StringTextView.hpp"
#include "Support/ManualMainQueue.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class CodeEditorCoordinatorTest : public testing::Test {
protected:
    void build() {
        coordinator.reset();
        view = std::make_shared<StringTextView>(*model.text, model.undoHistory);
        coordinator.emplace(CodeEditorCoordinator::Parts{model, view, view->storage, queue}, "klassisch", 13);
    }

    void open(const std::string& text) {
        model.text = SharedText(text);
        build();
        published.clear();
        view->storage.colourings = 0;
    }

    void expectColouredText() {
        EXPECT_EQ(view->storage.runs.overlapping({0, view->storage.length()}),
                  SyntaxTokenizer::tokenize(view->text().string()));
    }

    ManualMainQueue queue;
    EditorViewModel model{SharedText()};
    std::shared_ptr<StringTextView> view;
    std::optional<CodeEditorCoordinator> coordinator;
    std::vector<std::string> published;
    Subscription recording =
        model.text.subscribe([this](const SharedText& text) { published.push_back(text); });
};

TEST_F(CodeEditorCoordinatorTest, ColoursTheTextOnceWhenItIsBuilt) {
    model.text = "<p>x</p>";
    build();
    EXPECT_EQ(view->storage.colourings, 1);
    expectColouredText();
    EXPECT_EQ(model.textView.lock(), view);
    EXPECT_TRUE(model.hasHadTextView);
}

TEST_F(CodeEditorCoordinatorTest, PublishesAndColoursOnceForEachEdit) {
    open("<p></p>");
    view->setSelectedRange({3, 0});
    view->type("x");
    EXPECT_EQ(published, std::vector<std::string>{"<p>x</p>"});
    EXPECT_EQ(view->storage.colourings, 1);
    expectColouredText();
}

TEST_F(CodeEditorCoordinatorTest, ColoursNothingInAnUpdateThatChangesNothing) {
    open("<p></p>");
    view->type("x");
    coordinator->update("klassisch", 13);
    EXPECT_EQ(view->storage.colourings, 1);
}

TEST_F(CodeEditorCoordinatorTest, ColoursAnewInAnotherThemeAndSizeWithoutTouchingTheText) {
    open("<p>x</p>");
    coordinator->update("kontrast", 13);
    EXPECT_EQ(view->storage.colourings, 1);
    EXPECT_EQ(view->storage.lastColor, EditorTheme::kontrast().color(SyntaxToken::tag));
    coordinator->update("kontrast", 18);
    EXPECT_EQ(view->storage.colourings, 2);
    EXPECT_EQ(view->storage.font, EditorFont{18});
    EXPECT_FALSE(model.undoHistory.canUndo());
    EXPECT_TRUE(published.empty());
    expectColouredText();
}

TEST_F(CodeEditorCoordinatorTest, TypesOnInTheThemeThatWasSetLast) {
    open("x");
    coordinator->update("kontrast", 18);
    view->type("<b>");
    EXPECT_EQ(view->storage.lastColor, EditorTheme::kontrast().color(SyntaxToken::tag));
    EXPECT_EQ(view->storage.font, EditorFont{18});
}

TEST_F(CodeEditorCoordinatorTest, ShowsATextFromOutsideWithoutPublishingItAgain) {
    open("eins zwei");
    model.text = "<b>neu</b>";
    EXPECT_EQ(view->text(), "<b>neu</b>");
    EXPECT_EQ(published.size(), 1U);
    EXPECT_EQ(view->storage.colourings, 1);
    expectColouredText();
}

TEST_F(CodeEditorCoordinatorTest, DoesNothingWhenTheSameTextComesFromOutside) {
    open("<p>x</p>");
    model.text = "<p>x</p>";
    EXPECT_EQ(view->storage.colourings, 0);
    EXPECT_FALSE(model.undoHistory.canUndo());
}

TEST_F(CodeEditorCoordinatorTest, ClampsTheSelectionToAShorterText) {
    open("eins zwei drei");
    view->setSelectedRange({5, 9});
    model.text = "eins z";
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 1}));
    view->setSelectedRange({6, 0});
    model.text = "e";
    EXPECT_EQ(view->selectedRange(), (TextRange{1, 0}));
}

TEST_F(CodeEditorCoordinatorTest, KeepsScrollPositionAndFocusWhenTheTextIsReplaced) {
    open("eins");
    view->origin = ScrollOrigin{0, 40};
    view->isFocused = true;
    model.text = "zwei";
    EXPECT_EQ(view->origin, (ScrollOrigin{0, 40}));
    EXPECT_TRUE(view->isFocused);
}

TEST_F(CodeEditorCoordinatorTest, TakesBackATextFromOutsideInOneStep) {
    open("eins zwei");
    view->setSelectedRange({5, 4});
    model.text = "eins drei vier";
    published.clear();
    view->undo();
    EXPECT_EQ(published, std::vector<std::string>{"eins zwei"});
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 4}));
    view->redo();
    EXPECT_EQ(*model.text, "eins drei vier");
}

TEST_F(CodeEditorCoordinatorTest, LeavesAViewAloneThatAllowsNoChange) {
    open("<p>x</p>");
    view->allowsChanges = false;
    model.text = "<b>neu</b>";
    coordinator->update("kontrast", 18);
    EXPECT_EQ(view->text(), "<p>x</p>");
    EXPECT_EQ(view->storage.colourings, 0);
    view->allowsChanges = true;
    coordinator->update("kontrast", 18);
    EXPECT_EQ(view->text(), "<b>neu</b>");
    EXPECT_EQ(view->storage.font, EditorFont{18});
}

TEST_F(CodeEditorCoordinatorTest, ShowsWhatAnObserverMakesOfATypedText) {
    open("a");
    const Subscription correcting = model.text.subscribe([this](const SharedText& text) {
        if (text == "xa")
            model.text = "ya";
    });
    view->type("x");
    EXPECT_EQ(view->text(), "ya");
    EXPECT_EQ(*model.text, "ya");
    expectColouredText();
}

TEST_F(CodeEditorCoordinatorTest, RemembersTheViewAfterEveryChangeOfTextAndSelection) {
    open("eins");
    view->isFocused = true;
    view->origin = ScrollOrigin{0, 12};
    view->setSelectedRange({1, 2});
    EXPECT_EQ(model.persistedSelection, (TextRange{1, 2}));
    EXPECT_EQ(model.persistedScrollOrigin, (ScrollOrigin{0, 12}));
    EXPECT_TRUE(model.hadFocus);
    view->isFocused = false;
    view->origin.reset();
    view->type("x");
    EXPECT_EQ(model.persistedSelection, (TextRange{2, 0}));
    EXPECT_FALSE(model.persistedScrollOrigin);
    EXPECT_FALSE(model.hadFocus);
}

TEST_F(CodeEditorCoordinatorTest, RestoresTheSelectionAtOnceAndTheRestAfterTheLayout) {
    open("eins zwei");
    view->isFocused = true;
    view->origin = ScrollOrigin{0, 77};
    view->setSelectedRange({5, 4});
    build();
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 4}));
    EXPECT_EQ(view->origin, ScrollOrigin{});
    EXPECT_FALSE(view->isFocused);
    queue.runPending();
    EXPECT_EQ(view->origin, (ScrollOrigin{0, 77}));
    EXPECT_TRUE(view->isFocused);
}

TEST_F(CodeEditorCoordinatorTest, TakesTheFocusOnlyInTheWindowTheUserWorksIn) {
    open("eins");
    view->isFocused = true;
    view->setSelectedRange({1, 0});
    build();
    view->isWindowKey = false;
    queue.runPending();
    EXPECT_FALSE(view->isFocused);
}

TEST_F(CodeEditorCoordinatorTest, TakesNoFocusThatTheLastViewDidNotHave) {
    open("eins");
    view->setSelectedRange({1, 0});
    build();
    queue.runPending();
    EXPECT_FALSE(view->isFocused);
}

TEST_F(CodeEditorCoordinatorTest, RestoresNothingForTheFirstView) {
    model.persistedSelection = TextRange{1, 1};
    open("eins");
    EXPECT_EQ(view->selectedRange(), TextRange{});
    EXPECT_EQ(queue.pendingCount(), 0U);
}

TEST_F(CodeEditorCoordinatorTest, ClampsARestoredSelection) {
    open("eins zwei");
    view->setSelectedRange({5, 4});
    coordinator.reset();
    view.reset();
    model.text = "eins z";
    build();
    EXPECT_EQ(view->selectedRange(), (TextRange{5, 1}));
}

TEST_F(CodeEditorCoordinatorTest, RestoresNothingInAViewThatIsGoneAgain) {
    open("eins");
    view->setSelectedRange({1, 0});
    build();
    coordinator.reset();
    view.reset();
    queue.runPending();
    EXPECT_TRUE(model.textView.expired());
}

TEST_F(CodeEditorCoordinatorTest, UndoesInANewViewWhatWasDoneInTheOldOne) {
    open("eins");
    view->type("x");
    build();
    view->undo();
    EXPECT_EQ(*model.text, "eins");
}

} // namespace
} // namespace corvanta
