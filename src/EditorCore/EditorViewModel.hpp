#pragma once

#include "EditorCore/FindPanelAction.hpp"
#include "EditorCore/ScrollOrigin.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextRange.hpp"
#include "EditorCore/TextView.hpp"
#include "EditorCore/UndoHistory.hpp"
#include "Platform/Published.hpp"
#include "Platform/Subscription.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace corvanta {

/// The state of one document window's code editor, and what the menus can ask of it. It lives as long as the
/// window's content and outlives the views that show it.
class EditorViewModel {
public:
    explicit EditorViewModel(SharedText text);

    EditorViewModel(const EditorViewModel&) = delete;
    EditorViewModel& operator=(const EditorViewModel&) = delete;

    /// The whole text.
    Published<SharedText> text;

    /// The view that shows this editor at the moment. It is never kept alive from here.
    std::weak_ptr<TextView> textView;

    /// What the last view was like, for the next one. Written and read by the view's coordinator only.
    std::optional<TextRange> persistedSelection;
    std::optional<ScrollOrigin> persistedScrollOrigin;
    bool hadFocus = false;

    /// Whether a view was ever built for this editor, and there is something to restore.
    bool hasHadTextView = false;

    /// What the user did to the text. Empty again after a change that no view has seen.
    UndoHistory undoHistory;

    void showFindBar() const;
    void showReplaceBar() const;
    void findNext() const;
    void findPrevious() const;
    void useSelectionForFind() const;

    /// Reformats the whole text. Publishes it also when nothing changes.
    void reformatIndentation();

    /// Puts `inserted` (UTF-8) in the selection's place. The caret is then `cursorOffset` UTF-16 code units
    /// behind the start of what was replaced, or behind the inserted text. Without a view the text is
    /// appended.
    void insertAtCursor(std::string_view inserted, std::optional<std::int64_t> cursorOffset);

    /// Turns the selection into a comment of HTML, or such a comment back into text.
    void toggleComment() const;

private:
    void performFindPanelAction(FindPanelAction action, bool takesFocus) const;

    Subscription changedUnseen_;
};

} // namespace corvanta
