#pragma once

#include "Platform/Subscription.hpp"

#include <sigc++/signal.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvanta {

/// Small typed values under keys, kept from one launch to the next. Strings are UTF-8.
class UserDefaults {
public:
    using Value = std::variant<bool, double, std::string, std::vector<std::string>>;

    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// The value under `key`, or nothing when there is none of these types.
    virtual std::optional<Value> value(std::string_view key) const = 0;

    /// Stores `value` under `key` and tells the observers of the key, also when nothing changed. What cannot
    /// be stored is kept for this run.
    virtual void set(std::string_view key, Value value) = 0;

    /// Forgets the value under `key` and tells the observers of the key.
    virtual void remove(std::string_view key) = 0;

    /// The value under `key` as `Type`, one of the types of `Value`, or nothing when it is of another type.
    template <typename Type>
    std::optional<Type> get(std::string_view key) const {
        const auto stored = value(key);
        const auto* typed = stored ? std::get_if<Type>(&*stored) : nullptr;
        return typed == nullptr ? std::nullopt : std::optional<Type>(*typed);
    }

    /// Calls `observer` after each change of the value under `key`, as long as the returned subscription
    /// lives.
    [[nodiscard]] Subscription observe(std::string_view key, const std::function<void()>& observer) {
        return Subscription(observers_[std::string(key)].connect(observer));
    }

protected:
    void tellObservers(std::string_view key) {
        if (const auto found = observers_.find(key); found != observers_.end())
            found->second.emit();
    }

private:
    std::map<std::string, sigc::signal<void()>, std::less<>> observers_;
};

} // namespace corvanta
