#pragma once

#include "Platform/gtk/GObjectReference.hpp"

#include <gio/gio.h>

#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {

/// A server on the loopback interface that says byte for byte what the test wants, so that it can also behave
/// badly. Each client has a thread of its own.
class LocalWebServer {
public:
    /// Who asks, and what.
    class Client {
    public:
        Client(GIOStream& stream, GCancellable& cancellable) : stream_(stream), cancellable_(cancellable) {}

        /// The first line and the headers, up to the empty line.
        std::string request;

        /// Reads the request; false when none comes.
        bool readRequest();

        /// False once the client or the server is gone.
        bool send(const std::string& bytes);

        /// Waits until the client or the server is gone.
        void waitForEnd();

    private:
        GIOStream& stream_;
        GCancellable& cancellable_;
    };

    using Reply = std::function<void(Client&)>;

    /// Answers every request with `reply`, which runs in the client's thread. With a certificate, a PEM file
    /// that also holds its key, the server speaks TLS.
    explicit LocalWebServer(Reply reply, const std::string& certificate = "");
    LocalWebServer(const LocalWebServer&) = delete;
    LocalWebServer& operator=(const LocalWebServer&) = delete;
    ~LocalWebServer();

    /// The address of `path`, which begins with a slash.
    std::string url(const std::string& path = "/apps/corvanta/version.json") const;

    /// The requests so far.
    std::vector<std::string> requests() const;

private:
    void acceptClients();
    void serve(GIOStream& socket);

    Reply reply_;
    GObjectReference<GTlsCertificate> certificate_;
    GObjectReference<GSocketListener> listener_;
    GObjectReference<GCancellable> cancellable_;
    std::uint16_t port_ = 0;
    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
    std::list<std::jthread> clients_;
    std::jthread acceptor_;
};

/// An answer with status 200 and this body.
std::string okAnswer(const std::string& body);

/// An answer with this status line, which leads to `location`.
std::string redirectAnswer(const std::string& status, const std::string& location);

} // namespace corvanta
