#pragma once

#include "Platform/UserDefaults.hpp"

#include <map>

namespace corvanta {

/// Values that live as long as the test.
class InMemoryUserDefaults : public UserDefaults {
public:
    std::optional<Value> value(std::string_view key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional<Value>(found->second);
    }

    void set(std::string_view key, Value value) override {
        values.insert_or_assign(std::string(key), std::move(value));
        tellObservers(key);
    }

    void remove(std::string_view key) override {
        values.erase(std::string(key));
        tellObservers(key);
    }

    std::map<std::string, Value, std::less<>> values;
};

} // namespace corvanta
