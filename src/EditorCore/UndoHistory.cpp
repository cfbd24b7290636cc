#include "EditorCore/UndoHistory.hpp"

#include "EditorCore/Utf8Character.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvanta {

namespace {

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

/// Whether `text` is one character that belongs to a line.
bool isKey(const std::string& text) {
    return !text.empty() && text != "\n" && Utf8Character::first(text).size == text.size();
}

bool isTyped(const TextEdit& edit) {
    return isKey(edit.inserted) && edit.removed.empty();
}

bool isDeleted(const TextEdit& edit) {
    return isKey(edit.removed) && edit.inserted.empty();
}

TextEdit inverse(const TextEdit& edit) {
    return {edit.byte, edit.inserted, edit.removed};
}

} // namespace

void UndoHistory::beginStep(TextRange selection) {
    if (!current_)
        current_ = Recorded{{}, selection, {}};
}

void UndoHistory::didEdit(TextEdit edit) {
    if (current_)
        current_->edits.push_back(std::move(edit));
}

void UndoHistory::endStep(TextRange selection) {
    std::optional<Recorded> step = std::exchange(current_, std::nullopt);
    if (!step || step->edits.empty())
        return;
    undone_.clear();
    step->selectionAfter = selection;
    if (!done_.empty() && continues(done_.back(), *step)) {
        TextEdit& last = done_.back().edits.back();
        const TextEdit& next = step->edits.front();
        last.inserted += next.inserted;
        if (next.byte < last.byte)
            last.removed.insert(0, next.removed);
        else
            last.removed += next.removed;
        last.byte = std::min(last.byte, next.byte);
        done_.back().selectionAfter = selection;
        return;
    }
    const TextEdit& last = step->edits.back();
    step->isOpen = isTyped(last) || (step->edits.size() == 1 && isDeleted(last));
    done_.push_back(std::move(*step));
}

/// Whether `next` is one more key of the same kind at the place where `last` ended.
bool UndoHistory::continues(const Recorded& last, const Recorded& next) {
    if (!last.isOpen || next.edits.size() != 1 || next.selectionBefore != last.selectionAfter)
        return false;
    const TextEdit& before = last.edits.back();
    const TextEdit& edit = next.edits.front();
    if (!before.inserted.empty()) {
        const bool startsWord = isBlank(before.inserted.back()) && !isBlank(edit.inserted.front());
        return isTyped(edit) && !startsWord &&
               edit.byte == before.byte + static_cast<std::int64_t>(before.inserted.size());
    }
    return isDeleted(edit) && (edit.byte == before.byte ||
                               edit.byte + static_cast<std::int64_t>(edit.removed.size()) == before.byte);
}

std::optional<UndoHistory::Step> UndoHistory::undo() {
    if (done_.empty())
        return std::nullopt;
    done_.back().isOpen = false;
    if (done_.size() > 1)
        done_[done_.size() - 2].isOpen = false;
    const Recorded& recorded = undone_.emplace_back(std::move(done_.back()));
    done_.pop_back();
    Step step{{}, recorded.selectionBefore};
    std::transform(recorded.edits.rbegin(), recorded.edits.rend(), std::back_inserter(step.edits), inverse);
    return step;
}

std::optional<UndoHistory::Step> UndoHistory::redo() {
    if (undone_.empty())
        return std::nullopt;
    const Recorded& recorded = done_.emplace_back(std::move(undone_.back()));
    undone_.pop_back();
    return Step{recorded.edits, recorded.selectionAfter};
}

void UndoHistory::clear() {
    done_.clear();
    undone_.clear();
    current_.reset();
}

} // namespace corvanta
