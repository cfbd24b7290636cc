#include "Preview/PosixFolderBookmarks.hpp"

#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace corvanta {
namespace {

class PosixFolderBookmarksTest : public testing::Test {
protected:
    std::filesystem::path makeFolder(const std::string& name) const {
        std::filesystem::create_directory(folder / name);
        return folder / name;
    }

    TemporaryFolder folder;
    PosixFolderBookmarks bookmarks;
};

TEST_F(PosixFolderBookmarksTest, LeadsToAFolderOfAnyName) {
    for (const char* name : {"web", "größe & co: 100%", "\xff\xfe kein UTF-8", " \n"}) {
        const std::filesystem::path site = makeFolder(name);
        const std::optional<std::string> bookmark = bookmarks.make(site);
        ASSERT_TRUE(bookmark) << name;
        EXPECT_TRUE(std::ranges::all_of(*bookmark, [](char c) { return c > ' ' && c < 127; })) << *bookmark;
        EXPECT_EQ(bookmarks.resolve(*bookmark), site);
    }
}

TEST_F(PosixFolderBookmarksTest, FindsARenamedFolder) {
    const std::filesystem::path site = makeFolder("alt");
    const std::string bookmark = bookmarks.make(site).value();
    std::filesystem::rename(site, folder / "neu");
    std::filesystem::create_directory_symlink("neu", folder / "verweis");
    EXPECT_EQ(bookmarks.resolve(bookmark), folder / "neu");
}

TEST_F(PosixFolderBookmarksTest, FindsAFolderThatWasRestoredUnderItsPath) {
    const std::filesystem::path site = makeFolder("web");
    const std::string bookmark = bookmarks.make(site).value();
    std::filesystem::rename(site, folder / "sicherung");
    makeFolder("web");
    EXPECT_EQ(bookmarks.resolve(bookmark), site);
}

TEST_F(PosixFolderBookmarksTest, DoesNotFindAFolderThatIsGone) {
    const std::filesystem::path site = makeFolder("web");
    const std::string bookmark = bookmarks.make(site).value();
    std::filesystem::remove(site);
    EXPECT_EQ(bookmarks.resolve(bookmark), std::nullopt);
    folder.write("web", "eine Datei");
    EXPECT_EQ(bookmarks.resolve(bookmark), std::nullopt);
}

TEST_F(PosixFolderBookmarksTest, MakesNoBookmarkOfWhatIsNoFolder) {
    folder.write("datei", "");
    EXPECT_EQ(bookmarks.make(folder / "datei"), std::nullopt);
    EXPECT_EQ(bookmarks.make(folder / "fehlt"), std::nullopt);
    EXPECT_EQ(bookmarks.make("."), std::nullopt);
}

TEST_F(PosixFolderBookmarksTest, ResolvesNoTextOfAnotherKind) {
    for (const char* text : {"", "1", "1:", "1:2", "1:2:", "1:2:tmp", "x:2:/tmp", "1:x:/tmp", ":/tmp", "/tmp",
                             "-1:2:/tmp", "1:2:/tmp%00", "1:2:%zz", "99999999999999999999999:2:/tmp"})
        EXPECT_EQ(bookmarks.resolve(text), std::nullopt) << text;
}

} // namespace
} // namespace corvanta
