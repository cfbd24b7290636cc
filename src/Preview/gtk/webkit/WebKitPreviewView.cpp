#include "Preview/gtk/webkit/WebKitPreviewView.hpp"

#include "PageScript.hpp"
#include "PageStart.hpp"
#include "Preview/gtk/webkit/EditingCommands.hpp"
#include "Preview/gtk/webkit/WebKitBridgeMessage.hpp"

#include <fmt/format.h>
#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>

#include <memory>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

constexpr std::string_view emptyPage = "about:blank";

/// The script world of the page script; the page's own scripts live in another and see nothing of it.
constexpr const char* bridgeWorld = "corvanta";

GtkWidget* makeWebView(const PreviewWebContext& context) {
    const GObjectReference<WebKitNetworkSession> session(webkit_network_session_new_ephemeral());
    g_signal_connect(session.get(), "download-started",
                     G_CALLBACK(+[](WebKitNetworkSession*, WebKitDownload* download, gpointer) {
                         webkit_download_cancel(download);
                     }),
                     nullptr);
    const GObjectReference<WebKitUserContentManager> content(webkit_user_content_manager_new());
    const GObjectReference<WebKitSettings> settings(webkit_settings_new_with_settings(
        "enable-fullscreen", FALSE, "enable-page-cache", FALSE, "enable-media-stream", FALSE, "enable-webrtc",
        FALSE, "javascript-can-open-windows-automatically", FALSE, nullptr));
    return GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "accessible-role", GTK_ACCESSIBLE_ROLE_DOCUMENT,
                                   "web-context", context.context(), "network-session", session.get(),
                                   "user-content-manager", content.get(), "settings", settings.get(),
                                   nullptr));
}

std::string_view withoutFragment(std::string_view url) {
    return url.substr(0, url.find('#'));
}

void addScript(WebKitUserContentManager* content, WebKitUserScriptInjectionTime time,
               const std::string& text) {
    WebKitUserScript* script = webkit_user_script_new_for_world(
        text.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, time, bridgeWorld, nullptr, nullptr);
    webkit_user_content_manager_add_script(content, script);
    webkit_user_script_unref(script);
}

} // namespace

WebKitPreviewView::WebKitPreviewView(const PreviewWebContext& context, PreviewSchemeHandler& schemeHandler,
                                     Events events)
    : page_(makeWebView(context)), events_(std::move(events)) {
    page_.set_expand(true);
    append(page_);
    PreviewWebContext::setSchemeHandler(webView(), &schemeHandler);
    hearThePageScript();
    refuseWhatAPageMayNotDo();
    reportLoading();
    pasteByKeysAsPlainText();
    leaveByKeys();
}

WebKitPreviewView::~WebKitPreviewView() {
    // The engine keeps its view for as long as a page in it is at work.
    PreviewWebContext::setSchemeHandler(webView(), nullptr);
    webkit_web_view_stop_loading(webView());
    webkit_web_view_terminate_web_process(webView());
}

void WebKitPreviewView::hearThePageScript() {
    hear(
        "htmlChanged", +[](WebKitUserContentManager*, JSCValue* value, gpointer self) {
            static_cast<WebKitPreviewView*>(self)->events_.didReceive(WebKitBridgeMessage(value));
        });
    hear(
        "pageLaidOut", +[](WebKitUserContentManager*, JSCValue* value, gpointer self) {
            static_cast<WebKitPreviewView*>(self)->laidOut(WebKitBridgeMessage(value));
        });
    hear(
        "linkClicked", +[](WebKitUserContentManager*, JSCValue* value, gpointer self) {
            static_cast<WebKitPreviewView*>(self)->linkClicked(WebKitBridgeMessage(value));
        });
}

void WebKitPreviewView::hear(const char* name,
                             void (*handler)(WebKitUserContentManager*, JSCValue*, gpointer)) {
    WebKitUserContentManager* content = webkit_web_view_get_user_content_manager(webView());
    const std::string signal = std::string("script-message-received::") + name;
    connections_.emplace_back(content, signal.c_str(), handler, this);
    webkit_user_content_manager_register_script_message_handler(content, name, bridgeWorld);
}

