#pragma once

#include "EditorCore/FindPanelAction.hpp"
#include "EditorCore/ScrollOrigin.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextChange.hpp"
#include "EditorCore/TextRange.hpp"

#include <sigc++/signal.h>

#include <optional>
#include <string_view>

namespace corvanta {

/// The live text view of a code pane, as the editor's state and its coordinator see it. Ranges count UTF-16
/// code units; one that cuts a character in two is moved to the character's start.
class TextView {
public:
    TextView() = default;
    TextView(const TextView&) = delete;
    TextView& operator=(const TextView&) = delete;
    virtual ~TextView() = default;

    virtual const SharedText& text() const = 0;

    /// What happened to the text since the last call.
    virtual TextChange takeChange() = 0;

    virtual TextRange selectedRange() const = 0;

    /// Selects what of `range` lies within the text.
    virtual void setSelectedRange(TextRange range) = 0;

    /// Scrolls as little as possible for the selection to be seen.
    virtual void revealSelection() = 0;

    /// Replaces the text in `replacementRange` as if the user had typed, in one step that can be undone. The
    /// caret then stands behind `text` (UTF-8).
    virtual void insertText(std::string_view text, TextRange replacementRange) = 0;

    /// Makes `text` the whole text, in one step that can be undone. False when the view allows no change.
    virtual bool replaceWholeText(const SharedText& text) = 0;

    virtual void performFindPanelAction(FindPanelAction action) = 0;

    /// Whether what is typed into its window goes to this view.
    virtual bool isFirstResponder() const = 0;

    /// Does nothing while the view is in no window.
    virtual void makeFirstResponder() = 0;

    /// Whether the view is in the window that the user works in.
    virtual bool isInKeyWindow() const = 0;

    /// Absent while the view is not in a scrolled view.
    virtual std::optional<ScrollOrigin> scrollOrigin() const = 0;
    virtual void scroll(ScrollOrigin origin) = 0;

    /// Emitted once after every step, however many places it changed.
    sigc::signal<void()>& signalTextDidChange() { return textDidChange_; }
    sigc::signal<void()>& signalSelectionDidChange() { return selectionDidChange_; }

protected:
    sigc::signal<void()> textDidChange_;
    sigc::signal<void()> selectionDidChange_;
};

} // namespace corvanta
