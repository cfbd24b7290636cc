#pragma once

#include "Platform/gtk/GObjectReference.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/gtk/PreviewWebView.hpp"
#include "Preview/gtk/webkit/HeldPicture.hpp"
#include "Preview/gtk/webkit/PageMenu.hpp"
#include "Preview/gtk/webkit/PreviewWebContext.hpp"
#include "Preview/gtk/webkit/RenderNode.hpp"
#include "Preview/gtk/webkit/UnfinishedDrops.hpp"

#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>
#include <webkit/webkit.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The web view of one window, made by the engine of this library.
class WebKitPreviewView final : public PreviewWebView {
public:
    /// `context` and `schemeHandler` outlive the view.
    WebKitPreviewView(const PreviewWebContext& context, PreviewSchemeHandler& schemeHandler, Events events);
    ~WebKitPreviewView() override;

    WebKitPreviewView(const WebKitPreviewView&) = delete;
    WebKitPreviewView& operator=(const WebKitPreviewView&) = delete;

    void load(const std::string& url, const std::optional<ScrollOffset>& scroll) override;
    void loadHTML(const std::string& html, const std::optional<ScrollOffset>& scroll) override;
    void reveal() override;
    void evaluate(const std::string& script) override;
    void ask(std::function<void()> answered) override;
    void endProcess() override;

    void performMenuCommand(Command command) override;
    bool hasSelection() const override;
    WebKitWebView* webView() const override { return page_.webView(); }

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    /// The engine's widget as one of gtkmm's.
    class Page : public Gtk::Widget {
    public:
        explicit Page(GtkWidget* widget) : Gtk::Widget(widget) {}

        WebKitWebView* webView() const { return WEBKIT_WEB_VIEW(gobject_); }
    };

    void hearThePageScript();
    void hear(const char* name, void (*handler)(WebKitUserContentManager*, JSCValue*, gpointer));
    void installPageScript(const std::optional<ScrollOffset>& scroll) const;
    void refuseWhatAPageMayNotDo();
    template <typename Handler>
    void refuse(const char* signal, Handler* handler);
    void reportLoading();
    void pasteByKeysAsPlainText();
    void leaveByKeys();
    void loadChanged(WebKitLoadEvent event);
    void laidOut(const BridgeMessage& message);
    void takePicture();
    void pictureCame() const;
    void linkClicked(const BridgeMessage& message) const;
    bool decide(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) const;
    bool isShownPage(const char* url) const;
    void holdLastPicture();
    void prepareToLoad(const std::string& url, const std::optional<ScrollOffset>& scroll);

    Page page_;
    PageMenu menu_{webView(), [this](Command command) { performMenuCommand(command); }};
    UnfinishedDrops drops_{GTK_WIDGET(gobj())};
    HeldPicture lastPicture_;
    Events events_;
    /// The address that was loaded last.
    std::string shownURL_;
    bool hasShownAPage_ = false;
    /// Whether the page of the last load has replaced the one before.
    bool isCommitted_ = false;
    /// Whether the next picture that the engine draws shows the page of the last load as a whole.
    bool isPageNext_ = false;
    /// The engine's picture as it was drawn last.
    RenderNode drawn_;
    /// Whether the process behind the view has begun a page. To draw the view of one that is only starting
    /// holds the program up until it answers, half a second at most.
    bool hasBegunAPage_ = false;
    std::vector<SignalConnection> connections_;
};

} // namespace corvanta
