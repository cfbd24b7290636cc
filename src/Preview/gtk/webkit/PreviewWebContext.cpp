#include "Preview/gtk/webkit/PreviewWebContext.hpp"

#include "Preview/PreviewSite.hpp"
#include "Preview/gtk/webkit/EngineLoop.hpp"
#include "Preview/gtk/webkit/WebKitSchemeTask.hpp"

#include <string>

namespace corvanta {

namespace {

constexpr const char* handlerKey = "corvanta-scheme-handler";

void answer(WebKitURISchemeRequest* request, gpointer) {
    WebKitSchemeTask task(request);
    WebKitWebView* view = webkit_uri_scheme_request_get_web_view(request);
    auto* handler = static_cast<PreviewSchemeHandler*>(
        view != nullptr ? g_object_get_data(G_OBJECT(view), handlerKey) : nullptr);
    if (handler != nullptr)
        handler->start(task);
    else
        task.didFailWithBadURL();
}

/// The engine takes the loop that is the thread's default when it is first used, for as long as the program
/// runs.
WebKitWebContext* makeContext() {
    static const EngineLoop loop;
    g_main_context_push_thread_default(loop.context());
    WebKitWebContext* context = webkit_web_context_new();
    g_main_context_pop_thread_default(loop.context());
    // It has drawn something to find out what the graphics can do. The toolkit does not know that its own
    // drawing has lost its place by that, and no later picture of a window would reach the screen.
    gdk_gl_context_clear_current();
    return context;
}

} // namespace

PreviewWebContext::PreviewWebContext() : context_(makeContext()) {
    const std::string scheme(PreviewSite::scheme);
    webkit_web_context_register_uri_scheme(context_.get(), scheme.c_str(), answer, nullptr, nullptr);
    WebKitSecurityManager* security = webkit_web_context_get_security_manager(context_.get());
    webkit_security_manager_register_uri_scheme_as_secure(security, scheme.c_str());
    webkit_security_manager_register_uri_scheme_as_cors_enabled(security, scheme.c_str());
    webkit_security_manager_register_uri_scheme_as_display_isolated(security, scheme.c_str());
}

void PreviewWebContext::setSchemeHandler(WebKitWebView* view, PreviewSchemeHandler* handler) {
    g_object_set_data(G_OBJECT(view), handlerKey, handler);
}

} // namespace corvanta
