#include "Preview/PreviewCoordinator.hpp"

#include "Preview/SharedMimeInfo.hpp"
#include "RecordedBridgeMessage.hpp"
#include "RecordedSchemeTask.hpp"
#include "RecordedWebView.hpp"
#include "Support/InMemoryFileManager.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/RecordedLog.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Calls = std::vector<std::string>;

constexpr const char* makeEditable = "run if (document.designMode !== 'on') { document.designMode = 'on'; }";

class PreviewCoordinatorTest : public testing::Test {
protected:
    void scrollTo(double x, double y) {
        coordinator.didReceive(RecordedBridgeMessage({{"kind", "scroll"}}, {{"x", x}, {"y", y}}));
    }

    void edit(const std::string& before, const std::string& after, double occurrence = 0, double total = 1) {
        coordinator.didReceive(RecordedBridgeMessage({{"kind", "text"}, {"before", before}, {"after", after}},
                                                     {{"occurrence", occurrence}, {"total", total}}));
    }

    /// The load on its way comes to its end.
    void finishLoad() {
        coordinator.didCommit();
        coordinator.didLayOut();
        coordinator.didFinish();
        queue.advance(250ms);
    }

    /// A page that is on the screen, nothing on its way.
    void showPage(const std::string& html) {
        coordinator.update(html, site);
        finishLoad();
        webView.calls.clear();
    }

    InMemoryFileManager fileManager;
    SharedMimeInfo typeRegistry{fileManager, {}};
    RecordedLog log;
    ManualMainQueue queue;
    RecordedWebView webView;
    PreviewSchemeHandler schemeHandler{fileManager,
                                       typeRegistry,
                                       log,
                                       std::nullopt,
                                       [] { return std::string(); },
                                       [](const std::string&) {}};
    Calls changes;
    PreviewCoordinator coordinator{webView, schemeHandler, queue, log,
                                   [this](const std::string& html) { changes.push_back(html); }};
    PreviewSite site{"/web", "index.html"};
    const Calls theLoad{"load vmpreview://dokument/index.html"};
};

TEST_F(PreviewCoordinatorTest, LoadsThePageOfTheSite) {
    coordinator.update("<p>", site);
    EXPECT_EQ(webView.calls, theLoad);
}

TEST_F(PreviewCoordinatorTest, LoadsThePlainTextWithoutASite) {
    coordinator.update("<p>", std::nullopt);
    EXPECT_EQ(webView.calls, Calls{"html <p>"});
}

TEST_F(PreviewCoordinatorTest, NeverReloadsAnUnchangedPage) {
    coordinator.update("<p>", site);
    coordinator.update("<p>", site);
    finishLoad();
    coordinator.update("<p>", site);
    EXPECT_EQ(std::ranges::count(webView.calls, theLoad.front()), 1);
}

TEST_F(PreviewCoordinatorTest, LoadsAnEmptyPageToo) {
    coordinator.update("", std::nullopt);
    EXPECT_EQ(webView.calls, Calls{"html "});
}

TEST_F(PreviewCoordinatorTest, ReloadsWhenTextOrSiteChange) {
    showPage("<p>");
    coordinator.update("<b>", site);
    EXPECT_EQ(webView.calls, theLoad);
    finishLoad();
    webView.calls.clear();
    coordinator.update("<b>", PreviewSite{"/", "web/index.html"});
    EXPECT_EQ(webView.calls, Calls{"load vmpreview://dokument/web/index.html"});
    finishLoad();
    webView.calls.clear();
    coordinator.update("<b>", std::nullopt);
    EXPECT_EQ(webView.calls, Calls{"html <b>"});
}

TEST_F(PreviewCoordinatorTest, ShowsAPageAsSoonAsItIsLaidOut) {
    coordinator.update("a", site);
    coordinator.didCommit();
    webView.calls.clear();
    coordinator.didLayOut();
    EXPECT_EQ(webView.calls, Calls{"reveal"});
}

TEST_F(PreviewCoordinatorTest, ShowsAFinishedPageThatIsNeverLaidOut) {
    coordinator.update("a", site);
    coordinator.didCommit();
    coordinator.didFinish();
    queue.advance(999ms);
    EXPECT_NE(webView.calls.back(), "reveal");
    queue.advance(1ms);
    EXPECT_EQ(webView.calls.back(), "reveal");
}

