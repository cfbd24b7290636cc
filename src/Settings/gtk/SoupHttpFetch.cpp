#include "Settings/gtk/SoupHttpFetch.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <fmt/format.h>
#include <gio/gio.h>
#include <libsoup/soup.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

constexpr int mostRedirects = 10;
constexpr std::size_t chunkSize = 16'384;
constexpr auto uriFlags = static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS);

struct FreeGError {
    void operator()(GError* error) const { g_error_free(error); }
};
using ErrorReference = std::unique_ptr<GError, FreeGError>;

struct UnrefUri {
    void operator()(GUri* uri) const { g_uri_unref(uri); }
};
using UriReference = std::unique_ptr<GUri, UnrefUri>;

struct UnrefBytes {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
using BytesReference = std::unique_ptr<GBytes, UnrefBytes>;

UriReference parsed(const std::string& url) {
    return UriReference(g_uri_parse(url.c_str(), uriFlags, nullptr));
}

bool isAt(GUri& uri, std::string_view scheme) {
    // The host is checked, because the library does not take an address without one.
    const char* host = g_uri_get_host(&uri);
    return scheme == g_uri_get_scheme(&uri) && host != nullptr && *host != '\0';
}

/// A main loop of the current thread's own, to which the library's calls come back.
class ThreadContext {
public:
    ThreadContext() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    ThreadContext(const ThreadContext&) = delete;
    ThreadContext& operator=(const ThreadContext&) = delete;
    ~ThreadContext() {
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }

    GMainContext* get() const { return context_; }
    void iterate() const { g_main_context_iteration(context_, TRUE); }

private:
    GMainContext* context_;
};

/// Calls a function once when time is up, unless it is destroyed before.
class DeadlineSource {
public:
    DeadlineSource(const ThreadContext& context, std::chrono::milliseconds delay, GSourceFunc function,
                   gpointer data)
        : source_(g_timeout_source_new(static_cast<guint>(delay.count()))) {
        g_source_set_callback(source_, function, data, nullptr);
        g_source_attach(source_, context.get());
    }
    DeadlineSource(const DeadlineSource&) = delete;
    DeadlineSource& operator=(const DeadlineSource&) = delete;
    ~DeadlineSource() {
        g_source_destroy(source_);
        g_source_unref(source_);
    }

private:
    GSource* source_;
};

/// One fetch, made from beginning to end in the thread that runs it.
class Fetch {
public:
    Fetch(const HttpFetch::Request& request, GCancellable& cancellable)
        : request_(request),
          cancellable_(G_CANCELLABLE(g_object_ref(&cancellable))),
          uri_(parsed(request.url)) {}
    Fetch(const Fetch&) = delete;
    Fetch& operator=(const Fetch&) = delete;

    /// Trusts the certificates in `trustedCertificates` instead of the system's, unless it is empty.
    HttpFetch::Answer run(const std::filesystem::path& trustedCertificates) {
        if (!uri_ || !(isAt(*uri_, "http") || isAt(*uri_, "https")))
            return HttpFetch::Error{"not the address of a web site"};
        const ThreadContext context;
        // The session of one fetch only: no cookies, no cache, and no connection that stays open after it.
        session_.reset(soup_session_new());
        if (!trustedCertificates.empty())
            trust(trustedCertificates);
        const DeadlineSource deadline(context, request_.deadline, onDeadline, this);
        send();
        // Calls that were cut off come back as well, and they must find this object.
        while (!answer_ || callsUnderWay_ > 0)
            context.iterate();
        body_.reset();
        message_.reset();
        session_.reset();
        return *std::move(answer_);
    }

private:
    /// Counts a call to the library; the result is what its callback receives.
    gpointer leave() {
        ++callsUnderWay_;
        return this;
    }

    static Fetch* comeBack(gpointer self) {
        auto* fetch = static_cast<Fetch*>(self);
        --fetch->callsUnderWay_;
        return fetch;
    }

    void trust(const std::filesystem::path& certificates) {
        const GObjectReference<GTlsDatabase> database(g_tls_file_database_new(certificates.c_str(), nullptr));
        soup_session_set_tls_database(session_.get(), database.get());
    }

    static gboolean onDeadline(gpointer self) {
        static_cast<Fetch*>(self)->finish(HttpFetch::Error{"the server took too long"});
        return G_SOURCE_REMOVE;
    }

    void send() {
        message_.reset(soup_message_new_from_uri(SOUP_METHOD_GET, uri_.get()));
        // The library would follow to anywhere.
        soup_message_add_flags(message_.get(), SOUP_MESSAGE_NO_REDIRECT);
        SoupMessageHeaders* headers = soup_message_get_request_headers(message_.get());
        soup_message_headers_append(headers, "Cache-Control", "no-cache");
        soup_message_headers_append(headers, "Pragma", "no-cache");
        soup_session_send_async(session_.get(), message_.get(), G_PRIORITY_DEFAULT, cancellable_.get(),
                                onSent, leave());
    }

    static void onSent(GObject* session, GAsyncResult* result, gpointer self) {
        Fetch* fetch = comeBack(self);
        GError* error = nullptr;
        GObjectReference<GInputStream> body(soup_session_send_finish(SOUP_SESSION(session), result, &error));
        const ErrorReference failure(error);
        if (fetch->answer_)
            return;
        if (failure)
            fetch->finish(HttpFetch::Error{failure->message});
        else
            fetch->takeResponse(std::move(body));
    }

