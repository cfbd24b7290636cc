#include "ClaudeAssistant/gtk/LibsecretKeychain.hpp"

#include <gio/gio.h>
#include <libsecret/secret.h>

#include <memory>
#include <utility>

namespace corvanta {

namespace {

using Status = Keychain::Status;

/// What the user sees in the desktop's own list of keys.
constexpr const char* itemLabel = "Corvanta";
constexpr const char* serviceAttribute = "service";

/// The name is the one that the desktop gives to items of no special kind.
const SecretSchema& schema() {
    static const SecretSchema items{"org.freedesktop.Secret.Generic",
                                    SECRET_SCHEMA_NONE,
                                    {{serviceAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                    0,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr};
    return items;
}

struct FreeGError {
    void operator()(GError* error) const { g_error_free(error); }
};
using ErrorReference = std::unique_ptr<GError, FreeGError>;

struct UnrefValue {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};
using ValueReference = std::unique_ptr<SecretValue, UnrefValue>;

struct FreeItems {
    void operator()(GList* items) const { g_list_free_full(items, g_object_unref); }
};
using ItemList = std::unique_ptr<GList, FreeItems>;

/// Something asked of the service. The library carries it from call to call, and watches the service badly:
/// when it vanishes while the user is being asked for the password, the library never comes back. So the
/// operation watches the service itself.
struct Operation {
    using Begin = void (*)(std::unique_ptr<Operation>);
    using WhenDone = std::function<void(Status, std::optional<std::string>)>;

    Operation(Begin how, std::string name, std::string bytes, WhenDone then)
        : begin(how),
          service(std::move(name)),
          data(std::move(bytes)),
          whenDone(std::move(then)),
          watch(g_bus_watch_name(G_BUS_TYPE_SESSION, "org.freedesktop.secrets", G_BUS_NAME_WATCHER_FLAGS_NONE,
                                 onAppeared, onVanished, this, nullptr)) {}
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    ~Operation() { g_bus_unwatch_name(watch); }

    bool isAnswered() const { return !whenDone; }

    void answer(Status status, std::optional<std::string> found = std::nullopt) {
        if (const WhenDone receiver = std::exchange(whenDone, nullptr))
            receiver(status, std::move(found));
    }

    static void onAppeared(GDBusConnection*, const char*, const char*, gpointer operation) {
        static_cast<Operation*>(operation)->wasServiceSeen = true;
    }

    static void onVanished(GDBusConnection*, const char*, gpointer operation) {
        auto* self = static_cast<Operation*>(operation);
        // A service that has not been seen yet may be about to start.
        if (self->wasServiceSeen)
            self->answer(Status::noService);
    }

    Begin begin;
    std::string service;
    /// The bytes to be kept.
    std::string data;
    /// Empty once it has been called.
    WhenDone whenDone;
    bool isSecondTry = false;
    bool wasServiceSeen = false;
    guint watch;
};

std::unique_ptr<Operation> takeBack(gpointer operation) {
    return std::unique_ptr<Operation>(static_cast<Operation*>(operation));
}

Status statusOf(const GError& error) {
    if (error.domain == SECRET_ERROR && error.code == SECRET_ERROR_IS_LOCKED)
        return Status::locked;
    // Without a bus there is no connection, and without a service nobody on the bus.
    const bool isAboutTheConnection = error.domain == G_IO_ERROR || error.domain == G_DBUS_ERROR;
    return isAboutTheConnection ? Status::noService : Status::failed;
}

/// Answers with the failure, unless a second try may do better: a service that has been started anew does not
/// know the session that the library still holds on to.
void fail(std::unique_ptr<Operation> operation, const GError& error) {
    const Status status = statusOf(error);
    if (status != Status::noService || operation->isSecondTry || operation->isAnswered()) {
        operation->answer(status);
        return;
    }
    secret_service_disconnect();
    operation->isSecondTry = true;
    const Operation::Begin begin = operation->begin;
    begin(std::move(operation));
}

void onAdded(GObject*, GAsyncResult* result, gpointer data) {
    GError* error = nullptr;
    const bool isAdded = secret_password_store_finish(result, &error) != FALSE;
    const ErrorReference failure(error);
    auto operation = takeBack(data);
    if (failure)
        fail(std::move(operation), *failure);
    else
        operation->answer(isAdded ? Status::success : Status::locked);
}

void beginAdding(std::unique_ptr<Operation> owned) {
    Operation* operation = owned.release();
    const ValueReference value(
        secret_value_new(operation->data.data(), static_cast<gssize>(operation->data.size()), "text/plain"));
    secret_password_store_binary(&schema(), SECRET_COLLECTION_DEFAULT, itemLabel, value.get(), nullptr,
                                 onAdded, operation, serviceAttribute, operation->service.c_str(), nullptr);
}

void onFound(GObject*, GAsyncResult* result, gpointer data) {
    GError* error = nullptr;
    const ValueReference value(secret_password_lookup_binary_finish(result, &error));
    const ErrorReference failure(error);
    auto operation = takeBack(data);
    if (failure) {
        fail(std::move(operation), *failure);
    } else if (!value) {
        operation->answer(Status::itemNotFound);
    } else {
        gsize size = 0;
        const char* bytes = secret_value_get(value.get(), &size);
        operation->answer(Status::success, std::string(bytes, size));
    }
}

void beginFinding(std::unique_ptr<Operation> owned) {
    Operation* operation = owned.release();
    secret_password_lookup(&schema(), nullptr, onFound, operation, serviceAttribute,
                           operation->service.c_str(), nullptr);
}

void onRemoved(GObject*, GAsyncResult* result, gpointer data) {
    GError* error = nullptr;
    const bool isRemoved = secret_password_clear_finish(result, &error) != FALSE;
    const ErrorReference failure(error);
    auto operation = takeBack(data);
    if (failure)
        fail(std::move(operation), *failure);
    else
        operation->answer(isRemoved ? Status::success : Status::itemNotFound);
}

void onUnlocked(GObject*, GAsyncResult* result, gpointer data) {
    GError* error = nullptr;
    const ItemList items(secret_password_search_finish(result, &error));
    const ErrorReference failure(error);
    auto owned = takeBack(data);
    if (failure) {
        fail(std::move(owned), *failure);
        return;
    }
    Operation* operation = owned.release();
    secret_password_clear(&schema(), nullptr, onRemoved, operation, serviceAttribute,
                          operation->service.c_str(), nullptr);
}

/// Clearing passes over locked items, so they are unlocked first, which only a search does.
void beginRemoving(std::unique_ptr<Operation> owned) {
    Operation* operation = owned.release();
    const auto flags = static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_UNLOCK);
    secret_password_search(&schema(), flags, nullptr, onUnlocked, operation, serviceAttribute,
                           operation->service.c_str(), nullptr);
}

/// `whenDone` for an operation that finds nothing.
auto withoutData(std::function<void(Status)> whenDone) {
    return [whenDone = std::move(whenDone)](Status status, const std::optional<std::string>&) {
        whenDone(status);
    };
}

} // namespace

void LibsecretKeychain::add(const std::string& service, const std::string& data,
                            std::function<void(Status)> whenDone) {
    beginAdding(std::make_unique<Operation>(beginAdding, service, data, withoutData(std::move(whenDone))));
}

void LibsecretKeychain::copyMatching(const std::string& service,
                                     std::function<void(Status, std::optional<std::string>)> whenDone) {
    beginFinding(std::make_unique<Operation>(beginFinding, service, std::string(), std::move(whenDone)));
}

void LibsecretKeychain::remove(const std::string& service, std::function<void(Status)> whenDone) {
    beginRemoving(
        std::make_unique<Operation>(beginRemoving, service, std::string(), withoutData(std::move(whenDone))));
}

} // namespace corvanta
