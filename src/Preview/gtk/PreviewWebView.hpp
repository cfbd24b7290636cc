#pragma once

#include "Platform/gtk/GObjectReference.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/BridgeMessage.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/WebView.hpp"
#include "Preview/gtk/HeldPicture.hpp"
#include "Preview/gtk/PageMenu.hpp"
#include "Preview/gtk/PreviewWebContext.hpp"
#include "Preview/gtk/RenderNode.hpp"

#include <gtkmm/box.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>
#include <webkit/webkit.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// The web view of one window. A page shown in it gets at nothing but its site: it keeps no data, opens no
/// window and no dialog, downloads and prints nothing, is granted no permission and cannot lead the view to
/// another page.
class PreviewWebView final : public Gtk::Box, public WebView {
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

    /// `context` and `schemeHandler` outlive the view.
    PreviewWebView(const PreviewWebContext& context, PreviewSchemeHandler& schemeHandler, Events events);
    ~PreviewWebView() override;

    PreviewWebView(const PreviewWebView&) = delete;
    PreviewWebView& operator=(const PreviewWebView&) = delete;

    void load(const std::string& url, const std::optional<ScrollOffset>& scroll) override;
    void loadHTML(const std::string& html, const std::optional<ScrollOffset>& scroll) override;
    void reveal() override;
    void evaluate(const std::string& script) override;
    void ask(std::function<void()> answered) override;
    void endProcess() override;

    /// The command that deletes, by the engine's name. What the engine calls "Delete" it does not announce to
    /// the page as a deletion.
    static constexpr const char* deletion = "DeleteBackward";

    /// Does in the page what a menu command says, by the engine's name for it. `deletion` takes away only
    /// what is marked.
    void performMenuCommand(const std::string& command);

    WebKitWebView* webView() { return WEBKIT_WEB_VIEW(page_.gobj()); }

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    /// The engine's widget as one of gtkmm's.
    class Page : public Gtk::Widget {
    public:
        explicit Page(GtkWidget* widget) : Gtk::Widget(widget) {}
    };

    void hearThePageScript();
    void hear(const char* signal, void (*handler)(WebKitUserContentManager*, JSCValue*, gpointer));
    void installPageScript(const std::optional<ScrollOffset>& scroll);
    void refuseWhatAPageMayNotDo();
    template <typename Handler>
    void refuse(const char* signal, Handler* handler);
    void reportLoading();
    void pasteByKeysAsPlainText();
    void leaveByKeys();
    void loadChanged(WebKitLoadEvent event);
    void laidOut(const BridgeMessage& message);
    void takePicture();
    void pictureCame();
    void linkClicked(const BridgeMessage& message) const;
    bool decide(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) const;
    bool isShownPage(const char* url) const;
    void holdLastPicture();
    void prepareToLoad(const std::string& url, const std::optional<ScrollOffset>& scroll);

    Page page_;
    PageMenu menu_{webView(), [this](const std::string& command) { performMenuCommand(command); }};
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
