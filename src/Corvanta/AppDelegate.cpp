#include "Corvanta/AppDelegate.hpp"

#include "EditorCore/DocumentTemplate.hpp"

#include <algorithm>

namespace corvanta {

namespace {

constexpr std::string_view category = "documents";

} // namespace

AppDelegate::AppDelegate(LaunchDocuments& documents, ActivationSignals& activation, MainQueue& mainQueue,
                         Log& log)
    : documents_(documents),
      activation_(activation),
      mainQueue_(mainQueue),
      log_(log),
      startedAt_(mainQueue.now()) {}

void AppDelegate::applicationDidFinishLaunching() {
    offer_ = mainQueue_.after(offerDelay, [this] { offerAnEmptyDocument(); });
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (!hasVisibleWindows && documents_.documents().empty())
        offerAnEmptyDocument();
    return true;
}

void AppDelegate::offerAnEmptyDocument() {
    if (documents_.documents().empty())
        openBlankDocument();
    else
        adoptBlankDocument();
    watchForAnOpenedFile();
}

void AppDelegate::openBlankDocument() {
    launchDocument_ = documents_.openUntitledDocumentAndDisplay();
    log_.info(category, "no window at launch — opened a blank one");
}

void AppDelegate::adoptBlankDocument() {
    const auto open = documents_.documents();
    const auto blank = std::ranges::find_if(open, [this](auto document) {
        return !documents_.hasFileLocation(document) && isUntouched(document);
    });
    if (blank == open.end())
        return;
    launchDocument_ = *blank;
    log_.info(category, "adopted the blank window opened at launch");
}

void AppDelegate::watchForAnOpenedFile() {
    for (const MainQueue::Duration delay : checksAfterOffer)
        checkAfter(delay);
    for (auto* signal : {&activation_.windowDidBecomeMain, &activation_.windowDidBecomeKey,
                         &activation_.applicationDidBecomeActive})
        openedFileObservers_.emplace_back(signal->connect([this] { activated(); }));
}

void AppDelegate::activated() {
    closeTheOfferIfAFileWasOpened();
    checkAfter(checkAfterActivation);
}

void AppDelegate::closeTheOfferIfAFileWasOpened() {
    const auto open = documents_.documents();
    if (std::ranges::none_of(open, [this](auto document) { return documents_.hasFileLocation(document); }))
        return;

    const bool isWithinGracePeriod = mainQueue_.now() - startedAt_ < gracePeriod;
    std::vector<LaunchDocuments::Document> untouched;
    for (const auto document : open) {
        if (!documents_.hasFileLocation(document) && isUntouched(document) &&
            (isWithinGracePeriod || document == launchDocument_))
            untouched.push_back(document);
    }
    if (untouched.empty())
        return;

    log_.info(category, "file opened — closing {} untouched empty window(s)", untouched.size());
    // First, because a window that closes brings another one to the front.
    stopWatching();
    launchDocument_.reset();
    for (const auto document : untouched)
        documents_.close(document);
}

bool AppDelegate::isUntouched(LaunchDocuments::Document document) const {
    return documents_.shows(document, DocumentTemplate::newHTML);
}

void AppDelegate::stopWatching() {
    openedFileObservers_.clear();
}

void AppDelegate::checkAfter(MainQueue::Duration delay) {
    const MainQueue::Duration now = mainQueue_.now();
    // What was due before now has run, or is made up for by the check that was just made or is asked for
    // here.
    checks_.erase(checks_.begin(), checks_.lower_bound(now));
    checks_.emplace(now + delay, mainQueue_.after(delay, [this] { closeTheOfferIfAFileWasOpened(); }));
}

} // namespace corvanta
