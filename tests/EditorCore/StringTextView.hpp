#pragma once

#include "EditedTextStorage.hpp"
#include "EditorCore/TextView.hpp"
#include "EditorCore/UndoHistory.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// A text view that is a string with a selection.
class StringTextView final : public TextView {
public:
    StringTextView(const SharedText& text, UndoHistory& history) : history_(history) {
        edit(0, 0, text.string());
    }

    const SharedText& text() const override { return storage.liveText(); }
    TextChange takeChange() override {
        const std::int64_t size = text().end().byte;
        return std::exchange(change_, std::nullopt).value_or(TextChange{size, size});
    }
    TextRange selectedRange() const override { return selection_; }
    void setSelectedRange(TextRange range) override {
        const std::int64_t location = std::min(range.location, text().end().codeUnit);
        selection_ = {location, std::min(range.end(), text().end().codeUnit) - location};
        selectionDidChange_.emit();
    }
    void revealSelection() override { ++reveals; }
    void insertText(std::string_view inserted, TextRange range) override {
        history_.beginStep(selection_);
        const TextPosition first = text().atCodeUnit(range.location);
        edit(first.byte, text().atCodeUnit(range.end()).byte, inserted);
        setSelectedRange({text().atByte(first.byte + size(inserted)).codeUnit, 0});
        history_.endStep(selection_);
        textDidChange_.emit();
    }
    bool replaceWholeText(const SharedText& text) override {
        if (!allowsChanges)
            return false;
        history_.beginStep(selection_);
        const TextChange change = SharedText::change(this->text(), text);
        edit(change.unchangedBefore, this->text().end().byte - change.unchangedAfter,
             text.substring(change.unchangedBefore, text.end().byte - change.unchangedAfter));
        history_.endStep(selection_);
        textDidChange_.emit();
        return true;
    }
    void performFindPanelAction(FindPanelAction action) override {
        findPanelActions.push_back(static_cast<int>(action));
        focusAtFindPanelAction.push_back(isFocused);
    }
    bool isFirstResponder() const override { return isFocused; }
    void makeFirstResponder() override { isFocused = true; }
    bool isInKeyWindow() const override { return isWindowKey; }
    std::optional<ScrollOrigin> scrollOrigin() const override { return origin; }
    void scroll(ScrollOrigin wanted) override { origin = wanted; }

    /// As the user does it.
    void type(std::string_view typed) { insertText(typed, selection_); }
    void undo() { apply(history_.undo()); }
    void redo() { apply(history_.redo()); }

    EditedTextStorage storage;
    int reveals = 0;
    bool allowsChanges = true;
    bool isFocused = false;
    bool isWindowKey = true;
    std::optional<ScrollOrigin> origin = ScrollOrigin{};
    std::vector<int> findPanelActions;
    std::vector<bool> focusAtFindPanelAction;

private:
    static std::int64_t size(std::string_view bytes) { return static_cast<std::int64_t>(bytes.size()); }

    void edit(std::int64_t first, std::int64_t last, std::string_view inserted) {
        history_.didEdit({first, text().substring(first, last), std::string(inserted)});
        const TextChange change =
            storage.replace(static_cast<std::size_t>(first), static_cast<std::size_t>(last), inserted);
        change_ = change_ ? change_->united(change) : change;
    }

    void apply(const std::optional<UndoHistory::Step>& step) {
        if (!step)
            return;
        for (const TextEdit& each : step->edits)
            edit(each.byte, each.byte + size(each.removed), each.inserted);
        setSelectedRange(step->selection);
        textDidChange_.emit();
    }

    UndoHistory& history_;
    TextRange selection_;
    std::optional<TextChange> change_;
};

} // namespace corvanta
