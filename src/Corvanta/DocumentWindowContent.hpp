#pragma once

#include "Corvanta/HTMLDocument.hpp"
#include "EditorCore/EditorViewModel.hpp"
#include "EditorCore/SharedText.hpp"
#include "Platform/Log.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Published.hpp"

#include <memory>
#include <string>

namespace corvanta {

/// What a document window shows, without the window: carries the editor's text to the document at once and to
/// the preview after a pause in the typing.
class DocumentWindowContent {
public:
    /// How long the typing must rest before the preview follows.
    static constexpr MainQueue::Duration previewPause{350};

    /// All of them outlive the content.
    DocumentWindowContent(HTMLDocument& document, MainQueue& mainQueue, Log& log);

    /// To be called with the whole new text, UTF-8, after an edit in the preview.
    void previewDidEdit(const std::string& html);

    EditorViewModel editorViewModel;

    /// The text that the preview renders, UTF-8.
    Published<std::string> previewHTML;

    Published<bool> isPreviewVisible{true};
    Published<bool> isAssistantVisible{false};

private:
    void editorTextDidChange(const SharedText& text);

    HTMLDocument& document_;
    MainQueue& mainQueue_;
    Log& log_;
    std::unique_ptr<MainQueue::Handle> previewDebounce_;
    Subscription textChanged_;
};

} // namespace corvanta
