#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"

#include <memory>
#include <optional>

namespace corvanta {

ClaudeAssistantViewModel::ClaudeAssistantViewModel(KeychainManager& keychainManager)
    : keychainManager_(keychainManager) {
    keychainManager_.loadAPIKey(
        [this, alive = std::weak_ptr<bool>(alive_)](const std::optional<std::string>& key) {
            if (!alive.expired() && key && !isDecidedByUser_)
                publish(*key);
        });
}

void ClaudeAssistantViewModel::saveAPIKey(const std::string& key) {
    isDecidedByUser_ = true;
    publish(key);
    keychainManager_.save(key, [](const std::optional<KeychainError>&) {});
}

void ClaudeAssistantViewModel::clearAPIKey() {
    isDecidedByUser_ = true;
    publish("");
    keychainManager_.deleteAPIKey();
}

void ClaudeAssistantViewModel::publish(const std::string& key) {
    apiKey = key;
    isEnabled = !key.empty();
}

} // namespace corvanta
