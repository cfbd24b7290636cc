#include "PageRenderer.hpp"

#include <chrono>
#include <memory>

namespace corvanta {

namespace {

constexpr int width = 1000;
constexpr int height = 800;
constexpr auto patience = std::chrono::minutes(1);

/// What the page's process answers, perhaps after nobody waits for it any more.
struct Answer {
    bool arrived = false;
    std::optional<std::string> text;
    std::string error;
};

void takeAnswer(GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::shared_ptr<Answer>> owner(static_cast<std::shared_ptr<Answer>*>(data));
    Answer& answer = **owner;
    answer.arrived = true;
    GError* error = nullptr;
    const GObjectReference<JSCValue> value(
        webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(view), result, &error));
    if (!value) {
        answer.error = error->message;
        g_error_free(error);
        return;
    }
    const std::unique_ptr<char, decltype(&g_free)> text(jsc_value_to_string(value.get()), &g_free);
    answer.text = text.get();
}

GtkWidget* makeWebView(const PreviewWebContext& context) {
    const GObjectReference<WebKitNetworkSession> session(webkit_network_session_new_ephemeral());
    // Nobody listens there: what a page asks of the web fails at once, every time.
    WebKitNetworkProxySettings* nowhere = webkit_network_proxy_settings_new("http://127.0.0.1:9", nullptr);
    webkit_network_session_set_proxy_settings(session.get(), WEBKIT_NETWORK_PROXY_MODE_CUSTOM, nowhere);
    webkit_network_proxy_settings_free(nowhere);
    return GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context.context(), "network-session",
                                   session.get(), nullptr));
}

} // namespace

PageRenderer::PageRenderer()
    : types_(fileManager_, SharedMimeInfo::environmentDataFolders()),
      log_("rendered-comparison"),
      handler_(
          fileManager_, types_, log_, std::nullopt, [this] { return text_; }, [](const std::string&) {}),
      window_(GTK_WINDOW(gtk_window_new())),
      view_(WEBKIT_WEB_VIEW(makeWebView(context_))),
      loading_(
          view_, "load-changed",
          +[](WebKitWebView*, WebKitLoadEvent event, gpointer self) {
              if (event == WEBKIT_LOAD_FINISHED)
                  static_cast<PageRenderer*>(self)->finished_ = true;
          },
          this),
      crashing_(
          view_, "web-process-terminated",
          +[](WebKitWebView*, WebKitWebProcessTerminationReason, gpointer self) {
              static_cast<PageRenderer*>(self)->crashed_ = true;
          },
          this) {
    PreviewWebContext::setSchemeHandler(view_, &handler_);
    gtk_window_set_default_size(window_, width, height);
    gtk_window_set_child(window_, GTK_WIDGET(view_));
    gtk_window_present(window_);
    waitUntil([this] { return gtk_widget_get_width(GTK_WIDGET(view_)) == width; });
}

PageRenderer::~PageRenderer() {
    PreviewWebContext::setSchemeHandler(view_, nullptr);
    gtk_window_destroy(window_);
}

bool PageRenderer::load(const PreviewSite& site, const std::string& text) {
    text_ = text;
    handler_.setSite(site);
    finished_ = false;
    crashed_ = false;
    webkit_web_view_load_uri(view_, site.documentRequestURL().c_str());
    return waitUntil([this] { return finished_ || crashed_; }) && !crashed_;
}

std::optional<std::string> PageRenderer::call(const std::string& body, const std::string& argument,
                                              std::string& error) {
    GVariantBuilder arguments;
    g_variant_builder_init(&arguments, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&arguments, "{sv}", "argument", g_variant_new_string(argument.c_str()));

    const auto answer = std::make_shared<Answer>();
    webkit_web_view_call_async_javascript_function(
        view_, body.c_str(), static_cast<gssize>(body.size()), g_variant_builder_end(&arguments),
        "comparison", nullptr, nullptr, takeAnswer,
        std::make_unique<std::shared_ptr<Answer>>(answer).release());
    if (!waitUntil([this, &answer] { return answer->arrived || crashed_; }))
        answer->error = "no answer";
    error = answer->error;
    return answer->text;
}

bool PageRenderer::waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    // Wakes the loop up, which otherwise sleeps as long as nothing happens.
    const guint clock = g_timeout_add(
        5, +[](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    while (!condition() && std::chrono::steady_clock::now() < end)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(clock);
    return condition();
}

} // namespace corvanta
