#pragma once

#include "ClaudeAssistant/gtk/ClaudeAssistantView.hpp"
#include "Corvanta/DocumentWindowContent.hpp"
#include "Corvanta/gtk/WindowServices.hpp"
#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Preview/gtk/PreviewColumn.hpp"

#include <gtkmm/paned.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace corvanta {

/// The panes of a document window: the code on the left, its preview beside it, the assistant on the right.
class ContentView : public Gtk::Paned {
public:
    /// `content` outlives the view. `documentURL` is where the document's file lies; the preview's links lead
    /// from there.
    ContentView(DocumentWindowContent& content, std::optional<std::filesystem::path> documentURL,
                const WindowServices& services);

    CodeEditorView& codeEditor() { return *codeEditor_; }
    const CodeEditorView& codeEditor() const { return *codeEditor_; }
    PreviewColumn& preview() { return preview_; }

    /// The document has another file now.
    void setDocumentURL(const std::optional<std::filesystem::path>& documentURL);

    /// Gives the code pane this width, in points; the preview gets the rest.
    void setCodeWidth(int width) { codeAndPreview_.set_position(width); }
    int codeWidth() const { return codeAndPreview_.get_position(); }

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

private:
    void arrange();
    void followSettings(AppSettings& settings);
    void showAssistant(bool isVisible);
    void keepAssistantNarrow();
    void updatePreview();

    DocumentWindowContent& content_;
    ClaudeAssistantViewModel& assistant_;
    std::optional<std::filesystem::path> documentURL_;
    Gtk::Paned codeAndPreview_;
    PreviewColumn preview_;
    std::unique_ptr<CodeEditorView> codeEditor_;
    std::unique_ptr<ClaudeAssistantView> assistantView_;

    Subscription themeChanged_;
    Subscription fontSizeChanged_;
    Subscription previewChanged_;
    Subscription previewVisibilityChanged_;
    Subscription assistantVisibilityChanged_;
};

} // namespace corvanta