void WebKitPreviewView::installPageScript(const std::optional<ScrollOffset>& scroll) const {
    WebKitUserContentManager* content = webkit_web_view_get_user_content_manager(webView());
    webkit_user_content_manager_remove_all_scripts(content);
    addScript(content, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, pageStart);
    addScript(content, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END,
              scroll ? fmt::format("var scrollToRestore = {{ x: {}, y: {} }};", scroll->x, scroll->y)
                     : std::string("var scrollToRestore = null;"));
    addScript(content, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END, pageScript);
}

void WebKitPreviewView::linkClicked(const BridgeMessage& message) const {
    const std::string url = message.string("url").value_or(std::string());
    for (const std::string_view scheme : {"http:", "https:", "mailto:"}) {
        if (url.starts_with(scheme)) {
            events_.openLink(url);
            return;
        }
    }
}

// The engine may keep its view longer than this object lives, with a page at work in it: refusals last as
// long as the view.
template <typename Handler>
void WebKitPreviewView::refuse(const char* signal, Handler* handler) {
    g_signal_connect(webView(), signal, G_CALLBACK(handler), nullptr);
}

void WebKitPreviewView::refuseWhatAPageMayNotDo() {
    connections_.emplace_back(
        webView(), "decide-policy",
        +[](WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
            gpointer self) -> gboolean {
            return static_cast<WebKitPreviewView*>(self)->decide(decision, type) ? TRUE : FALSE;
        },
        this);
    refuse(
        "permission-request", +[](WebKitWebView*, WebKitPermissionRequest* request, gpointer) -> gboolean {
            webkit_permission_request_deny(request);
            return TRUE;
        });
    refuse(
        "run-file-chooser", +[](WebKitWebView*, WebKitFileChooserRequest* request, gpointer) -> gboolean {
            webkit_file_chooser_request_cancel(request);
            return TRUE;
        });
    refuse(
        "run-color-chooser", +[](WebKitWebView*, WebKitColorChooserRequest* request, gpointer) -> gboolean {
            webkit_color_chooser_request_cancel(request);
            return TRUE;
        });
    refuse(
        "authenticate", +[](WebKitWebView*, WebKitAuthenticationRequest* request, gpointer) -> gboolean {
            webkit_authentication_request_cancel(request);
            return TRUE;
        });

    // Alert, confirm and prompt return at once, as if cancelled; a page may always be left.
    refuse(
        "script-dialog", +[](WebKitWebView*, WebKitScriptDialog* dialog, gpointer) -> gboolean {
            if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
                webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
            return TRUE;
        });

    const auto answered = +[](WebKitWebView*, gpointer, gpointer) -> gboolean { return TRUE; };
    for (const char* signal : {"print", "show-notification"})
        refuse(signal, answered);
    refuse(
        "enter-fullscreen", +[](WebKitWebView*, gpointer) -> gboolean { return TRUE; });
}

void WebKitPreviewView::reportLoading() {
    connections_.emplace_back(
        webView(), "load-changed",
        +[](WebKitWebView*, WebKitLoadEvent event, gpointer self) {
            static_cast<WebKitPreviewView*>(self)->loadChanged(event);
        },
        this);
    // The last page stays; the engine's own error page says nothing about the document.
    connections_.emplace_back(
        webView(), "load-failed",
        +[](WebKitWebView*, WebKitLoadEvent, const char*, GError*, gpointer) -> gboolean { return TRUE; },
        nullptr);
    connections_.emplace_back(
        webView(), "web-process-terminated",
        +[](WebKitWebView*, WebKitWebProcessTerminationReason reason, gpointer self) {
            auto* view = static_cast<WebKitPreviewView*>(self);
            view->hasBegunAPage_ = false;
            if (reason != WEBKIT_WEB_PROCESS_TERMINATED_BY_API)
                view->events_.processDidTerminate();
        },
        this);
}

void WebKitPreviewView::laidOut(const BridgeMessage& message) {
    if (message.number("isNext") != 1)
        events_.didLayOut();
    else if (isCommitted_)
        isPageNext_ = true;
}

