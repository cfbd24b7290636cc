#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace corvanta {

/// Fetches one small public file over HTTP. Used on the main thread only.
class HttpFetch {
public:
    struct Request {
        std::string url;
        /// In bytes, as they are after decompression.
        std::size_t largestBody = 0;
        /// For everything together: names, connection, redirects and body.
        std::chrono::milliseconds deadline{};
    };

    /// What the server answered. Only an answer with status 200 comes with its body.
    struct Response {
        int status = 0;
        std::string body;
    };

    /// Why there is no answer, in words for the log.
    struct Error {
        std::string description;
    };

    using Answer = std::variant<Response, Error>;

    /// A fetch under way. Destroying the handle ends it without an answer.
    class Handle {
    public:
        Handle() = default;
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        virtual ~Handle() = default;
    };

    HttpFetch() = default;
    HttpFetch(const HttpFetch&) = delete;
    HttpFetch& operator=(const HttpFetch&) = delete;
    virtual ~HttpFetch() = default;

    /// Asks for the newest content at the URL, past every cache, and sends nothing about the user. `whenDone`
    /// is called once, in a later turn of the main loop; it may destroy the handle.
    [[nodiscard]] virtual std::unique_ptr<Handle> get(const Request& request,
                                                      std::function<void(const Answer&)> whenDone) = 0;
};

} // namespace corvanta
