#pragma once

#include "Platform/Subscription.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/gtk/PreviewWebView.hpp"

#include <giomm/simpleaction.h>
#include <webkit/webkit.h>

#include <functional>
#include <string>
#include <vector>

namespace corvanta {

/// What the second button of the pointer offers in a page. The engine's own menu is a browser's: it would
/// lead away from the page, load it anew or save it, which no page of a document can do.
class PageMenu {
public:
    /// Does in the page what a menu command says.
    using Perform = std::function<void(PreviewWebView::Command command)>;

    PageMenu(WebKitWebView* view, const Perform& perform);

private:
    /// A command of the menu.
    struct Entry {
        /// What the engine calls it in its own menu.
        WebKitContextMenuAction offer;
        /// The key of its text.
        const char* title;
        Glib::RefPtr<Gio::SimpleAction> action;
        Subscription chosen;
    };

    void add(WebKitContextMenuAction offer, const char* title, PreviewWebView::Command command,
             const Perform& perform);
    bool replace(WebKitContextMenu* menu) const;

    std::vector<Entry> entries_;
    SignalConnection menuAsked_;
};

} // namespace corvanta
