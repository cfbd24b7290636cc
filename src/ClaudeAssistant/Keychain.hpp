#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// The desktop's store for secrets: one item for each service, which is a name of the program's choosing.
/// Every operation answers once, in a later turn of the main loop, which may be long after: a locked store
/// waits for the user's password. Used on the main thread only.
class Keychain {
public:
    enum class Status : std::int32_t {
        success = 0,
        /// There is no item, or no data in it.
        itemNotFound,
        /// There is no store, or it went away.
        noService,
        /// The store is locked, and the user did not unlock it.
        locked,
        /// Any other refusal.
        failed,
    };

    Keychain() = default;
    Keychain(const Keychain&) = delete;
    Keychain& operator=(const Keychain&) = delete;
    virtual ~Keychain() = default;

    /// Keeps the bytes `data` under `service`.
    virtual void add(const std::string& service, const std::string& data,
                     std::function<void(Status)> whenDone) = 0;

    /// The bytes under `service`, present exactly on success.
    virtual void copyMatching(const std::string& service,
                              std::function<void(Status, std::optional<std::string>)> whenDone) = 0;

    /// Forgets all items under `service`.
    virtual void remove(const std::string& service, std::function<void(Status)> whenDone) = 0;
};

} // namespace corvanta
