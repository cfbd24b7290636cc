#pragma once

#include "Platform/Published.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/UserDefaults.hpp"

#include <string>

namespace corvanta {

/// The user's preferences for the editor and for updates. An assignment tells the observers and is stored;
/// nothing is clamped. Used on the main thread only.
class AppSettings {
public:
    /// Reads the stored values once; what is absent or of another type gets its default. `defaults` must
    /// outlive this object.
    explicit AppSettings(UserDefaults& defaults);

    /// In points.
    Published<double> editorFontSize;
    /// Also an id that no theme has is kept.
    Published<std::string> editorThemeID;
    /// Off until the user turns it on: nothing leaves this computer unasked.
    Published<bool> checkForUpdatesAtLaunch;

private:
    Subscription storesFontSize_;
    Subscription storesThemeID_;
    Subscription storesUpdateCheck_;
};

} // namespace corvanta
