#pragma once

#include "ClaudeAssistant/KeychainManager.hpp"
#include "Platform/Published.hpp"

#include <memory>
#include <string>

namespace corvanta {

/// The user's API key as all windows see it. Used on the main thread only.
class ClaudeAssistantViewModel {
public:
    /// Asks the keychain for the key, which is published when the answer comes; until then there is none.
    /// `keychainManager` must outlive this object.
    explicit ClaudeAssistantViewModel(KeychainManager& keychainManager);

    ClaudeAssistantViewModel(const ClaudeAssistantViewModel&) = delete;
    ClaudeAssistantViewModel& operator=(const ClaudeAssistantViewModel&) = delete;

    /// Publishes `key` at once and has it stored. When the keychain refuses, it counts for this run.
    void saveAPIKey(const std::string& key);

    /// Publishes that there is no key and has the stored one removed.
    void clearAPIKey();

    /// "" when there is none.
    Published<std::string> apiKey;
    /// True exactly when `apiKey` is not empty.
    Published<bool> isEnabled{false};

private:
    void publish(const std::string& key);

    KeychainManager& keychainManager_;
    /// What the user entered meanwhile is newer than what the keychain held at the start.
    bool isDecidedByUser_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace corvanta
