#pragma once

#include "Platform/PosixFileManager.hpp"
#include "Platform/gtk/GLibLog.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Preview/gtk/webkit/PreviewWebContext.hpp"

#include <webkit/webkit.h>

#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// A web view in a window of fixed size that shows texts as pages of a site on disk, scripts running, and
/// asks them about themselves. It reaches no network.
class PageRenderer {
public:
    PageRenderer();
    ~PageRenderer();

    PageRenderer(const PageRenderer&) = delete;
    PageRenderer& operator=(const PageRenderer&) = delete;

    /// Loads `text` (UTF-8) in place of the site's document; returns when everything in it is loaded, and
    /// false when that takes longer than a minute or the page's process ends.
    bool load(const PreviewSite& site, const std::string& text);

    /// What `body`, run as an asynchronous function with the string `argument` in a script world of its own,
    /// returns as a string. Nothing when it fails or does not return within a minute; `error` then says why.
    std::optional<std::string> call(const std::string& body, const std::string& argument, std::string& error);

private:
    static bool waitUntil(const std::function<bool()>& condition);

    PosixFileManager fileManager_;
    SharedMimeInfo types_;
    GLibLog log_;
    std::string text_;
    PreviewSchemeHandler handler_;
    PreviewWebContext context_;
    GtkWindow* window_;
    WebKitWebView* view_;
    bool finished_ = false;
    bool crashed_ = false;
    SignalConnection loading_;
    SignalConnection crashing_;
};

} // namespace corvanta
