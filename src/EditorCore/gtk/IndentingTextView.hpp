#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/TextView.hpp"
#include "EditorCore/UndoHistory.hpp"
#include "EditorCore/gtk/DragStep.hpp"
#include "EditorCore/gtk/EditorKeys.hpp"
#include "EditorCore/gtk/GtkTextStorage.hpp"
#include "EditorCore/gtk/LateCompletion.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/gtk/SignalConnection.hpp"

#include <gtkmm/textview.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The text widget of the code pane: plain text in a fixed-width font, with line numbers, wrapped to the
/// pane's width. Its own highlighting and its own history stay off. Return indents the new line to fit what
/// is open before it.
class IndentingTextView : public Gtk::TextView, public corvanta::TextView {
public:
    /// Shows `text`. What the user does is recorded in `history`, which outlives the view.
    IndentingTextView(const SharedText& text, UndoHistory& history);

    GtkTextStorage& textStorage() { return textStorage_; }
    const GtkTextStorage& textStorage() const { return textStorage_; }

    const SharedText& text() const override { return textStorage_.liveText(); }
    TextChange takeChange() override { return textStorage_.takeChange(); }
    TextRange selectedRange() const override;
    void setSelectedRange(TextRange range) override;
    void revealSelection() override;
    void insertText(std::string_view inserted, TextRange replacementRange) override;
    bool replaceWholeText(const SharedText& text) override;
    void performFindPanelAction(FindPanelAction action) override { findPanelAction_.emit(action); }
    bool isFirstResponder() const override;
    void makeFirstResponder() override;
    bool isInKeyWindow() const override;
    std::optional<ScrollOrigin> scrollOrigin() const override;
    void scroll(ScrollOrigin origin) override;

    /// The line at the upper edge of what is seen, counted from 0.
    std::int64_t firstVisibleLine() const;

    /// Brings this line, or the last one, to the upper edge, as soon as the view knows where that is.
    void scrollToLine(std::int64_t line);

    /// Puts the caret at the start of a line, the first being 1, and scrolls to it. Behind the last line it
    /// is the last one.
    void goToLine(int line);

    /// Breaks the line and indents the new one to fit what is open before it, as one step.
    void insertNewline();

    /// Moves the lines that are selected by one tab.
    void shiftLines(bool toTheLeft);

    /// Makes several replacements, in ascending order and not overlapping, one step.
    struct Replacement {
        TextRange range;
        std::string text;
    };
    void replace(const std::vector<Replacement>& replacements);

    void undo();
    void redo();
    bool canUndo() const { return get_editable() && history_.canUndo(); }
    bool canRedo() const { return get_editable() && history_.canRedo(); }

    /// Emitted when the find bar is asked for something.
    sigc::signal<void(FindPanelAction)>& signalFindPanelAction() { return findPanelAction_; }

    /// Chooses the colours of the pane around the text: its paper and its line numbers.
    void setAppearance(Appearance appearance);

    /// Has a screen reader call the pane by its name in the language that is in use now.
    void updateLanguage();

private:
    std::string indentation();

    void followSteps();
    void beginStep();
    void endStep();
    void keepCaretOutOfLineEnds();
    void apply(const UndoHistory::Step& step);
    void scrollAsFarAsPossible();

    GtkTextStorage textStorage_;
    UndoHistory& history_;

    /// How many of the toolkit's user actions are going on, one within the other.
    int userActions_ = 0;
    bool isReplaying_ = false;
    bool hasChangedInStep_ = false;

    /// Where to scroll as soon as the widget knows that it is so long.
    std::optional<ScrollOrigin> wantedOrigin_;

    sigc::signal<void(FindPanelAction)> findPanelAction_;
    SignalConnection userActionBegun_;
    SignalConnection userActionEnded_;
    Subscription willEdit_;
    Subscription changed_;
    Subscription markMoved_;
    Subscription scrollRangeChanged_;
    LateCompletion lateCompletion_;
    EditorKeys keys_;
    DragStep dragStep_;
};

} // namespace corvanta
