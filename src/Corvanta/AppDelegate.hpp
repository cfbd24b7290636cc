#pragma once

#include "Corvanta/ActivationSignals.hpp"
#include "Corvanta/LaunchDocuments.hpp"
#include "Platform/Log.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Subscription.hpp"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace corvanta {

/// Offers a blank document after the launch, and takes it back without a question when the user opens a file
/// shortly after: a double click in the file manager starts the program first and hands the file over later.
class AppDelegate {
public:
    static constexpr MainQueue::Duration offerDelay{300};
    static constexpr MainQueue::Duration gracePeriod{5000};

    /// All of them outlive the delegate. The program counts as started now.
    AppDelegate(LaunchDocuments& documents, ActivationSignals& activation, MainQueue& mainQueue, Log& log);

    void applicationDidFinishLaunching();

    /// Never: the offer alone decides about blank windows.
    static bool applicationShouldOpenUntitledFile() { return false; }

    /// The user turned to the running program, for example by its icon. Always true: the shell goes on as
    /// usual.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

private:
    /// When to look for an opened file after an offer was made.
    static constexpr std::array<MainQueue::Duration, 5> checksAfterOffer{
        MainQueue::Duration{0}, MainQueue::Duration{500}, MainQueue::Duration{1000},
        MainQueue::Duration{2000}, MainQueue::Duration{3500}};
    /// The file's window may come to the front before its document is complete.
    static constexpr MainQueue::Duration checkAfterActivation{400};

    void offerAnEmptyDocument();
    void openBlankDocument();
    void adoptBlankDocument();
    void watchForAnOpenedFile();
    void activated();
    void closeTheOfferIfAFileWasOpened();
    bool isUntouched(LaunchDocuments::Document document) const;
    void stopWatching();
    void checkAfter(MainQueue::Duration delay);

    LaunchDocuments& documents_;
    ActivationSignals& activation_;
    MainQueue& mainQueue_;
    Log& log_;
    MainQueue::Duration startedAt_;

    /// The blank document that was opened or adopted; it may have been closed since.
    std::optional<LaunchDocuments::Document> launchDocument_;
    std::vector<Subscription> openedFileObservers_;
    std::unique_ptr<MainQueue::Handle> offer_;
    /// By the time at which they are due.
    std::multimap<MainQueue::Duration, std::unique_ptr<MainQueue::Handle>> checks_;
};

} // namespace corvanta