void WebKitPreviewView::loadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_COMMITTED) {
        isCommitted_ = true;
        if (!std::exchange(hasBegunAPage_, true))
            queue_draw();
        if (isShownPage(webkit_web_view_get_uri(webView())))
            events_.didCommit();
        else
            events_.didLeave();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        events_.didFinish();
    }
}

bool WebKitPreviewView::isShownPage(const char* url) const {
    return url != nullptr && withoutFragment(url) == withoutFragment(shownURL_);
}

bool WebKitPreviewView::decide(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) const {
    bool refused = false;
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) {
        refused = true;
    } else if (type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) {
        WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
            WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        const WebKitNavigationType navigation = webkit_navigation_action_get_navigation_type(action);
        const char* url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
        const bool staysOnThePage = isShownPage(url) && std::string_view(url).find('#') != std::string::npos;
        // The empty page has no answer that could be refused later; a frame has it without going there.
        const bool goesToTheEmptyPage = withoutFragment(url) == emptyPage && shownURL_ != emptyPage;
        refused = (navigation != WEBKIT_NAVIGATION_TYPE_OTHER && !staysOnThePage) || goesToTheEmptyPage;
    } else {
        // Which frame asks is known only once the answer has arrived.
        auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
        const char* url = webkit_uri_response_get_uri(webkit_response_policy_decision_get_response(response));
        refused = webkit_response_policy_decision_is_main_frame_main_resource(response) != FALSE &&
                  !isShownPage(url);
    }
    if (refused)
        webkit_policy_decision_ignore(decision);
    return refused;
}

void WebKitPreviewView::prepareToLoad(const std::string& url, const std::optional<ScrollOffset>& scroll) {
    shownURL_ = url;
    isCommitted_ = false;
    isPageNext_ = false;
    installPageScript(scroll);
}

// The load has been asked for, but nothing of it is seen before the main loop runs on: the picture is taken
// while the page's process is at work already.
void WebKitPreviewView::holdLastPicture() {
    if (hasShownAPage_ && !lastPicture_.isHeld())
        lastPicture_.hold(page_, drawn_.get());
}

void WebKitPreviewView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    if (hasBegunAPage_)
        takePicture();
    if (lastPicture_.isHeld())
        lastPicture_.draw(*snapshot, get_width(), get_height());
    else if (hasBegunAPage_ && drawn_)
        gtk_snapshot_append_node(snapshot->gobj(), drawn_.get());
}

// The engine draws no further picture before this one is taken, whether somebody sees it or not.
void WebKitPreviewView::takePicture() {
    GtkSnapshot* snapshot = gtk_snapshot_new();
    gtk_widget_snapshot_child(GTK_WIDGET(gobj()), page_.gobj(), snapshot);
    RenderNode picture(gtk_snapshot_free_to_node(snapshot));
    // The toolkit keeps what a widget has drawn until the widget has something new to draw.
    const bool isNew = picture != drawn_;
    drawn_ = std::move(picture);
    if (isNew && std::exchange(isPageNext_, false)) {
        lastPicture_.release();
        // Not from here: nothing may be changed while the window is being drawn.
        Glib::signal_idle().connect_once(sigc::mem_fun(*this, &WebKitPreviewView::pictureCame),
                                         Glib::PRIORITY_HIGH);
    }
}

void WebKitPreviewView::pictureCame() const {
    if (isCommitted_)
        events_.didLayOut();
}

void WebKitPreviewView::load(const std::string& url, const std::optional<ScrollOffset>& scroll) {
    prepareToLoad(url, scroll);
    webkit_web_view_load_uri(webView(), url.c_str());
    holdLastPicture();
}

void WebKitPreviewView::loadHTML(const std::string& html, const std::optional<ScrollOffset>& scroll) {
    prepareToLoad(std::string(emptyPage), scroll);
    webkit_web_view_load_html(webView(), html.c_str(), nullptr);
    holdLastPicture();
}

