#pragma once

#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/gtk/PreviewWebView.hpp"

#include <memory>

namespace corvanta {

/// The web engine that all previews share, as far as the program knows it. All of it belongs to the main
/// thread.
class WebEngine {
public:
    WebEngine() = default;
    WebEngine(const WebEngine&) = delete;
    WebEngine& operator=(const WebEngine&) = delete;
    virtual ~WebEngine() = default;

    /// A view whose requests `schemeHandler` answers, which outlives it.
    virtual std::unique_ptr<PreviewWebView> makeView(PreviewSchemeHandler& schemeHandler,
                                                     PreviewWebView::Events events) const = 0;
};

} // namespace corvanta
