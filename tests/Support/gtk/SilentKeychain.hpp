#pragma once

#include "ClaudeAssistant/Keychain.hpp"

namespace corvanta {

/// A keychain that answers nothing, like one that waits for its password.
class SilentKeychain final : public Keychain {
public:
    void add(const std::string&, const std::string&, std::function<void(Status)>) override {}
    void copyMatching(const std::string&, std::function<void(Status, std::optional<std::string>)>) override {}
    void remove(const std::string&, std::function<void(Status)>) override {}
};

} // namespace corvanta
