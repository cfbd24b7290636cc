#pragma once

#include "EditorCore/EditHighlighter.hpp"
#include "EditorCore/EditorViewModel.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextStorage.hpp"
#include "EditorCore/TextView.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Subscription.hpp"

#include <memory>
#include <optional>
#include <string>

namespace corvanta {

/// Keeps a text view and the editor's state the same, colours the text after every change of text, theme or
/// font size, and remembers what the view was like for the one that may come after it. One for each view.
class CodeEditorCoordinator {
public:
    /// What is coordinated; `viewModel`, `textStorage` (that of `textView`) and `mainQueue` outlive the
    /// coordinator.
    struct Parts {
        EditorViewModel& viewModel;
        std::shared_ptr<TextView> textView;
        TextStorage& textStorage;
        MainQueue& mainQueue;
    };

    /// `textView` shows the model's text already. `themeID` is an editor theme's id, `fontSize` is in points.
    CodeEditorCoordinator(Parts parts, std::string themeID, double fontSize);

    /// Makes the view show the model's text with these settings. Does nothing that is not needed.
    void update(const std::string& themeID, double fontSize);

    const std::string& themeID() const { return themeID_; }
    double fontSize() const { return fontSize_; }

private:
    void textDidChange();
    void modelDidChange();
    bool showModelText();
    void highlight(bool settingsChanged);
    void stashState();
    void restoreState(bool restoreFocus);

    EditorViewModel& viewModel_;
    std::shared_ptr<TextView> textView_;
    EditHighlighter highlighter_;
    MainQueue& mainQueue_;

    /// The settings of the last update.
    std::string themeID_;
    double fontSize_;

    /// The settings and the text of the last colouring.
    std::string lastThemeID_;
    double lastFontSize_;
    std::optional<SharedText> lastHighlightedText_;

    /// True only while the view's text is being replaced by the model's.
    bool isApplyingProgrammaticChange_ = false;

    /// True only while the model is told what the user did.
    bool isPublishing_ = false;

    Subscription textChanged_;
    Subscription selectionChanged_;
    Subscription modelChanged_;
};

} // namespace corvanta