void WebKitPreviewView::reveal() {
    hasShownAPage_ = true;
    if (!lastPicture_.isHeld())
        return;
    lastPicture_.release();
    queue_draw();
}

void WebKitPreviewView::evaluate(const std::string& script) {
    webkit_web_view_evaluate_javascript(webView(), script.data(), static_cast<gssize>(script.size()),
                                        bridgeWorld, nullptr, nullptr, nullptr, nullptr);
}

void WebKitPreviewView::ask(std::function<void()> answered) {
    webkit_web_view_evaluate_javascript(
        webView(), "0", -1, bridgeWorld, nullptr, nullptr,
        +[](GObject* view, GAsyncResult* result, gpointer question) {
            const std::unique_ptr<std::function<void()>> answer(
                static_cast<std::function<void()>*>(question));
            // A process that ended "answers" too, with an error.
            const GObjectReference<JSCValue> value(
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
            if (value)
                (*answer)();
        },
        std::make_unique<std::function<void()>>(std::move(answered)).release());
}

/// The toolkit's own keys would paste with all looks, which no source can follow.
void WebKitPreviewView::pasteByKeysAsPlainText() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType modifiers) {
            const auto all =
                Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::SHIFT_MASK | Gdk::ModifierType::ALT_MASK;
            const bool isPasting =
                (gdk_keyval_to_lower(key) == GDK_KEY_v &&
                 (modifiers & all) == Gdk::ModifierType::CONTROL_MASK) ||
                (key == GDK_KEY_Insert && (modifiers & all) == Gdk::ModifierType::SHIFT_MASK);
            if (isPasting)
                performMenuCommand(Command::paste);
            return isPasting;
        },
        false);
    add_controller(keys);
}

/// The page keeps Tab for itself, as the source does. The engine finds out what keys mean by a text widget
/// that nobody sees: it would take the keyboard, with Control and Tab pass it on a second time, and open its
/// own menu beside the page's.
void WebKitPreviewView::leaveByKeys() {
    for (GtkWidget* child = gtk_widget_get_first_child(page_.gobj()); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        gtk_widget_set_can_focus(child, FALSE);
        gtk_widget_action_set_enabled(child, "menu.popup", FALSE);
    }
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType modifiers) {
            const bool isTab = key == GDK_KEY_Tab || key == GDK_KEY_KP_Tab || key == GDK_KEY_ISO_Left_Tab;
            if (!isTab || (modifiers & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType{})
                return false;
            const bool isBackwards = (modifiers & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
            g_signal_emit_by_name(gtk_widget_get_root(page_.gobj()), "move-focus",
                                  isBackwards ? GTK_DIR_TAB_BACKWARD : GTK_DIR_TAB_FORWARD);
            return true;
        },
        false);
    add_controller(keys);
}

void WebKitPreviewView::performMenuCommand(Command command) {
    webkit_web_view_evaluate_javascript(
        webView(), "menuCommandFollows()", -1, bridgeWorld, nullptr, nullptr,
        +[](GObject* view, GAsyncResult* result, gpointer data) {
            const auto asked = static_cast<Command>(GPOINTER_TO_INT(data));
            // Nothing while a page is still being loaded.
            const GObjectReference<JSCValue> isMarked(
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
            if (isMarked && (asked != Command::remove || jsc_value_to_boolean(isMarked.get()) != FALSE))
                webkit_web_view_execute_editing_command(WEBKIT_WEB_VIEW(view), editingCommand(asked));
            // The page's process does one thing after the other.
            webkit_web_view_evaluate_javascript(WEBKIT_WEB_VIEW(view), "menuCommandIsOver()", -1, bridgeWorld,
                                                nullptr, nullptr, nullptr, nullptr);
        },
        GINT_TO_POINTER(static_cast<int>(command)));
}

bool WebKitPreviewView::hasSelection() const {
    WebKitEditorState* state = webkit_web_view_get_editor_state(webView());
    return webkit_editor_state_is_copy_available(state) != FALSE;
}

void WebKitPreviewView::endProcess() {
    webkit_web_view_terminate_web_process(webView());
}

} // namespace corvanta
