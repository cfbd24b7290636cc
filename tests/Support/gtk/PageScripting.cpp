#include "Support/gtk/PageScripting.hpp"

#include "Platform/gtk/GObjectReference.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <memory>
#include <optional>

namespace corvanta {

namespace {

using Answer = std::optional<std::string>;

void takeAnswer(GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::shared_ptr<Answer>> answer(static_cast<std::shared_ptr<Answer>*>(data));
    GError* error = nullptr;
    const GObjectReference<JSCValue> value(
        webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error));
    if (!value) {
        **answer = std::string("error: ") + error->message;
        g_error_free(error);
        return;
    }
    const std::unique_ptr<char, decltype(&g_free)> text(jsc_value_to_string(value.get()), &g_free);
    **answer = std::string(text.get());
}

} // namespace

std::string evaluateInPage(WebKitWebView* view, const std::string& expression) {
    auto answer = std::make_shared<Answer>();
    webkit_web_view_evaluate_javascript(view, expression.c_str(), -1, nullptr, nullptr, nullptr, takeAnswer,
                                        std::make_unique<std::shared_ptr<Answer>>(answer).release());
    waitUntil([&] { return answer->has_value(); });
    return answer->value_or("error: no answer");
}

} // namespace corvanta
