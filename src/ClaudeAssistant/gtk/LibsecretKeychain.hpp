#pragma once

#include "ClaudeAssistant/Keychain.hpp"

namespace corvanta {

/// The desktop's key service over D-Bus. Nothing here waits for it: that no service runs, that it asks the
/// user for a password or goes away in the middle only shows in when and how an operation answers.
class LibsecretKeychain final : public Keychain {
public:
    void add(const std::string& service, const std::string& data,
             std::function<void(Status)> whenDone) override;
    void copyMatching(const std::string& service,
                      std::function<void(Status, std::optional<std::string>)> whenDone) override;
    void remove(const std::string& service, std::function<void(Status)> whenDone) override;
};

} // namespace corvanta