TEST_F(PreviewCoordinatorTest, TakesNothingFromThePageBeforeForTheNewOne) {
    showPage("a");
    coordinator.update("b", site);
    webView.calls.clear();
    coordinator.didLayOut();
    coordinator.didFinish();
    queue.advance(1s);
    EXPECT_TRUE(webView.calls.empty());
}

TEST_F(PreviewCoordinatorTest, MakesAFinishedPageEditable) {
    coordinator.update("a", site);
    coordinator.didCommit();
    webView.calls.clear();
    coordinator.didFinish();
    EXPECT_EQ(webView.calls, Calls{makeEditable});
}

TEST_F(PreviewCoordinatorTest, PutsTheReaderBackAtOnceAndOnceMoreForALateLayout) {
    showPage("a");
    scrollTo(0, 120.5);
    coordinator.update("b", site);
    EXPECT_EQ(webView.calls, Calls{"load vmpreview://dokument/index.html at 0 120.5"});
    coordinator.didCommit();
    coordinator.didLayOut();
    webView.calls.clear();
    coordinator.didFinish();
    EXPECT_EQ(webView.calls, (Calls{makeEditable, "run window.scrollTo(0, 120.5)"}));
    queue.advance(249ms);
    EXPECT_EQ(webView.calls.size(), 2U);
    queue.advance(1ms);
    EXPECT_EQ(webView.calls.back(),
              "run (function () {\n  if (window.scrollY === 0) { window.scrollTo(0, 120.5); }\n})()");
}

TEST_F(PreviewCoordinatorTest, LeavesAPageThatNobodyScrolledWhereItIs) {
    coordinator.update("a", site);
    finishLoad();
    for (const std::string& call : webView.calls)
        EXPECT_EQ(call.find("scrollTo"), std::string::npos) << call;
}

TEST_F(PreviewCoordinatorTest, DoesNotMoveThePageOfANewerLoadForAnOlderOne) {
    showPage("a");
    scrollTo(0, 10);
    coordinator.update("b", site);
    coordinator.didCommit();
    coordinator.didLayOut();
    coordinator.didFinish();
    coordinator.update("c", site);
    webView.calls.clear();
    queue.advance(1s);
    EXPECT_TRUE(webView.calls.empty());
}

TEST_F(PreviewCoordinatorTest, HearsWhereThePageBeforeWasScrolledLast) {
    showPage("a");
    scrollTo(0, 10);
    coordinator.update("b", site);
    scrollTo(0, 20);
    webView.calls.clear();
    coordinator.didCommit();
    coordinator.didFinish();
    EXPECT_EQ(webView.calls.back(), "run window.scrollTo(0, 20)");
}

TEST_F(PreviewCoordinatorTest, LoadsOnlyTheLatestOfTheTextsThatCameDuringALoad) {
    coordinator.update("a", site);
    coordinator.update("b", site);
    coordinator.didCommit();
    coordinator.update("c", site);
    coordinator.update("d", site);
    EXPECT_EQ(webView.calls, theLoad);
    webView.calls.clear();
    coordinator.didLayOut();
    EXPECT_EQ(webView.calls, Calls{"reveal"}) << "the page that is ready is to be seen first";
    queue.advance(50ms);
    EXPECT_EQ(webView.calls, (Calls{"reveal", theLoad.front()}));
    RecordedSchemeTask task("vmpreview://dokument/index.html");
    schemeHandler.start(task);
    EXPECT_EQ(task.answer.body, "d");
    finishLoad();
    EXPECT_EQ(std::ranges::count(webView.calls, theLoad.front()), 1);
}

TEST_F(PreviewCoordinatorTest, DoesNotWaitForEverForASlowPage) {
    coordinator.update("a", site);
    coordinator.didCommit();
    queue.advance(60s);
    EXPECT_EQ(webView.calls, theLoad);
    coordinator.update("b", site);
    queue.advance(2999ms);
    EXPECT_EQ(webView.calls.size(), 1U);
    queue.advance(1ms);
    EXPECT_EQ(webView.calls, (Calls{theLoad.front(), theLoad.front()}));
}

TEST_F(PreviewCoordinatorTest, EndsTheProcessOfAPageThatHangsWhenANewerTextComes) {
    coordinator.update("for (;;);", site);
    coordinator.didCommit();
    webView.hangs = true;
    queue.advance(60s);
    EXPECT_EQ(webView.calls, theLoad);
    coordinator.update("good", site);
    queue.advance(3s);
    EXPECT_EQ(webView.calls, (Calls{theLoad.front(), "end", theLoad.front()}));
}

