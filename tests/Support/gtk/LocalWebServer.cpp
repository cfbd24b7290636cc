#include "Support/gtk/LocalWebServer.hpp"

#include <fmt/format.h>

#include <array>
#include <stdexcept>

namespace corvanta {

bool LocalWebServer::Client::readRequest() {
    std::array<char, 4096> buffer{};
    while (!request.ends_with("\r\n\r\n")) {
        const gssize count = g_input_stream_read(g_io_stream_get_input_stream(&stream_), buffer.data(),
                                                 buffer.size(), &cancellable_, nullptr);
        if (count <= 0)
            return false;
        request.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return true;
}

bool LocalWebServer::Client::send(const std::string& bytes) {
    return g_output_stream_write_all(g_io_stream_get_output_stream(&stream_), bytes.data(), bytes.size(),
                                     nullptr, &cancellable_, nullptr) != FALSE;
}

void LocalWebServer::Client::waitForEnd() {
    char ignored = 0;
    while (g_input_stream_read(g_io_stream_get_input_stream(&stream_), &ignored, 1, &cancellable_, nullptr) >
           0) {
    }
}

LocalWebServer::LocalWebServer(Reply reply, const std::string& certificate)
    : reply_(std::move(reply)), listener_(g_socket_listener_new()), cancellable_(g_cancellable_new()) {
    if (!certificate.empty())
        certificate_.reset(g_tls_certificate_new_from_file(certificate.c_str(), nullptr));
    const GObjectReference<GSocketAddress> wanted(g_inet_socket_address_new_from_string("127.0.0.1", 0));
    GSocketAddress* effective = nullptr;
    if (g_socket_listener_add_address(listener_.get(), wanted.get(), G_SOCKET_TYPE_STREAM,
                                      G_SOCKET_PROTOCOL_TCP, nullptr, &effective, nullptr) == FALSE)
        throw std::runtime_error("cannot listen on the loopback interface");
    const GObjectReference<GSocketAddress> address(effective);
    port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(effective));
    acceptor_ = std::jthread([this] { acceptClients(); });
}

LocalWebServer::~LocalWebServer() {
    g_cancellable_cancel(cancellable_.get());
    acceptor_.join();
    clients_.clear();
}

std::string LocalWebServer::url(const std::string& path) const {
    return fmt::format("{}://127.0.0.1:{}{}", certificate_ ? "https" : "http", port_, path);
}

std::vector<std::string> LocalWebServer::requests() const {
    const std::scoped_lock lock(mutex_);
    return requests_;
}

void LocalWebServer::acceptClients() {
    while (GSocketConnection* socket =
               g_socket_listener_accept(listener_.get(), nullptr, cancellable_.get(), nullptr)) {
        clients_.emplace_back([this, socket] {
            const GObjectReference<GSocketConnection> owned(socket);
            serve(*G_IO_STREAM(socket));
        });
    }
}

void LocalWebServer::serve(GIOStream& socket) {
    GObjectReference<GIOStream> tls;
    if (certificate_)
        tls.reset(g_tls_server_connection_new(&socket, certificate_.get(), nullptr));
    GIOStream& stream = tls ? *tls : socket;
    Client client(stream, *cancellable_);
    if (client.readRequest()) {
        {
            const std::scoped_lock lock(mutex_);
            requests_.push_back(client.request);
        }
        reply_(client);
    }
    g_io_stream_close(&stream, nullptr, nullptr);
}

std::string okAnswer(const std::string& body) {
    return fmt::format("HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: {}\r\n\r\n{}",
                       body.size(), body);
}

std::string redirectAnswer(const std::string& status, const std::string& location) {
    return fmt::format("HTTP/1.1 {}\r\nLocation: {}\r\nContent-Length: 0\r\n\r\n", status, location);
}

} // namespace corvanta
