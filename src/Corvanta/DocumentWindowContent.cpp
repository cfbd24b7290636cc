#include "Corvanta/DocumentWindowContent.hpp"

#include "EditorCore/Graphemes.hpp"

namespace corvanta {

namespace {

constexpr std::string_view logCategory = "preview";

} // namespace

DocumentWindowContent::DocumentWindowContent(HTMLDocument& document, MainQueue& mainQueue, Log& log)
    : editorViewModel(document.text),
      previewHTML(document.text.string()),
      document_(document),
      mainQueue_(mainQueue),
      log_(log),
      textChanged_(
          editorViewModel.text.subscribe([this](const SharedText& text) { editorTextDidChange(text); })) {}

void DocumentWindowContent::editorTextDidChange(const SharedText& text) {
    if (document_.text != text)
        document_.text = text;
    previewDebounce_ =
        mainQueue_.after(previewPause, [this] { previewHTML = editorViewModel.text->string(); });
}

void DocumentWindowContent::previewDidEdit(const std::string& html) {
    log_.info(logCategory, "editor receives {} chars from the preview", Graphemes::count(html));
    previewDebounce_.reset();
    editorViewModel.text = html;
    // At once, so that the preview knows that it already shows this text.
    previewHTML = html;
    log_.info(logCategory, "editor text is now {} chars", Graphemes::count(editorViewModel.text->string()));
}

} // namespace corvanta