TEST_F(PreviewCoordinatorTest, EndsTheProcessOfAPageThatBeganToHangLater) {
    showPage("setTimeout(() => { for (;;); }, 100)");
    webView.hangs = true;
    coordinator.update("good", site);
    queue.advance(2999ms);
    EXPECT_EQ(webView.calls, theLoad);
    queue.advance(1ms);
    EXPECT_EQ(webView.calls, (Calls{theLoad.front(), "end", theLoad.front()}));
}

TEST_F(PreviewCoordinatorTest, GoesOnAfterALoadThatCameToNothing) {
    coordinator.update("a", site);
    queue.advance(20s);
    webView.calls.clear();
    coordinator.update("b", site);
    EXPECT_EQ(webView.calls, theLoad);
}

TEST_F(PreviewCoordinatorTest, GivesAProcessThatIsStartingMoreTimeThanOneThatHangs) {
    webView.hangs = true;
    coordinator.update("a", site);
    queue.advance(19'999ms);
    EXPECT_EQ(webView.calls, theLoad);
    queue.advance(1ms);
    EXPECT_EQ(webView.calls, (Calls{theLoad.front(), "end", theLoad.front()}));
    queue.advance(19'999ms);
    EXPECT_EQ(webView.calls.size(), 3U);
}

TEST_F(PreviewCoordinatorTest, LoadsThePageAgainAfterItsProcessEnded) {
    showPage("a");
    coordinator.processDidTerminate();
    EXPECT_EQ(webView.calls, theLoad);
}

TEST_F(PreviewCoordinatorTest, LeavesAPageThatKeepsCrashingUntilItsTextChanges) {
    showPage("a");
    coordinator.processDidTerminate();
    queue.advance(1s);
    coordinator.processDidTerminate();
    EXPECT_EQ(webView.calls.size(), 2U);
    queue.advance(1s);
    coordinator.processDidTerminate();
    queue.advance(60s);
    EXPECT_EQ(webView.calls.size(), 2U);
    coordinator.update("a", site);
    EXPECT_EQ(webView.calls.size(), 2U);
    coordinator.update("b", site);
    EXPECT_EQ(webView.calls.size(), 3U);
}

TEST_F(PreviewCoordinatorTest, ForgetsCrashesThatAreLongAgo) {
    showPage("a");
    for (int i = 0; i < 10; ++i) {
        coordinator.processDidTerminate();
        finishLoad();
        queue.advance(5s);
    }
    EXPECT_EQ(std::ranges::count(webView.calls, theLoad.front()), 10);
}

TEST_F(PreviewCoordinatorTest, ReturnsFromWhereThePageLed) {
    showPage("a");
    coordinator.didLeave();
    EXPECT_EQ(webView.calls, theLoad);
}

TEST_F(PreviewCoordinatorTest, EndsAPageThatKeepsLeadingElsewhere) {
    showPage("a");
    for (int i = 0; i < 3; ++i)
        coordinator.didLeave();
    EXPECT_EQ(webView.calls, (Calls{theLoad.front(), theLoad.front(), "end"}));
}

TEST_F(PreviewCoordinatorTest, MergesAnEditAndDoesNotReloadForIt) {
    showPage("<h1>Titel</h1>");
    edit("Titel", "Titel neu");
    EXPECT_EQ(changes, Calls{"<h1>Titel neu</h1>"});
    EXPECT_EQ(log.lines, (Calls{"preview: edit arrived: node 5 → 9 chars, source 14 chars",
                                "preview: edit merged, handing 18 chars to the editor"}));
    coordinator.update("<h1>Titel neu</h1>", site);
    EXPECT_TRUE(webView.calls.empty());
}

TEST_F(PreviewCoordinatorTest, CountsCharactersInItsLogWhereverTheyStand) {
    for (std::size_t start = 0; start < 140; ++start) {
        const std::string ascii(start, 'a');
        coordinator.update(ascii + "u\u0308\r\n" + std::string(200, 'b') + "e\u0301", site);
        log.lines.clear();
        edit("fehlt", "fehlte");
        ASSERT_EQ(log.lines.front(), "preview: edit arrived: node 5 → 6 chars, source " +
                                         std::to_string(start + 203) + " chars");
    }
}

TEST_F(PreviewCoordinatorTest, LeavesTheSourceWhenAScriptMadeTheTextEvenIfItIsWrittenToo) {
    showPage("<h1>Titel</h1>");
    coordinator.didReceive(
        RecordedBridgeMessage({{"kind", "text"}, {"before", "Titel"}, {"after", "Titel neu"}},
                              {{"occurrence", 0}, {"total", 1}, {"unwritten", 1}}));
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(log.lines.back(), "preview: edit refused: text not locatable (occurrence 0 of 1)");
}

TEST_F(PreviewCoordinatorTest, CountsCharactersAsPeopleDo) {
    showPage("<p>ü👨‍👩‍👧</p>");
    edit("ü👨‍👩‍👧", "ü👨‍👩‍👧!");
    EXPECT_EQ(log.lines.front(), "preview: edit arrived: node 2 → 3 chars, source 9 chars");
}

TEST_F(PreviewCoordinatorTest, MergesTheNextEditIntoTheResultOfTheLast) {
    showPage("<p>a</p>");
    edit("a", "ab");
    edit("ab", "abc");
    EXPECT_EQ(changes, (Calls{"<p>ab</p>", "<p>abc</p>"}));
}

TEST_F(PreviewCoordinatorTest, LeavesTheSourceWhenTheTextCannotBeFound) {
    showPage("<p>a</p><p>a</p>");
    edit("a", "ab", 0, 3);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(log.lines.back(), "preview: edit refused: text not locatable (occurrence 0 of 3)");
    coordinator.update("<p>a</p><p>a</p>", site);
    EXPECT_TRUE(webView.calls.empty());
}

TEST_F(PreviewCoordinatorTest, ReloadsForAnEditThatTheNewPageCannotKnow) {
    showPage("<p>a</p>");
    coordinator.update("<p>a</p><p>neu</p>", site);
    edit("a", "ab");
    EXPECT_EQ(changes, Calls{"<p>ab</p><p>neu</p>"});
    finishLoad();
    EXPECT_EQ(std::ranges::count(webView.calls, theLoad.front()), 2);
}

TEST_F(PreviewCoordinatorTest, RefusesAnEditBeforeThereIsASource) {
    edit("a", "b");
    EXPECT_EQ(log.lines, Calls{"preview: edit arrived but no source is held — edit dropped"});
}

TEST_F(PreviewCoordinatorTest, LogsAnIncompleteEdit) {
    showPage("<p>a</p>");
    const std::map<std::string, std::string> texts{{"kind", "text"}, {"before", "a"}, {"after", "b"}};
    coordinator.didReceive(RecordedBridgeMessage(texts, {{"occurrence", 0}}));
    coordinator.didReceive(RecordedBridgeMessage(texts, {{"total", 1}}));
    coordinator.didReceive(
        RecordedBridgeMessage({{"kind", "text"}, {"after", "b"}}, {{"occurrence", 0}, {"total", 1}}));
    coordinator.didReceive(
        RecordedBridgeMessage({{"kind", "text"}, {"before", "a"}}, {{"occurrence", 0}, {"total", 1}}));
    edit("a", "b", 0.5, 1);
    edit("a", "b", 0, 1e300);
    edit("a", "b", std::numeric_limits<double>::quiet_NaN(), 1);
    EXPECT_EQ(log.lines, Calls(7, "preview: edit message incomplete"));
    EXPECT_TRUE(changes.empty());
}

TEST_F(PreviewCoordinatorTest, LogsAMessageThatItDoesNotUnderstand) {
    coordinator.didReceive(RecordedBridgeMessage());
    coordinator.didReceive(RecordedBridgeMessage({{"kind", "other"}}, {}));
    coordinator.didReceive(RecordedBridgeMessage({{"kind", "scroll"}}, {{"x", 1}}));
    scrollTo(0, std::numeric_limits<double>::infinity());
    EXPECT_EQ(log.lines, Calls(4, "preview: bridge message not understood"));
}

TEST_F(PreviewCoordinatorTest, StandsAHugeText) {
    showPage("<p>a</p>");
    const std::string huge(10'000'000, 'x');
    edit("a", huge);
    EXPECT_EQ(changes, Calls{"<p>" + huge + "</p>"});
}

TEST_F(PreviewCoordinatorTest, StandsAFlood) {
    showPage("<p>a</p>");
    for (int i = 0; i < 10'000; ++i)
        edit("nirgends", "b");
    EXPECT_TRUE(changes.empty());
}

} // namespace
} // namespace corvanta
