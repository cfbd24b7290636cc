#pragma once

#include <sigc++/connection.h>

#include <utility>

namespace corvanta {

/// A connection to a signal that ends when this object does. sigc++ has none of its own, and a lambda
/// connected without one would be called after the object it captured is gone.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(const sigc::connection& connection) : connection_(connection) {}

    Subscription(Subscription&& other) noexcept : connection_(std::exchange(other.connection_, {})) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            connection_.disconnect();
            connection_ = std::exchange(other.connection_, {});
        }
        return *this;
    }

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    ~Subscription() { connection_.disconnect(); }

private:
    sigc::connection connection_;
};

} // namespace corvanta
