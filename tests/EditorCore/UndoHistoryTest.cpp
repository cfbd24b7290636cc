#include "EditorCore/UndoHistory.hpp"

#include "EditorCore/SharedText.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

/// A text in ASCII with a caret, edited as a view does it.
class UndoHistoryTest : public testing::Test {
protected:
    void replace(std::int64_t first, std::int64_t last, const std::string& inserted) {
        history.didEdit({first, text.substring(first, last), inserted});
        text.replace(first, last, inserted);
        selection = {first + static_cast<std::int64_t>(inserted.size()), 0};
    }

    void step(std::int64_t first, std::int64_t last, const std::string& inserted) {
        history.beginStep(selection);
        replace(first, last, inserted);
        history.endStep(selection);
    }

    void type(const std::string& letters) {
        for (const char letter : letters)
            step(selection.location, selection.end(), std::string(1, letter));
    }

    void deleteBackward() { step(selection.location - 1, selection.location, ""); }
    void deleteForward() { step(selection.location, selection.location + 1, ""); }

    void apply(const std::optional<UndoHistory::Step>& taken) {
        ASSERT_TRUE(taken);
        for (const TextEdit& edit : taken->edits) {
            const auto end = edit.byte + static_cast<std::int64_t>(edit.removed.size());
            ASSERT_EQ(text.substring(edit.byte, end), edit.removed);
            text.replace(edit.byte, end, edit.inserted);
        }
        selection = taken->selection;
    }

    SharedText text;
    TextRange selection;
    UndoHistory history;
};

TEST_F(UndoHistoryTest, TakesATypedWordBackAtOnce) {
    type("Wort");
    apply(history.undo());
    EXPECT_EQ(text, "");
    EXPECT_FALSE(history.canUndo());
}

TEST_F(UndoHistoryTest, StartsAStepWithEachWord) {
    type("eins zwei");
    apply(history.undo());
    EXPECT_EQ(text, "eins ");
    apply(history.undo());
    EXPECT_EQ(text, "");
}

TEST_F(UndoHistoryTest, StartsAStepWhereTheCaretWasPutElsewhere) {
    type("ab");
    selection = {0, 0};
    type("c");
    apply(history.undo());
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(selection, (TextRange{0, 0}));
}

TEST_F(UndoHistoryTest, MakesEachLineBreakAStep) {
    type("a\n\nb");
    apply(history.undo());
    EXPECT_EQ(text, "a\n\n");
    apply(history.undo());
    EXPECT_EQ(text, "a\n");
}

TEST_F(UndoHistoryTest, TakesCharactersDeletedInARowBackAtOnce) {
    type("abcd");
    deleteBackward();
    deleteBackward();
    apply(history.undo());
    EXPECT_EQ(text, "abcd");
    EXPECT_EQ(selection, (TextRange{4, 0}));
}

TEST_F(UndoHistoryTest, TakesCharactersDeletedForwardBackAtOnce) {
    type("abcd");
    selection = {1, 0};
    deleteForward();
    deleteForward();
    EXPECT_EQ(text, "ad");
    apply(history.undo());
    EXPECT_EQ(text, "abcd");
    EXPECT_EQ(selection, (TextRange{1, 0}));
}

TEST_F(UndoHistoryTest, KeepsAPasteApartFromTheTypingAroundIt) {
    type("a");
    step(1, 1, "eingefügt");
    type("b");
    apply(history.undo());
    EXPECT_EQ(text, "aeingefügt");
    apply(history.undo());
    EXPECT_EQ(text, "a");
}

TEST_F(UndoHistoryTest, GivesASelectionBackThatWasTypedOver) {
    step(0, 0, "eins zwei");
    selection = {5, 4};
    history.beginStep(selection);
    replace(5, 9, "");
    replace(5, 5, "x");
    history.endStep(selection);
    type("y");
    EXPECT_EQ(text, "eins xy");
    apply(history.undo());
    EXPECT_EQ(text, "eins zwei");
    EXPECT_EQ(selection, (TextRange{5, 4}));
    apply(history.redo());
    EXPECT_EQ(text, "eins xy");
    EXPECT_EQ(selection, (TextRange{7, 0}));
}

TEST_F(UndoHistoryTest, DoesNotGoOnWithAStepThatWasTakenBackAndMadeAgain) {
    type("ab");
    apply(history.undo());
    apply(history.redo());
    type("c");
    apply(history.undo());
    EXPECT_EQ(text, "ab");
}

TEST_F(UndoHistoryTest, ForgetsWhatWasTakenBackAtTheNextChange) {
    type("a");
    apply(history.undo());
    type("b");
    EXPECT_FALSE(history.canRedo());
}

TEST_F(UndoHistoryTest, CountsAStepWithoutChangesAsNone) {
    history.beginStep({});
    history.endStep({});
    EXPECT_FALSE(history.canUndo());
}

TEST_F(UndoHistoryTest, RecordsNothingOutsideAStep) {
    history.didEdit({0, "", "x"});
    EXPECT_FALSE(history.canUndo());
}

} // namespace
} // namespace corvanta
