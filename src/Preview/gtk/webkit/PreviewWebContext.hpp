#pragma once

#include "Platform/gtk/GObjectReference.hpp"
#include "Preview/PreviewSchemeHandler.hpp"

#include <webkit/webkit.h>

namespace corvanta {

/// What all web views of the program share: the engine's context with the preview's scheme. The scheme is
/// secure, may be fetched by scripts of its own pages, and is closed to every page that does not come from
/// it.
class PreviewWebContext {
public:
    PreviewWebContext();

    WebKitWebContext* context() const { return context_.get(); }

    /// Lets `handler` answer the requests of `view`; nothing answers them when it is null.
    static void setSchemeHandler(WebKitWebView* view, PreviewSchemeHandler* handler);

private:
    GObjectReference<WebKitWebContext> context_;
};

} // namespace corvanta
