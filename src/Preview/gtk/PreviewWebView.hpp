#pragma once

#include "Preview/BridgeMessage.hpp"
#include "Preview/WebView.hpp"

#include <gtkmm/box.h>

#include <functional>
#include <string>

using WebKitWebView = struct _WebKitWebView;

namespace corvanta {

/// The web view of one window. A page shown in it gets at nothing but its site: it keeps no data, opens no
/// window and no dialog, downloads and prints nothing, is granted no permission and cannot lead the view to
/// another page.
class PreviewWebView : public Gtk::Box, public WebView {
public:
    struct Events {
        std::function<void(const BridgeMessage&)> didReceive;
        /// The page of the last load has replaced the one before.
        std::function<void()> didCommit;
        /// The page is laid out and at its place, and its picture is about to be on the screen.
        std::function<void()> didLayOut;
        std::function<void()> didFinish;
        /// The page led the view to another page all the same.
        std::function<void()> didLeave;
        /// The page's process ended by itself.
        std::function<void()> processDidTerminate;
        /// The user clicked a link to the web or to a mail address.
        std::function<void(const std::string& url)> openLink;
    };

    /// What the edit menus can do in a page.
    enum class Command { cut, copy, paste, remove, selectAll };

    /// Does in the page what a menu command says. Of a paste the page takes the text only, and `remove` takes
    /// away only what is marked.
    virtual void performMenuCommand(Command command) = 0;

    /// Whether something in the page is marked that can be copied.
    virtual bool hasSelection() const = 0;

    /// The engine's own view in this one, which has the keyboard.
    virtual WebKitWebView* webView() const = 0;
};

} // namespace corvanta
