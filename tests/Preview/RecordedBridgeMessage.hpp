#pragma once

#include "Preview/BridgeMessage.hpp"

#include <map>
#include <string>
#include <utility>

namespace corvanta {

/// A message of a test's own making.
class RecordedBridgeMessage final : public BridgeMessage {
public:
    explicit RecordedBridgeMessage(std::map<std::string, std::string> strings = {},
                                   std::map<std::string, double> numbers = {})
        : strings_(std::move(strings)), numbers_(std::move(numbers)) {}

    std::optional<std::string> string(const std::string& field) const override {
        const auto found = strings_.find(field);
        return found == strings_.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<double> number(const std::string& field) const override {
        const auto found = numbers_.find(field);
        return found == numbers_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, std::string> strings_;
    std::map<std::string, double> numbers_;
};

} // namespace corvanta
