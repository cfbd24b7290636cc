#pragma once

#include "Platform/Subscription.hpp"

#include <sigc++/signal.h>

#include <utility>

namespace corvanta {

/// A value that tells its observers of every assignment, also of one that changes nothing. The value is
/// stored before the observers are called.
template <typename Value>
class Published {
public:
    Published() = default;
    explicit Published(Value value) : value_(std::move(value)) {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    Published& operator=(Value value) {
        value_ = std::move(value);
        changed_.emit(value_);
        return *this;
    }

    /// Changes the value in place, for values too large to be copied at every change.
    template <typename Change>
    void modify(Change&& change) {
        std::forward<Change>(change)(value_);
        changed_.emit(value_);
    }

    const Value& operator*() const { return value_; }
    const Value* operator->() const { return &value_; }

    /// Calls `observer` with the new value after each assignment, as long as the returned subscription lives.
    template <typename Observer>
    [[nodiscard]] Subscription subscribe(Observer&& observer) {
        return Subscription(changed_.connect(std::forward<Observer>(observer)));
    }

private:
    Value value_{};
    sigc::signal<void(const Value&)> changed_;
};

} // namespace corvanta
