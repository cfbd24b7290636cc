#include "Documents/SessionFile.hpp"

#include "Platform/PosixFileOperations.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace corvanta {
namespace {

class SessionFileTest : public testing::Test {
protected:
    Session read() { return SessionFile::read(operations, path); }

    TemporaryFolder folder;
    const std::filesystem::path path = folder / "sitzung.json";
    PosixFileOperations operations;
};

TEST_F(SessionFileTest, GivesBackWhatWasKept) {
    Session session;
    session.windows.push_back(
        {"/web/Grüße \"1\".html", std::nullopt, 17, 3, 4, false, true, 1'200, 800, true, 700});
    session.windows.push_back({std::nullopt, "00ff", 0, 0, 0, true, false, 640, 480, false, 0});
    session.hasEndedWell = true;
    EXPECT_FALSE(SessionFile::write(operations, path, session));
    EXPECT_EQ(read(), session);
}

TEST_F(SessionFileTest, IsEmptyWithoutAFile) {
    EXPECT_EQ(read(), Session());
}

TEST_F(SessionFileTest, SetsAsideWhatIsNoJson) {
    folder.write("sitzung.json", "{\"windows\": [");
    EXPECT_EQ(read(), Session());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(std::filesystem::exists(folder / "sitzung.json.beschädigt"));
}

TEST_F(SessionFileTest, TakesFromStrangeJsonWhatFits) {
    for (const char* strange : {"[]", "3", "null", "{}", R"({"windows": 3})", R"({"windows": [1, null]})"}) {
        folder.write("sitzung.json", strange);
        EXPECT_EQ(read(), Session()) << strange;
    }
    folder.write("sitzung.json", R"({"windows": [{"file": 1, "caret": "x", "showsPreview": 0, "width": 5.5,
                                 "journal": [], "firstLine": "x", "height": 7}]})");
    Session session;
    session.windows.emplace_back().height = 7;
    EXPECT_EQ(read(), session);
}

TEST_F(SessionFileTest, LeavesOutAFileWhoseNameIsNoUtf8) {
    Session session;
    session.windows.emplace_back().file = "/web/\xff.html";
    session.windows.emplace_back().file = "/web/b.html";
    EXPECT_FALSE(SessionFile::write(operations, path, session));
    ASSERT_EQ(read().windows.size(), 1U);
    EXPECT_EQ(read().windows.front().file, "/web/b.html");
}

} // namespace
} // namespace corvanta
