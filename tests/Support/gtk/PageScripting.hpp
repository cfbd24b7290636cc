#pragma once

#include <webkit/webkit.h>

#include <string>

namespace corvanta {

/// What `expression` gives in the page that `view` shows, in the page's own script world, as text. "error: …"
/// when it throws or when there is no answer in time.
std::string evaluateInPage(WebKitWebView* view, const std::string& expression);

} // namespace corvanta
