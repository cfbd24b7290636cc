#include "ClaudeAssistant/KeychainManager.hpp"

#include "ClaudeAssistant/Utf8Validation.hpp"

#include <utility>

namespace corvanta {

KeychainManager::KeychainManager(Keychain& keychain, std::string_view applicationIdentifier)
    : keychain_(keychain), service_(std::string(applicationIdentifier) + ".ClaudeAPIKey") {}

void KeychainManager::save(std::string apiKey, std::function<void(std::optional<KeychainError>)> whenDone) {
    const auto added = whileAlive([this, whenDone = std::move(whenDone)](Keychain::Status status) {
        startNext();
        if (status == Keychain::Status::success)
            whenDone(std::nullopt);
        else
            whenDone(KeychainError{static_cast<std::int32_t>(status)});
    });
    const auto removed = whileAlive([this, apiKey = std::move(apiKey), added](Keychain::Status) {
        keychain_.add(service_, apiKey, added);
    });
    enqueue([this, removed] { keychain_.remove(service_, removed); });
}

void KeychainManager::loadAPIKey(std::function<void(std::optional<std::string>)> whenDone) {
    const auto found = whileAlive([this, whenDone = std::move(whenDone)](
                                      Keychain::Status status, const std::optional<std::string>& data) {
        startNext();
        const bool isKey = status == Keychain::Status::success && data && isUtf8(*data);
        whenDone(isKey ? data : std::nullopt);
    });
    enqueue([this, found] { keychain_.copyMatching(service_, found); });
}

void KeychainManager::deleteAPIKey() {
    const auto removed = whileAlive([this](Keychain::Status) { startNext(); });
    enqueue([this, removed] { keychain_.remove(service_, removed); });
}

void KeychainManager::enqueue(Operation operation) {
    operations_.push_back(std::move(operation));
    if (operations_.size() == 1)
        operations_.front()();
}

void KeychainManager::startNext() {
    operations_.pop_front();
    if (!operations_.empty())
        operations_.front()();
}

} // namespace corvanta
