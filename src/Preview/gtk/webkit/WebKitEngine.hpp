#pragma once

#include "Preview/gtk/WebEngine.hpp"
#include "Preview/gtk/webkit/PreviewWebContext.hpp"

namespace corvanta {

/// The web engine as this library brings it.
class WebKitEngine final : public WebEngine {
public:
    std::unique_ptr<PreviewWebView> makeView(PreviewSchemeHandler& schemeHandler,
                                             PreviewWebView::Events events) const override;

private:
    PreviewWebContext context_;
};

} // namespace corvanta
