#include "Preview/gtk/webkit/WebKitSchemeTask.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <fmt/format.h>
#include <gio/gio.h>

#include <memory>

namespace corvanta {

namespace {

struct BytesUnref {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

/// The bytes of `body`, which is not copied: the engine reads them at its leisure.
std::unique_ptr<GBytes, BytesUnref> bytes(std::string body) {
    auto owner = std::make_unique<std::string>(std::move(body));
    const std::string& text = *owner;
    return std::unique_ptr<GBytes, BytesUnref>(g_bytes_new_with_free_func(
        text.data(), text.size(),
        [](gpointer string) { std::unique_ptr<std::string>(static_cast<std::string*>(string)).reset(); },
        owner.release()));
}

/// A stream that reads in a thread of its own. It opens the file a second time, by its descriptor: under its
/// name there may be another one by now.
GInputStream* streamOf(const FileBody& body) {
    const std::string path = fmt::format("/proc/self/fd/{}", body.file.get());
    const GObjectReference<GFile> file(g_file_new_for_path(path.c_str()));
    GFileInputStream* stream = g_file_read(file.get(), nullptr, nullptr);
    return stream != nullptr ? G_INPUT_STREAM(stream) : g_memory_input_stream_new();
}

} // namespace

std::optional<std::string> WebKitSchemeTask::url() const {
    const char* url = webkit_uri_scheme_request_get_uri(request_);
    return url != nullptr ? std::optional<std::string>(url) : std::nullopt;
}

void WebKitSchemeTask::didFinish() {
    const auto length = static_cast<gint64>(file_ ? file_->size : body_.size());
    const GObjectReference<GInputStream> stream(
        file_ ? streamOf(*file_) : g_memory_input_stream_new_from_bytes(bytes(std::move(body_)).get()));
    const GObjectReference<WebKitURISchemeResponse> response(
        webkit_uri_scheme_response_new(stream.get(), length));

    // The response takes the headers over.
    SoupMessageHeaders* headers = soup_message_headers_new(SOUP_MESSAGE_HEADERS_RESPONSE);
    for (const auto& [name, value] : response_.headerFields) {
        soup_message_headers_append(headers, name.c_str(), value.c_str());
        if (name == "Content-Type")
            webkit_uri_scheme_response_set_content_type(response.get(), value.c_str());
    }
    webkit_uri_scheme_response_set_http_headers(response.get(), headers);
    webkit_uri_scheme_response_set_status(response.get(), static_cast<guint>(response_.status), nullptr);
    webkit_uri_scheme_request_finish_with_response(request_, response.get());
}

void WebKitSchemeTask::didFailWithBadURL() {
    const std::unique_ptr<GError, decltype(&g_error_free)> error(
        g_error_new_literal(WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL, "bad URL"),
        &g_error_free);
    webkit_uri_scheme_request_finish_error(request_, error.get());
}

} // namespace corvanta
