#include "Preview/SharedMimeInfo.hpp"

#include "Support/InMemoryFileManager.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace corvanta {

namespace {

const std::vector<std::filesystem::path> folders{"/own", "/shared"};

} // namespace

TEST(SharedMimeInfo, FindsTheTypeOfAnExtension) {
    InMemoryFileManager files;
    files.files["/shared/mime/globs2"] = "# a comment\n50:audio/flac:*.flac\n50:application/gzip:*.gz\n";
    const SharedMimeInfo info(files, folders);
    EXPECT_EQ(info.mimeType("flac"), "audio/flac");
    EXPECT_EQ(info.mimeType("gz"), "application/gzip");
    EXPECT_EQ(info.mimeType("unbekannt"), std::nullopt);
    EXPECT_EQ(info.mimeType(""), std::nullopt);
}

TEST(SharedMimeInfo, KnowsNothingWhereNothingIsInstalled) {
    const InMemoryFileManager files;
    EXPECT_EQ(SharedMimeInfo(files, folders).mimeType("flac"), std::nullopt);
    EXPECT_EQ(SharedMimeInfo(files, {}).mimeType("flac"), std::nullopt);
}

TEST(SharedMimeInfo, ReadsAtTheFirstQuestionAndOnlyThen) {
    InMemoryFileManager files;
    const SharedMimeInfo info(files, folders);
    files.files["/shared/mime/globs2"] = "50:audio/flac:*.flac\n";
    EXPECT_EQ(info.mimeType("flac"), "audio/flac");
    files.files.clear();
    EXPECT_EQ(info.mimeType("flac"), "audio/flac");
}

TEST(SharedMimeInfo, PrefersTheGreaterWeight) {
    InMemoryFileManager files;
    files.files["/shared/mime/globs2"] = "50:a/light:*.x\n80:a/heavy:*.x\n60:a/medium:*.x\n";
    EXPECT_EQ(SharedMimeInfo(files, folders).mimeType("x"), "a/heavy");
}

TEST(SharedMimeInfo, PrefersTheUsersOwnFolderAmongEqualWeights) {
    InMemoryFileManager files;
    files.files["/own/mime/globs2"] = "50:own/type:*.x\n";
    files.files["/shared/mime/globs2"] = "50:shared/type:*.x\n50:shared/type:*.y\n";
    const SharedMimeInfo info(files, folders);
    EXPECT_EQ(info.mimeType("x"), "own/type");
    EXPECT_EQ(info.mimeType("y"), "shared/type");
}

TEST(SharedMimeInfo, LetsAFolderTakeBackAllPatternsOfATypeInLessImportantOnes) {
    InMemoryFileManager files;
    files.files["/own/mime/globs2"] = "0:text/x:__NOGLOBS__\n50:text/x:*.neu\n";
    files.files["/shared/mime/globs2"] = "50:text/x:*.alt\n40:text/y:*.alt\n";
    const SharedMimeInfo info(files, folders);
    EXPECT_EQ(info.mimeType("alt"), "text/y");
    EXPECT_EQ(info.mimeType("neu"), "text/x");
}

TEST(SharedMimeInfo, ReadsPatternsInAnyCaseUnlessTheyMindIt) {
    InMemoryFileManager files;
    files.files["/shared/mime/globs2"] = "50:text/x-c++src:*.C:cs\n40:text/x-csrc:*.c\n50:image/x-up:*.UP\n";
    const SharedMimeInfo info(files, folders);
    EXPECT_EQ(info.mimeType("c"), "text/x-csrc");
    EXPECT_EQ(info.mimeType("up"), "image/x-up");
}

TEST(SharedMimeInfo, PassesOverPatternsThatAreNoExtensionAndLinesThatAreNone) {
    InMemoryFileManager files;
    files.files["/shared/mime/globs2"] = "50:text/x-makefile:makefile\n50:a/b:*.so.[0-9]*\n50:a/b:*,v\n"
                                         "50:a/b:*.\n50\nx:a/b:*.bad\n:a/b:*.bad\n\n50:a/b\n50:a/good:*.good";
    const SharedMimeInfo info(files, folders);
    EXPECT_EQ(info.mimeType("bad"), std::nullopt);
    EXPECT_EQ(info.mimeType("so"), std::nullopt);
    EXPECT_EQ(info.mimeType("makefile"), std::nullopt);
    EXPECT_EQ(info.mimeType(""), std::nullopt);
    EXPECT_EQ(info.mimeType("good"), "a/good");
}

TEST(SharedMimeInfo, LooksWhereTheEnvironmentSays) {
    ::setenv("XDG_DATA_HOME", "/zuhause/daten", 1);
    ::setenv("XDG_DATA_DIRS", "/eins:nicht/absolut::/zwei", 1);
    const std::vector<std::filesystem::path> named{"/zuhause/daten", "/eins", "/zwei"};
    EXPECT_EQ(SharedMimeInfo::environmentDataFolders(), named);

    ::unsetenv("XDG_DATA_HOME");
    ::setenv("XDG_DATA_DIRS", "", 1);
    ::setenv("HOME", "/zuhause", 1);
    const std::vector<std::filesystem::path> usual{"/zuhause/.local/share", "/usr/local/share", "/usr/share"};
    EXPECT_EQ(SharedMimeInfo::environmentDataFolders(), usual);
}

} // namespace corvanta
