#include "Preview/gtk/webkit/WebKitEngine.hpp"

#include "Preview/gtk/webkit/WebKitPreviewView.hpp"

namespace corvanta {

std::unique_ptr<PreviewWebView> WebKitEngine::makeView(PreviewSchemeHandler& schemeHandler,
                                                       PreviewWebView::Events events) const {
    return std::make_unique<WebKitPreviewView>(context_, schemeHandler, std::move(events));
}

} // namespace corvanta

/// What the program looks for in this library.
extern "C" corvanta::WebEngine* corvantaMakeWebEngine() {
    return std::make_unique<corvanta::WebKitEngine>().release();
}
