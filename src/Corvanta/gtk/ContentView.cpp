#include "Corvanta/gtk/ContentView.hpp"

namespace corvanta {

namespace {

/// The least width of a pane, in points.
constexpr int leastWidth = 320;

} // namespace

ContentView::ContentView(DocumentWindowContent& content, std::optional<std::filesystem::path> documentURL,
                         const WindowServices& services)
    : Gtk::Paned(Gtk::Orientation::HORIZONTAL),
      content_(content),
      assistant_(services.assistant),
      documentURL_(std::move(documentURL)),
      codeAndPreview_(Gtk::Orientation::HORIZONTAL),
      preview_(services.preview, [&content](const std::string& html) { content.previewDidEdit(html); }) {
    updatePreview();
    codeEditor_ = std::make_unique<CodeEditorView>(
        content.editorViewModel, CodeEditorView::Services{services.preview.mainQueue, services.findRequest},
        *services.settings.editorThemeID, *services.settings.editorFontSize);
    arrange();
    followSettings(services.settings);
    previewChanged_ = content_.previewHTML.subscribe([this](const std::string&) { updatePreview(); });
    previewVisibilityChanged_ =
        content_.isPreviewVisible.subscribe([this](bool isVisible) { preview_.set_visible(isVisible); });
    assistantVisibilityChanged_ =
        content_.isAssistantVisible.subscribe([this](bool isVisible) { showAssistant(isVisible); });
    preview_.set_visible(*content_.isPreviewVisible);
    showAssistant(*content_.isAssistantVisible);
}

void ContentView::arrange() {
    for (Gtk::Paned* panes : {static_cast<Gtk::Paned*>(this), &codeAndPreview_})
        g_object_set(panes->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_GROUP, nullptr);
    codeEditor_->set_size_request(leastWidth, -1);
    preview_.set_size_request(leastWidth, -1);
    codeAndPreview_.set_start_child(*codeEditor_);
    codeAndPreview_.set_end_child(preview_);
    codeAndPreview_.set_shrink_start_child(false);
    codeAndPreview_.set_shrink_end_child(false);

    set_start_child(codeAndPreview_);
    set_shrink_start_child(false);
    set_shrink_end_child(false);
    set_resize_end_child(false);
    property_position().signal_changed().connect([this] { keepAssistantNarrow(); });
    property_max_position().signal_changed().connect([this] { keepAssistantNarrow(); });
}

void ContentView::followSettings(AppSettings& settings) {
    themeChanged_ = settings.editorThemeID.subscribe(
        [this](const std::string& themeID) { codeEditor_->setThemeID(themeID); });
    fontSizeChanged_ =
        settings.editorFontSize.subscribe([this](double fontSize) { codeEditor_->setFontSize(fontSize); });
    codeEditor_->signalFontSizeRequested().connect(
        [&settings](double fontSize) { settings.editorFontSize = fontSize; });
}

void ContentView::showAssistant(bool isVisible) {
    if (isVisible && !assistantView_) {
        assistantView_ = std::make_unique<ClaudeAssistantView>(assistant_);
        assistantView_->set_size_request(ClaudeAssistantView::minimumWidth, -1);
        set_end_child(*assistantView_);
    }
    if (assistantView_)
        assistantView_->set_visible(isVisible);
}

void ContentView::keepAssistantNarrow() {
    if (!assistantView_ || !assistantView_->get_visible())
        return;
    // The furthest the divider can go leaves the panel its least width.
    const int widest = ClaudeAssistantView::maximumWidth - ClaudeAssistantView::minimumWidth;
    const int leastPosition = property_max_position().get_value() - widest;
    if (get_position() < leastPosition)
        set_position(leastPosition);
}

void ContentView::setDocumentURL(const std::optional<std::filesystem::path>& documentURL) {
    documentURL_ = documentURL;
    updatePreview();
}

void ContentView::updateLanguage() {
    codeEditor_->updateLanguage();
    preview_.updateLanguage();
    if (assistantView_) {
        gtk_paned_set_end_child(Gtk::Paned::gobj(), nullptr);
        assistantView_.reset();
    }
    showAssistant(*content_.isAssistantVisible);
}

void ContentView::updatePreview() {
    preview_.update(*content_.previewHTML, documentURL_);
}

} // namespace corvanta
