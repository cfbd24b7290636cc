#pragma once

#include "Platform/gtk/GObjectReference.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gio/gio.h>

#include <string>

namespace corvanta {

/// A real key service whose keys lie in a temporary folder, on a session bus of the tests' own, on which
/// nothing starts by itself: there is no service until it is started. Only one at a time.
class PrivateKeyring {
public:
    PrivateKeyring();
    PrivateKeyring(const PrivateKeyring&) = delete;
    PrivateKeyring& operator=(const PrivateKeyring&) = delete;
    ~PrivateKeyring();

    /// Starts the service with its keys unlocked; the first start makes the store for them.
    void startUnlocked();

    /// Starts the service as it is before the user has given a password.
    void startLocked();

    /// Ends the service at once, as in a crash.
    void stop();

    /// Lets somebody stand in for the dialog that asks for passwords, who never answers.
    void letPasswordDialogHang();

    /// Where the service keeps its files.
    const std::filesystem::path& folder() const { return folder_.path(); }

private:
    void start(const char* const* arguments, const std::string& input);
    bool isServiceThere() const;

    TemporaryFolder folder_;
    /// Beside the connection that the library shares, so that the test sees the bus as somebody else does.
    GObjectReference<GDBusConnection> connection_;
    GObjectReference<GSubprocess> service_;
    guint passwordDialog_ = 0;
};

} // namespace corvanta
