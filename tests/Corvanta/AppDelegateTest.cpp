#include "Corvanta/AppDelegate.hpp"

#include "EditorCore/DocumentTemplate.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/RecordedLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Documents without windows, in the order they were opened.
class OpenDocumentList final : public LaunchDocuments {
public:
    Document openFile() { return add({.isFile = true, .text = "<p>"}); }
    Document openUntitled(std::string text = std::string(DocumentTemplate::newHTML)) {
        return add({.isFile = false, .text = std::move(text)});
    }
    void type(Document document, const std::string& text) { *find(document)->text += text; }

    std::vector<Document> documents() const override {
        std::vector<Document> names;
        for (const Entry& entry : entries_)
            names.push_back(entry.name);
        return names;
    }

    bool hasFileLocation(Document document) const override { return find(document)->isFile; }

    bool shows(Document document, std::string_view text) const override {
        return find(document)->text && *find(document)->text == text;
    }

    std::optional<Document> openUntitledDocumentAndDisplay() override {
        return opensDocuments ? std::optional(openUntitled()) : std::nullopt;
    }

    void close(Document document) override {
        entries_.erase(entries_.begin() + (find(document) - entries_.data()));
        if (whenClosed)
            whenClosed();
    }

    void hideText(Document document) { find(document)->text.reset(); }

    bool opensDocuments = true;
    std::function<void()> whenClosed;

private:
    struct Entry {
        Document name = 0;
        bool isFile = false;
        std::optional<std::string> text;
    };

    Document add(Entry entry) {
        entry.name = next_++;
        entries_.push_back(std::move(entry));
        return entries_.back().name;
    }

    const Entry* find(Document document) const {
        return &*std::ranges::find(entries_, document, &Entry::name);
    }
    Entry* find(Document document) { return &*std::ranges::find(entries_, document, &Entry::name); }

    Document next_ = 1;
    std::vector<Entry> entries_;
};

class AppDelegateTest : public ::testing::Test {
protected:
    void launch() {
        delegate.applicationDidFinishLaunching();
        queue.advance(300ms);
    }

    std::size_t openCount() const { return documents.documents().size(); }

    OpenDocumentList documents;
    ActivationSignals activation;
    ManualMainQueue queue;
    RecordedLog log;
    AppDelegate delegate{documents, activation, queue, log};
};

constexpr const char* opened = "documents: no window at launch — opened a blank one";
constexpr const char* adopted = "documents: adopted the blank window opened at launch";
constexpr const char* closedOne = "documents: file opened — closing 1 untouched empty window(s)";

TEST_F(AppDelegateTest, LeavesBlankWindowsToTheOffer) {
    EXPECT_FALSE(AppDelegate::applicationShouldOpenUntitledFile());
}

TEST_F(AppDelegateTest, OffersABlankDocumentThreeTenthsOfASecondAfterTheLaunch) {
    delegate.applicationDidFinishLaunching();
    queue.advance(299ms);
    EXPECT_EQ(openCount(), 0U);
    queue.advance(1ms);
    EXPECT_EQ(openCount(), 1U);
    EXPECT_THAT(log.lines, ElementsAre(opened));
}

