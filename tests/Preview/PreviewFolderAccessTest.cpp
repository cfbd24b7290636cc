#include "Preview/PreviewFolderAccess.hpp"

#include "InMemoryFolderBookmarks.hpp"
#include "RecordedFolderPanel.hpp"
#include "Support/InMemoryFileManager.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/RecordedLog.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta {
namespace {

using Folders = PreviewFolderAccess::Folders;
using Strings = std::vector<std::string>;

class PreviewFolderAccessTest : public testing::Test {
protected:
    PreviewFolderAccess access() { return PreviewFolderAccess(defaults, bookmarks, fileManager, log); }

    void grant(PreviewFolderAccess& access, const std::filesystem::path& folder) {
        panel.answer = folder;
        access.requestAccess(folder / "seite.html", panel);
    }

    std::optional<Strings> stored() const { return defaults.get<Strings>("previewFolderBookmarks"); }

    InMemoryUserDefaults defaults;
    InMemoryFolderBookmarks bookmarks;
    InMemoryFileManager fileManager;
    RecordedLog log;
    RecordedFolderPanel panel;
};

TEST_F(PreviewFolderAccessTest, GrantsTheChosenFolderAndKeepsABookmark) {
    PreviewFolderAccess grants = access();
    panel.answer = "/web";
    grants.requestAccess("/web/blog/index.html", panel);
    EXPECT_EQ(*grants.releasedFolders, Folders{"/web"});
    EXPECT_EQ(grants.releasedRoot("/web/blog/index.html"), "/web");
    EXPECT_EQ(stored(), Strings{"bookmark of /web"});
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(PreviewFolderAccessTest, AsksInTheDocumentsFolder) {
    PreviewFolderAccess grants = access();
    grants.requestAccess("/web/blog/index.html", panel);
    ASSERT_EQ(panel.questions.size(), 1U);
    EXPECT_EQ(panel.questions[0].folder, "/web/blog");
    EXPECT_EQ(panel.questions[0].prompt, "Freigeben");
    EXPECT_EQ(
        panel.questions[0].message,
        "Wähle den Ordner, der die Wurzel deiner Website ist. Die Vorschau liest daraus Bilder, "
        "Stylesheets, Skripte und Schriften. Pfade wie /bilder/kopf.jpg beziehen sich auf diesen Ordner.");
}

TEST_F(PreviewFolderAccessTest, DoesNothingWhenTheUserCancels) {
    PreviewFolderAccess grants = access();
    grants.requestAccess("/web/index.html", panel);
    EXPECT_TRUE(grants.releasedFolders->empty());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(PreviewFolderAccessTest, IgnoresAFolderThatDoesNotHoldTheDocument) {
    PreviewFolderAccess grants = access();
    for (const char* folder : {"/web/bilder", "/we", "/web/blog/index.html", "/web/blog/index.html/tiefer"}) {
        panel.answer = folder;
        grants.requestAccess("/web/blog/index.html", panel);
    }
    EXPECT_TRUE(grants.releasedFolders->empty());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(log.lines, Strings(4, "preview: released folder does not contain the document — ignored"));
}

TEST_F(PreviewFolderAccessTest, ResolvesLinksBeforeItCompares) {
    fileManager.links["/verweis"] = "/web";
    fileManager.links["/verweis/index.html"] = "/web/index.html";
    PreviewFolderAccess grants = access();
    panel.answer = "/verweis";
    grants.requestAccess("/verweis/index.html", panel);
    EXPECT_EQ(*grants.releasedFolders, Folders{"/web"});
    EXPECT_EQ(grants.releasedRoot("/web/index.html"), "/web");
}

TEST_F(PreviewFolderAccessTest, TakesTheDeepestFolder) {
    PreviewFolderAccess grants = access();
    grant(grants, "/web");
    grant(grants, "/web/blog");
    grant(grants, "/web/blog/alt");
    EXPECT_EQ(grants.releasedRoot("/web/blog/x.html"), "/web/blog");
    EXPECT_EQ(grants.releasedRoot("/web/x.html"), "/web");
    EXPECT_EQ(grants.releasedRoot("/web/blog"), "/web") << "a folder does not lie in itself";
    EXPECT_EQ(grants.releasedRoot("/webseiten/x.html"), std::nullopt);
}

TEST_F(PreviewFolderAccessTest, FallsBackToTheDocumentsFolder) {
    PreviewFolderAccess grants = access();
    EXPECT_EQ(grants.root("/web/blog/x.html"), "/web/blog");
    EXPECT_EQ(grants.releasedRoot("/web/blog/x.html"), std::nullopt);
    grant(grants, "/web");
    EXPECT_EQ(grants.root("/web/blog/x.html"), "/web");
    fileManager.unlistable.insert("/geheim");
    EXPECT_EQ(grants.root("/geheim/x.html"), std::nullopt);
}

TEST_F(PreviewFolderAccessTest, RestoresTheGrantsOfEarlierLaunchesInTheirOrder) {
    defaults.set("previewFolderBookmarks", Strings{"bookmark of /b", "bookmark of /a"});
    fileManager.links["/a"] = "/ziel";
    PreviewFolderAccess grants = access();
    EXPECT_EQ(*grants.releasedFolders, (Folders{"/b", "/ziel"}));
    EXPECT_EQ(stored(), (Strings{"bookmark of /b", "bookmark of /a"}));
}

TEST_F(PreviewFolderAccessTest, DropsABookmarkThatLeadsNowhere) {
    defaults.set("previewFolderBookmarks",
                 Strings{"bookmark of /b", "unsinn", "bookmark of /weg", "bookmark of /a"});
    bookmarks.lost.insert("/weg");
    PreviewFolderAccess grants = access();
    EXPECT_EQ(*grants.releasedFolders, (Folders{"/b", "/a"}));
    EXPECT_EQ(stored(), (Strings{"bookmark of /b", "bookmark of /a"}));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(PreviewFolderAccessTest, WritesNothingWhenAllBookmarksResolve) {
    int writes = 0;
    const Subscription observed = defaults.observe("previewFolderBookmarks", [&] { ++writes; });
    PreviewFolderAccess nothing = access();
    defaults.values["previewFolderBookmarks"] = Strings{"bookmark of /a"};
    PreviewFolderAccess one = access();
    EXPECT_EQ(writes, 0);
}

TEST_F(PreviewFolderAccessTest, TakesAValueOfAnotherTypeForNone) {
    defaults.set("previewFolderBookmarks", std::string("bookmark of /a"));
    EXPECT_TRUE(access().releasedFolders->empty());
}

TEST_F(PreviewFolderAccessTest, GrantsAFolderWithoutABookmarkForThisRunOnly) {
    bookmarks.lost.insert("/web");
    PreviewFolderAccess grants = access();
    grant(grants, "/web");
    EXPECT_EQ(*grants.releasedFolders, Folders{"/web"});
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(log.lines,
              Strings{"preview: folder released but no bookmark could be made — access ends with the app"});
}

TEST_F(PreviewFolderAccessTest, EndsAGrant) {
    bookmarks.lost.insert("/ohne");
    PreviewFolderAccess grants = access();
    for (const char* folder : {"/a", "/ohne", "/b"})
        grant(grants, folder);
    grants.release("/ohne");
    EXPECT_EQ(*grants.releasedFolders, (Folders{"/a", "/b"}));
    EXPECT_EQ(stored(), (Strings{"bookmark of /a", "bookmark of /b"}));
    grants.release("/a");
    EXPECT_EQ(*grants.releasedFolders, Folders{"/b"});
    EXPECT_EQ(stored(), Strings{"bookmark of /b"});
    EXPECT_EQ(grants.releasedRoot("/a/x.html"), std::nullopt);
    grants.release("/nie");
    EXPECT_EQ(stored(), Strings{"bookmark of /b"});
}

TEST_F(PreviewFolderAccessTest, PublishesEveryChange) {
    PreviewFolderAccess grants = access();
    std::vector<Folders> seen;
    const Subscription observed =
        grants.releasedFolders.subscribe([&](const Folders& folders) { seen.push_back(folders); });
    grant(grants, "/a");
    grants.release("/a");
    EXPECT_EQ(seen, (std::vector<Folders>{{"/a"}, {}}));
}

} // namespace
} // namespace corvanta
