#pragma once

#include "ClaudeAssistant/Keychain.hpp"
#include "ClaudeAssistant/KeychainError.hpp"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Keeps the user's API key in one item of the keychain. What is asked for happens in that order, one after
/// the other, however late the keychain answers: a key that was saved and removed stays removed. Callbacks
/// are called in a later turn of the main loop, and none once this object is destroyed. Used on the main
/// thread only.
class KeychainManager {
public:
    /// `keychain` must outlive this object. The item's service is `applicationIdentifier` with
    /// ".ClaudeAPIKey" behind it.
    KeychainManager(Keychain& keychain, std::string_view applicationIdentifier);

    /// Replaces the item by one that holds `apiKey` (UTF-8), then tells what went wrong, if anything did.
    void save(std::string apiKey, std::function<void(std::optional<KeychainError>)> whenDone);

    /// Tells the stored key, or nothing when there is none, the keychain does not give it away, or it is no
    /// UTF-8.
    void loadAPIKey(std::function<void(std::optional<std::string>)> whenDone);

    /// Removes the item; that there is none, or that it cannot be removed, is passed over.
    void deleteAPIKey();

private:
    /// An operation and the call that begins it.
    using Operation = std::function<void()>;

    void enqueue(Operation operation);
    void startNext();

    /// `answer`, as a callback that may outlive this object and then does nothing.
    template <typename Answer>
    auto whileAlive(Answer answer) {
        return [alive = std::weak_ptr<bool>(alive_), answer = std::move(answer)](auto&&... arguments) {
            if (!alive.expired())
                answer(std::forward<decltype(arguments)>(arguments)...);
        };
    }

    Keychain& keychain_;
    std::string service_;
    /// The first one is under way.
    std::deque<Operation> operations_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace corvanta
