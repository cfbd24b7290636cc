#include "EditorCore/EditorViewModel.hpp"

#include "EditorCore/CommentToggle.hpp"
#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/TextReplacement.hpp"

#include <utility>

namespace corvanta {

EditorViewModel::EditorViewModel(SharedText initialText) : text(std::move(initialText)) {
    changedUnseen_ = text.subscribe([this](const SharedText&) {
        if (textView.expired())
            undoHistory.clear();
    });
}

void EditorViewModel::showFindBar() const {
    performFindPanelAction(FindPanelAction::showFindPanel, true);
}

void EditorViewModel::showReplaceBar() const {
    performFindPanelAction(FindPanelAction::showReplaceInterface, true);
}

void EditorViewModel::findNext() const {
    performFindPanelAction(FindPanelAction::next, false);
}

void EditorViewModel::findPrevious() const {
    performFindPanelAction(FindPanelAction::previous, false);
}

void EditorViewModel::useSelectionForFind() const {
    performFindPanelAction(FindPanelAction::setFindString, false);
}

void EditorViewModel::performFindPanelAction(FindPanelAction action, bool takesFocus) const {
    const std::shared_ptr<TextView> view = textView.lock();
    if (!view)
        return;
    if (takesFocus)
        view->makeFirstResponder();
    view->performFindPanelAction(action);
}

void EditorViewModel::reformatIndentation() {
    text = SharedText(HTMLFormatter::format(text->string()));
}

void EditorViewModel::insertAtCursor(std::string_view inserted, std::optional<std::int64_t> cursorOffset) {
    const std::shared_ptr<TextView> view = textView.lock();
    if (!view) {
        text.modify(
            [inserted](SharedText& whole) { whole.replace(whole.end().byte, whole.end().byte, inserted); });
        return;
    }
    const TextRange selection = view->selectedRange();
    view->insertText(inserted, selection);
    if (cursorOffset)
        view->setSelectedRange({selection.location + *cursorOffset, 0});
    view->makeFirstResponder();
}

void EditorViewModel::toggleComment() const {
    const std::shared_ptr<TextView> view = textView.lock();
    if (!view)
        return;
    const TextReplacement replacement = CommentToggle::toggled(view->text(), view->selectedRange());
    view->insertText(replacement.text, replacement.range);
    view->setSelectedRange(replacement.selection);
    view->makeFirstResponder();
}

} // namespace corvanta
