#pragma once

#include "Settings/AppSettings.hpp"
#include "Settings/UpdateCheck.hpp"

namespace corvanta {

/// What the about window knows beside its fixed texts; lives for the whole run, however often the window is
/// opened.
class AboutModel {
public:
    /// All of them outlive this object.
    AboutModel(HttpFetch& fetch, Log& log, const AppSettings& settings)
        : update(fetch, log), settings_(settings) {}

    UpdateCheck update;

    /// The window is shown: looks for an update if the user wants that, once in a run.
    void didAppear() {
        if (!*settings_.checkForUpdatesAtLaunch || hasCheckedAutomatically_)
            return;
        hasCheckedAutomatically_ = true;
        update.check();
    }

private:
    const AppSettings& settings_;
    bool hasCheckedAutomatically_ = false;
};

} // namespace corvanta