    void takeResponse(GObjectReference<GInputStream> body) {
        const auto status = static_cast<int>(soup_message_get_status(message_.get()));
        if (UriReference target = redirectTarget()) {
            ++redirects_;
            uri_ = std::move(target);
            send();
        } else if (status == SOUP_STATUS_OK) {
            body_ = std::move(body);
            readOn();
        } else {
            finish(HttpFetch::Response{status, {}});
        }
    }

    /// Where the answer leads, or nothing when it leads nowhere or must not be followed.
    UriReference redirectTarget() const {
        if (!SOUP_STATUS_IS_REDIRECTION(soup_message_get_status(message_.get())) ||
            redirects_ == mostRedirects)
            return nullptr;
        const char* location =
            soup_message_headers_get_one(soup_message_get_response_headers(message_.get()), "Location");
        if (location == nullptr)
            return nullptr;
        UriReference target(g_uri_parse_relative(uri_.get(), location, uriFlags, nullptr));
        const bool isAllowed =
            target && (isAt(*target, "https") || (isAt(*target, "http") && isAt(*uri_, "http")));
        return isAllowed ? std::move(target) : nullptr;
    }

    void readOn() {
        g_input_stream_read_bytes_async(body_.get(), chunkSize, G_PRIORITY_DEFAULT, cancellable_.get(),
                                        onRead, leave());
    }

    static void onRead(GObject* body, GAsyncResult* result, gpointer self) {
        Fetch* fetch = comeBack(self);
        GError* error = nullptr;
        const BytesReference bytes(g_input_stream_read_bytes_finish(G_INPUT_STREAM(body), result, &error));
        const ErrorReference failure(error);
        if (fetch->answer_)
            return;
        if (failure) {
            fetch->finish(HttpFetch::Error{failure->message});
            return;
        }
        gsize size = 0;
        const auto* data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
        fetch->takeBytes({data, size});
    }

    void takeBytes(std::string_view bytes) {
        if (bytes.empty()) {
            finish(HttpFetch::Response{SOUP_STATUS_OK, std::move(received_)});
            return;
        }
        if (bytes.size() > request_.largestBody - received_.size()) {
            finish(HttpFetch::Error{fmt::format("the answer is larger than {} bytes", request_.largestBody)});
            return;
        }
        received_ += bytes;
        readOn();
    }

    void finish(HttpFetch::Answer answer) {
        if (answer_)
            return;
        answer_ = std::move(answer);
        g_cancellable_cancel(cancellable_.get());
    }

    const HttpFetch::Request& request_;
    GObjectReference<GCancellable> cancellable_;
    UriReference uri_;
    GObjectReference<SoupSession> session_;
    GObjectReference<SoupMessage> message_;
    GObjectReference<GInputStream> body_;
    std::string received_;
    std::optional<HttpFetch::Answer> answer_;
    int redirects_ = 0;
    int callsUnderWay_ = 0;
};

/// What goes with a fetch into its thread and comes back. Only the main thread looks at `whenDone`, which is
/// empty once nobody waits any more.
struct Job {
    HttpFetch::Request request;
    std::filesystem::path trustedCertificates;
    GObjectReference<GCancellable> cancellable{g_cancellable_new()};
    std::optional<HttpFetch::Answer> answer;
    std::function<void(const HttpFetch::Answer&)> whenDone;
};

using SharedJob = std::shared_ptr<Job>;

void runJob(GTask* task, gpointer, gpointer data, GCancellable*) {
    Job& job = **static_cast<SharedJob*>(data);
    job.answer = Fetch(job.request, *job.cancellable).run(job.trustedCertificates);
    g_task_return_boolean(task, TRUE);
}

void deliver(GObject*, GAsyncResult* result, gpointer) {
    const SharedJob job = *static_cast<SharedJob*>(g_task_get_task_data(G_TASK(result)));
    if (const auto whenDone = std::exchange(job->whenDone, nullptr))
        whenDone(*job->answer);
}

void forget(gpointer job) {
    delete static_cast<SharedJob*>(job);
}

class JobHandle final : public HttpFetch::Handle {
public:
    explicit JobHandle(SharedJob job) : job_(std::move(job)) {}
    ~JobHandle() override {
        job_->whenDone = nullptr;
        g_cancellable_cancel(job_->cancellable.get());
    }

private:
    SharedJob job_;
};

} // namespace

// In a thread of its own although the library need not be waited for: it reads the system's certificates in
// whichever thread it is called, and that takes long enough for a window to stall.
std::unique_ptr<HttpFetch::Handle> SoupHttpFetch::get(const Request& request,
                                                      std::function<void(const Answer&)> whenDone) {
    auto job = std::make_shared<Job>();
    job->request = request;
    job->trustedCertificates = trustedCertificates_;
    job->whenDone = std::move(whenDone);
    const GObjectReference<GTask> task(g_task_new(nullptr, nullptr, deliver, nullptr));
    g_task_set_task_data(task.get(), new SharedJob(job), forget);
    g_task_run_in_thread(task.get(), runJob);
    return std::make_unique<JobHandle>(std::move(job));
}

} // namespace corvanta
