#include "EditorCore/CodeEditorCoordinator.hpp"

#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

/// What of `range` lies within a text of `length`.
TextRange clamped(TextRange range, std::int64_t length) {
    const std::int64_t location = std::min(length, range.location);
    return {location, std::min(length - location, range.length)};
}

} // namespace

CodeEditorCoordinator::CodeEditorCoordinator(Parts parts, std::string themeID, double fontSize)
    : viewModel_(parts.viewModel),
      textView_(std::move(parts.textView)),
      highlighter_(parts.textStorage),
      mainQueue_(parts.mainQueue),
      themeID_(std::move(themeID)),
      fontSize_(fontSize),
      lastThemeID_(themeID_),
      lastFontSize_(fontSize_) {
    viewModel_.textView = textView_;
    highlight(true);
    if (std::exchange(viewModel_.hasHadTextView, true))
        restoreState(viewModel_.hadFocus);

    textChanged_ = Subscription(textView_->signalTextDidChange().connect([this] { textDidChange(); }));
    selectionChanged_ = Subscription(textView_->signalSelectionDidChange().connect([this] { stashState(); }));
    modelChanged_ = viewModel_.text.subscribe([this](const SharedText&) { modelDidChange(); });
}

void CodeEditorCoordinator::textDidChange() {
    if (isApplyingProgrammaticChange_)
        return;
    isPublishing_ = true;
    viewModel_.text = textView_->text();
    isPublishing_ = false;
    stashState();
    highlight(false);
    // Whoever was told of the text may have changed it in turn.
    modelDidChange();
}

void CodeEditorCoordinator::modelDidChange() {
    if (!isPublishing_)
        update(themeID_, fontSize_);
}

void CodeEditorCoordinator::update(const std::string& themeID, double fontSize) {
    themeID_ = themeID;
    fontSize_ = fontSize;
    viewModel_.textView = textView_;
    const bool settingsChanged = lastThemeID_ != themeID || lastFontSize_ != fontSize;
    if (!showModelText())
        return;
    if (settingsChanged || lastHighlightedText_ != textView_->text())
        highlight(settingsChanged);
}

/// False when the view refuses the text.
bool CodeEditorCoordinator::showModelText() {
    if (textView_->text() == *viewModel_.text)
        return true;
    const TextRange selection = textView_->selectedRange();
    const std::optional<ScrollOrigin> origin = textView_->scrollOrigin();
    const bool hadFocus = textView_->isFirstResponder();

    isApplyingProgrammaticChange_ = true;
    const bool wasAllowed = textView_->replaceWholeText(*viewModel_.text);
    isApplyingProgrammaticChange_ = false;
    if (!wasAllowed)
        return false;

    textView_->setSelectedRange(clamped(selection, textView_->text().end().codeUnit));
    if (origin)
        textView_->scroll(*origin);
    if (hadFocus)
        textView_->makeFirstResponder();
    return true;
}

void CodeEditorCoordinator::highlight(bool settingsChanged) {
    const TextChange change = settingsChanged ? TextChange{} : textView_->takeChange();
    if (settingsChanged)
        textView_->takeChange();
    highlighter_.highlightChange(change, EditorTheme::theme(themeID_), EditorFont{fontSize_},
                                 standardTextColor);
    lastThemeID_ = themeID_;
    lastFontSize_ = fontSize_;
    lastHighlightedText_ = textView_->text();
}

void CodeEditorCoordinator::stashState() {
    viewModel_.persistedSelection = textView_->selectedRange();
    viewModel_.persistedScrollOrigin = textView_->scrollOrigin();
    viewModel_.hadFocus = textView_->isFirstResponder();
}

void CodeEditorCoordinator::restoreState(bool restoreFocus) {
    if (viewModel_.persistedSelection) {
        textView_->setSelectedRange(
            clamped(*viewModel_.persistedSelection, textView_->text().end().codeUnit));
    }
    // The view has no size to scroll in before it was laid out.
    mainQueue_.async(
        [view = std::weak_ptr(textView_), origin = viewModel_.persistedScrollOrigin, restoreFocus] {
            const std::shared_ptr<TextView> textView = view.lock();
            if (!textView)
                return;
            if (origin)
                textView->scroll(*origin);
            if (restoreFocus && textView->isInKeyWindow())
                textView->makeFirstResponder();
        });
}

} // namespace corvanta
