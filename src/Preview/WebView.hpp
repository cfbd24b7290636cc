#pragma once

#include "Preview/ScrollOffset.hpp"

#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// What the preview asks of the web view that shows the page. While a page loads, the picture of the last one
/// stays until `reveal`.
class WebView {
public:
    WebView() = default;
    WebView(const WebView&) = delete;
    WebView& operator=(const WebView&) = delete;
    virtual ~WebView() = default;

    /// Loads the page at `url`, past every cache, and scrolls it to `scroll` as soon as it has been read. A
    /// load that is still running is given up.
    virtual void load(const std::string& url, const std::optional<ScrollOffset>& scroll) = 0;

    /// Shows `html` (UTF-8) as a page without an address; relative links in it lead nowhere.
    virtual void loadHTML(const std::string& html, const std::optional<ScrollOffset>& scroll) = 0;

    /// Shows the page that was loaded last.
    virtual void reveal() = 0;

    /// Runs `script` on the page that is shown, beside the page's own scripts, which cannot notice it.
    virtual void evaluate(const std::string& script) = 0;

    /// Calls `answered` once the page's process has time to answer; never when it hangs or ends before.
    virtual void ask(std::function<void()> answered) = 0;

    /// Ends the page's process, whatever it does. The next load starts another.
    virtual void endProcess() = 0;
};

} // namespace corvanta