TEST_F(AppDelegateTest, OffersNothingOnceItIsGone) {
    {
        AppDelegate shortLived(documents, activation, queue, log);
        shortLived.applicationDidFinishLaunching();
    }
    queue.advance(1s);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(AppDelegateTest, SaysThatItOpenedOneEvenWhenThatFails) {
    documents.opensDocuments = false;
    launch();
    EXPECT_EQ(openCount(), 0U);
    EXPECT_THAT(log.lines, ElementsAre(opened));
}

TEST_F(AppDelegateTest, OpensNoSecondDocumentBesideAFile) {
    documents.openFile();
    launch();
    queue.advance(10s);
    EXPECT_EQ(openCount(), 1U);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(AppDelegateTest, AdoptsARestoredBlankWindow) {
    documents.openUntitled("typed");
    const auto blank = documents.openUntitled();
    launch();
    EXPECT_EQ(openCount(), 2U);
    EXPECT_THAT(log.lines, ElementsAre(adopted));

    queue.advance(10s);
    documents.openFile();
    activation.windowDidBecomeKey.emit();
    EXPECT_THAT(documents.documents(), ::testing::Not(::testing::Contains(blank)));
}

TEST_F(AppDelegateTest, AdoptsNoFileThatHoldsTheTemplate) {
    const auto file = documents.openFile();
    documents.type(file, "x");
    launch();
    EXPECT_THAT(log.lines, IsEmpty());
}

class ChecksAfterTheOffer : public AppDelegateTest,
                            public ::testing::WithParamInterface<std::chrono::milliseconds> {};

TEST_P(ChecksAfterTheOffer, CloseItWhenAFileWasOpenedJustBefore) {
    launch();
    const auto before = GetParam() - 1ms;
    if (before > 0ms)
        queue.advance(before);
    documents.openFile();
    EXPECT_EQ(openCount(), 2U);
    queue.advance(1ms);
    EXPECT_EQ(openCount(), 1U);
    EXPECT_THAT(log.lines, ElementsAre(opened, closedOne));
}

INSTANTIATE_TEST_SUITE_P(Times, ChecksAfterTheOffer, ::testing::Values(500ms, 1000ms, 2000ms, 3500ms));

TEST_F(AppDelegateTest, ChecksOnceRightAfterTheOffer) {
    // The file's document comes into being in the same moment as the offer.
    delegate.applicationDidFinishLaunching();
    const auto handle = queue.after(300ms, [this] { documents.openFile(); });
    queue.advance(300ms);
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, ChecksNoMoreAfterTheLastOne) {
    launch();
    queue.advance(3501ms);
    documents.openFile();
    queue.advance(60s);
    EXPECT_EQ(openCount(), 2U);
}

TEST_F(AppDelegateTest, ClosesTheOfferWhenTheFilesWindowComesToTheFront) {
    for (auto* signal : {&activation.windowDidBecomeMain, &activation.windowDidBecomeKey,
                         &activation.applicationDidBecomeActive}) {
        OpenDocumentList list;
        AppDelegate each(list, activation, queue, log);
        each.applicationDidFinishLaunching();
        queue.advance(4s);
        list.openFile();
        signal->emit();
        EXPECT_EQ(list.documents().size(), 1U);
    }
}

TEST_F(AppDelegateTest, LooksAgainShortlyAfterAnActivation) {
    launch();
    queue.advance(4s);
    activation.windowDidBecomeKey.emit();
    queue.advance(399ms);
    documents.openFile();
    EXPECT_EQ(openCount(), 2U);
    queue.advance(1ms);
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, KeepsADocumentThatTheUserTypedInto) {
    launch();
    documents.type(documents.documents().front(), "x");
    documents.openFile();
    queue.advance(10s);
    EXPECT_EQ(openCount(), 2U);
    EXPECT_THAT(log.lines, ElementsAre(opened));
}

TEST_F(AppDelegateTest, KeepsADocumentWithoutATextView) {
    launch();
    documents.hideText(documents.documents().front());
    documents.openFile();
    queue.advance(10s);
    EXPECT_EQ(openCount(), 2U);
}

TEST_F(AppDelegateTest, ClosesEveryBlankWindowInTheFirstFiveSeconds) {
    launch();
    documents.openUntitled();
    queue.advance(4699ms); // 4999 ms since the start
    const auto file = documents.openFile();
    activation.windowDidBecomeMain.emit();
    EXPECT_THAT(documents.documents(), ElementsAre(file));
    EXPECT_EQ(log.lines.back(), "documents: file opened — closing 2 untouched empty window(s)");
}

TEST_F(AppDelegateTest, ClosesOnlyItsOwnOfferFromTheFifthSecondOn) {
    launch();
    const auto other = documents.openUntitled();
    queue.advance(4700ms); // 5000 ms since the start
    const auto file = documents.openFile();
    activation.windowDidBecomeMain.emit();
    EXPECT_THAT(documents.documents(), ElementsAre(other, file));
    EXPECT_EQ(log.lines.back(), closedOne);
}

TEST_F(AppDelegateTest, StopsWatchingOnceItClosedTheOffer) {
    launch();
    documents.openFile();
    queue.advance(500ms);
    queue.advance(10s);
    documents.openUntitled();
    activation.windowDidBecomeKey.emit();
    queue.advance(1s);
    EXPECT_EQ(openCount(), 2U);
}

TEST_F(AppDelegateTest, ChecksThatWereScheduledStillCloseABlankWindowThatQualifies) {
    launch();
    documents.openFile();
    queue.advance(500ms);
    EXPECT_EQ(openCount(), 1U);
    documents.openUntitled();
    queue.advance(500ms); // the check one second after the offer
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, KeepsWatchingWhileNoFileIsOpen) {
    launch();
    queue.advance(60s);
    activation.windowDidBecomeKey.emit();
    EXPECT_EQ(openCount(), 1U);
    documents.openFile();
    activation.windowDidBecomeKey.emit();
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, MindsNoActivationThatItCausesItself) {
    documents.whenClosed = [this] { activation.windowDidBecomeKey.emit(); };
    launch();
    documents.openUntitled();
    documents.openFile();
    queue.advance(10s);
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, OffersADocumentWhenTheUserComesBackAndNoneIsOpen) {
    launch();
    documents.close(documents.documents().front());
    queue.advance(60s);
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
    EXPECT_EQ(openCount(), 1U);
    EXPECT_THAT(log.lines, ElementsAre(opened, opened));

    // Far beyond the first seconds, only this very offer is taken back.
    const auto other = documents.openUntitled();
    const auto file = documents.openFile();
    queue.advance(500ms);
    EXPECT_THAT(documents.documents(), ElementsAre(other, file));
}

TEST_F(AppDelegateTest, OffersNothingWhenDocumentsAreOpenInHiddenWindows) {
    launch();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
    EXPECT_EQ(openCount(), 1U);
}

TEST_F(AppDelegateTest, OffersNothingWhenAWindowIsVisible) {
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(AppDelegateTest, HoldsNoMoreThanTheChecksThatAreStillToCome) {
    launch();
    for (int i = 0; i < 1000; ++i) {
        queue.advance(1s);
        activation.windowDidBecomeKey.emit();
    }
    EXPECT_LE(queue.pendingCount(), 2U);
}

} // namespace
} // namespace corvanta
