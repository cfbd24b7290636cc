#pragma once

#include "Platform/Log.hpp"
#include "Platform/MainQueue.hpp"
#include "Preview/BridgeMessage.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/PreviewSite.hpp"
#include "Preview/ScrollOffset.hpp"
#include "Preview/WebView.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Shows a document's source in a web view: loads the page when the source or the site changed, puts a reader
/// who had scrolled back to where they were, and merges what the user types into the page into the source.
///
/// There is never more than one load on its way. A text that comes meanwhile waits until the page has been
/// laid out, and only the latest one is loaded then, so that a page slower than the typing is shown now and
/// then instead of never.
class PreviewCoordinator {
public:
    /// Called with the whole new source (UTF-8) after an edit in the page.
    using HTMLChange = std::function<void(const std::string& html)>;

    /// How long a page may keep a newer text waiting, and how long its process may stay silent before it
    /// counts as hanging.
    static constexpr MainQueue::Duration patience{3000};

    /// The same for a process that has shown no page yet: beside much other work it takes long to start.
    static constexpr MainQueue::Duration patienceAtStart{20'000};

    /// A page that was lost `crashesAtMost` times within `crashWindow`, because its process ended or because
    /// it led elsewhere, is left alone until its text changes.
    static constexpr std::size_t crashesAtMost = 3;
    static constexpr MainQueue::Duration crashWindow{10'000};

    /// Everything handed in outlives the coordinator.
    PreviewCoordinator(WebView& webView, PreviewSchemeHandler& schemeHandler, MainQueue& mainQueue, Log& log,
                       HTMLChange onHTMLChange);

    /// Shows `html` as the page of `site`. An unchanged page is not loaded again.
    void update(const std::string& html, const std::optional<PreviewSite>& site);

    /// To be called when the page script says something.
    void didReceive(const BridgeMessage& message);

    /// To be called when a load reached the page's process: from now on the page is the new one.
    void didCommit();

    /// To be called when the page script says that the page is laid out and at its place.
    void didLayOut();

    /// To be called when a page has finished loading.
    void didFinish();

    /// To be called when the page led the view to another page.
    void didLeave();

    /// To be called when the page's process ended by itself.
    void processDidTerminate();

    /// Whether no load is on its way: the page that is shown is the newest that will be shown.
    bool isSettled() const { return loading_ == Loading::nothing && !nextLoad_; }

    /// Where the reader was when the page last said so.
    const std::optional<ScrollOffset>& lastReportedScroll() const { return lastReportedScroll_; }

private:
    /// What the web view is doing. The page of a load that was only requested has not begun: everything that
    /// is heard until then comes from the page before.
    enum class Loading { nothing, requested, committed };

    void load();
    void loadNewestText();
    void watch();
    void loadIsStuck();
    void settle();
    void forgetLoad();
    void endProcess();
    bool isHopeless();
    void restoreScroll(const ScrollOffset& offset);
    void scrolled(const BridgeMessage& message);
    void edited(const BridgeMessage& message);

    WebView& webView_;
    PreviewSchemeHandler& schemeHandler_;
    MainQueue& mainQueue_;
    Log& log_;
    HTMLChange onHTMLChange_;

    /// The source last loaded or merged.
    std::optional<std::string> lastHTML_;
    /// The source that edits are merged into.
    std::optional<std::string> authoredSource_;
    std::optional<ScrollOffset> lastReportedScroll_;
    /// The offset to put back after the next load.
    std::optional<ScrollOffset> scrollToRestore_;
    std::unique_ptr<MainQueue::Handle> secondScroll_;
    /// Shows a finished page even if it never says that it is laid out.
    std::unique_ptr<MainQueue::Handle> lateReveal_;

    Loading loading_ = Loading::nothing;
    /// Whether the load on its way does not bring the newest text.
    bool isOutdated_ = false;
    std::unique_ptr<MainQueue::Handle> watch_;
    /// The load of a text that waited.
    std::unique_ptr<MainQueue::Handle> nextLoad_;
    /// Whether the page's process has answered since the watch began; shared with the question, which may be
    /// answered after this object is gone.
    std::shared_ptr<bool> answered_;

    /// No page has come from the page's process since it was started.
    bool isStarting_ = true;
    std::vector<MainQueue::Duration> crashes_;
};

} // namespace corvanta
