#include "Preview/PreviewPane.hpp"

#include "InMemoryFolderBookmarks.hpp"
#include "RecordedFolderPanel.hpp"
#include "Support/InMemoryFileManager.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/RecordedLog.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

using Obstacle = PreviewPane::Obstacle;

class PreviewPaneTest : public testing::Test {
protected:
    void grant(const std::filesystem::path& folder, const std::filesystem::path& document) {
        panel.answer = folder;
        access.requestAccess(document, panel);
    }

    InMemoryUserDefaults defaults;
    InMemoryFolderBookmarks bookmarks;
    InMemoryFileManager fileManager;
    RecordedLog log;
    RecordedFolderPanel panel;
    PreviewFolderAccess access{defaults, bookmarks, fileManager, log};
    PreviewPane pane{access, fileManager};
    const std::string linking = "<img src=bild.png>";
};

TEST_F(PreviewPaneTest, HasNoSiteForAnUnsavedDocument) {
    pane.update(linking, std::nullopt);
    EXPECT_EQ(pane.site(), std::nullopt);
    EXPECT_EQ(pane.obstacle(), Obstacle::unsaved);
}

TEST_F(PreviewPaneTest, SeesNoObstacleForAPageThatLinksNothingLocal) {
    pane.update("<img src='https://example.org/x.png'>", std::nullopt);
    EXPECT_EQ(pane.obstacle(), std::nullopt);
    pane.update("<p>", "/web/index.html");
    EXPECT_EQ(pane.obstacle(), std::nullopt);
}

TEST_F(PreviewPaneTest, TakesTheDocumentsFolderButStillAsksForAGrant) {
    pane.update(linking, "/web/index.html");
    EXPECT_EQ(pane.site(), (PreviewSite{"/web", "index.html"}));
    EXPECT_EQ(pane.obstacle(), Obstacle::needsFolder);
}

TEST_F(PreviewPaneTest, HasNoSiteWhenTheDocumentsFolderIsClosed) {
    fileManager.unlistable.insert("/home/me");
    pane.update(linking, "/home/me/index.html");
    EXPECT_EQ(pane.site(), std::nullopt);
    EXPECT_EQ(pane.obstacle(), Obstacle::needsFolder);
}

TEST_F(PreviewPaneTest, FollowsGrantsAtOnce) {
    pane.update(linking, "/web/blog/index.html");
    int changes = 0;
    const Subscription observed = pane.subscribe([&] { ++changes; });
    grant("/web", "/web/blog/index.html");
    EXPECT_EQ(pane.site(), (PreviewSite{"/web", "blog/index.html"}));
    EXPECT_EQ(pane.obstacle(), std::nullopt);
    EXPECT_EQ(changes, 1);
    access.release("/web");
    EXPECT_EQ(pane.site(), (PreviewSite{"/web/blog", "index.html"}));
    EXPECT_EQ(pane.obstacle(), Obstacle::needsFolder);
    EXPECT_EQ(changes, 2);
}

TEST_F(PreviewPaneTest, NamesTheFirstMissingFileUntilTheSiteChanges) {
    pane.update(linking, "/web/blog/index.html");
    EXPECT_EQ(pane.missingResourceLine(), std::nullopt);
    pane.reportMissing("bild.png");
    pane.reportMissing("stil.css");
    EXPECT_EQ(pane.missingResource(), "bild.png");
    EXPECT_EQ(pane.missingResourceLine(), "Nicht gefunden: bild.png");
    pane.update(linking + "<p>", "/web/blog/index.html");
    EXPECT_EQ(pane.missingResource(), "bild.png");
    grant("/web", "/web/blog/index.html");
    EXPECT_EQ(pane.missingResource(), std::nullopt);
    pane.reportMissing("stil.css");
    EXPECT_EQ(pane.missingResource(), "stil.css");
    pane.update(linking, std::nullopt);
    EXPECT_EQ(pane.missingResource(), std::nullopt);
}

TEST_F(PreviewPaneTest, KeepsTheNoteWhenAGrantChangesNothingForThisDocument) {
    pane.update(linking, "/web/index.html");
    pane.reportMissing("bild.png");
    grant("/anderes", "/anderes/index.html");
    EXPECT_EQ(pane.missingResource(), "bild.png");
}

TEST_F(PreviewPaneTest, TellsOfEachChange) {
    int changes = 0;
    const Subscription observed = pane.subscribe([&] { ++changes; });
    pane.update(linking, "/web/index.html");
    pane.reportMissing("a");
    pane.reportMissing("b");
    EXPECT_EQ(changes, 2);
}

TEST_F(PreviewPaneTest, WritesThePathOfAMissingFileAsItIs) {
    pane.update(linking, "/web/index.html");
    pane.reportMissing("100%@ %s.png");
    EXPECT_EQ(pane.missingResourceLine(), "Nicht gefunden: 100%@ %s.png");
}

TEST_F(PreviewPaneTest, SaysWhatStandsInTheWay) {
    EXPECT_EQ(PreviewPane::hint(Obstacle::unsaved),
              "Verknüpfte Bilder und Stylesheets erscheinen, sobald die Datei gesichert ist.");
    EXPECT_EQ(PreviewPane::hint(Obstacle::needsFolder),
              "Für verknüpfte Bilder und CSS-Dateien braucht die Vorschau Zugriff auf den Projektordner.");
}

} // namespace
} // namespace corvanta
