#include "Preview/PreviewFileManager.hpp"

#include "Support/InMemoryFileManager.hpp"

#include <gtest/gtest.h>

namespace corvanta {

TEST(PreviewFileManager, NeverListsTheHomeFolderNorAnythingAboveIt) {
    const InMemoryFileManager files;
    const PreviewFileManager manager(files, "/home/anna");
    for (const char* folder : {"/home/anna", "/home/anna/", "/home/anna/web/..", "/home", "/", "/.."})
        EXPECT_FALSE(manager.isListable(folder)) << folder;
}

TEST(PreviewFileManager, ListsOtherFoldersWhenTheFileSystemDoes) {
    InMemoryFileManager files;
    files.unlistable.insert("/home/anna/zu");
    const PreviewFileManager manager(files, "/home/anna");
    for (const char* folder : {"/home/anna/web", "/home/annabell", "/home/bert", "/srv/www"})
        EXPECT_TRUE(manager.isListable(folder)) << folder;
    EXPECT_FALSE(manager.isListable("/home/anna/zu"));
}

TEST(PreviewFileManager, GivesTheContentsOfTheFoldersThatItLists) {
    InMemoryFileManager files;
    files.files["/home/anna/privat.txt"] = "x";
    files.files["/home/anna/web/a.css"] = "x";
    const PreviewFileManager manager(files, "/home/anna");
    EXPECT_EQ(manager.contentsOfFolder("/home/anna"), std::nullopt);
    EXPECT_EQ(manager.contentsOfFolder("/home/anna/web"),
              std::vector<std::filesystem::path>{"/home/anna/web/a.css"});
}

TEST(PreviewFileManager, SeesThroughLinks) {
    InMemoryFileManager files;
    files.links["/home/anna"] = "/data/users/anna";
    files.links["/home/anna/desk"] = "/data/users/anna";
    files.links["/home/anna/web"] = "/data/users/anna/web";
    const PreviewFileManager manager(files, "/home/anna/");
    EXPECT_FALSE(manager.isListable("/home/anna"));
    EXPECT_FALSE(manager.isListable("/home/anna/desk"));
    EXPECT_FALSE(manager.isListable("/data/users"));
    EXPECT_TRUE(manager.isListable("/home/anna/web"));
}

TEST(PreviewFileManager, NeverListsTheFileSystemsRootWhereverHomeIs) {
    const InMemoryFileManager files;
    EXPECT_FALSE(PreviewFileManager(files, "/").isListable("/"));
    EXPECT_FALSE(PreviewFileManager(files, "").isListable("/"));
    EXPECT_TRUE(PreviewFileManager(files, "").isListable("/srv/www"));
    EXPECT_TRUE(PreviewFileManager(files, "/").isListable("/srv/www"));
}

TEST(PreviewFileManager, ReadsFilesAndFollowsLinksAsTheFileSystemDoes) {
    InMemoryFileManager files;
    files.files["/home/anna/a.css"] = "a { }";
    files.links["/link"] = "/web";
    const PreviewFileManager manager(files, "/home/anna");
    std::error_code error;
    EXPECT_EQ(manager.contents("/home/anna/a.css", error), "a { }");
    EXPECT_EQ(manager.contents("/home/anna/b.css", error), std::nullopt);
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    EXPECT_EQ(manager.fileSize("/home/anna/a.css"), 5U);
    EXPECT_EQ(manager.resolvingSymlinks("/link"), "/web");
}

} // namespace corvanta
