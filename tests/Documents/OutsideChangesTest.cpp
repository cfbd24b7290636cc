#include "Documents/OutsideChanges.hpp"

#include "Platform/PosixFileOperations.hpp"
#include "Platform/SafeFileWriter.hpp"
#include "Support/InterruptedFileOperations.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/TemporaryFolder.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Kind = OutsideChanges::Kind;

const std::string oldText = "<p>alt</p>\n";
const std::string newText = "<p>neu</p>\n";

class OutsideChangesTest : public testing::Test {
protected:
    OutsideChangesTest() { folder.write("seite.html", oldText); }

    /// Somebody does something to the file, the monitor tells, and time passes.
    void step(const std::function<void()>& what, MainQueue::Duration pause) {
        what();
        changes.lookSoon();
        queue.advance(pause);
    }

    void settle() { queue.advance(10s); }

    void write(const std::string& name, const std::string& content) { folder.write(name, content); }
    void rename(const std::string& from, const std::string& to) {
        std::filesystem::rename(folder / from, folder / to);
    }
    void remove(const std::string& name) { std::filesystem::remove(folder / name); }

    void expectOneChangeTo(const std::string& content) {
        settle();
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(findings.front().kind, Kind::changed);
        EXPECT_EQ(findings.front().bytes, content);
    }

    TemporaryFolder folder;
    const std::filesystem::path page = folder / "seite.html";
    PosixFileOperations real;
    InterruptedFileOperations operations{real};
    ManualMainQueue queue;
    std::vector<OutsideChanges::Finding> findings;
    OutsideChanges changes{operations, queue, page, Fingerprint::of(oldText),
                           [this](const auto& finding) { findings.push_back(finding); }};
};

TEST_F(OutsideChangesTest, SeesAFileThatWasWrittenInPlace) {
    step([&] { write("seite.html", newText); }, 0ms);
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, SeesAFileThatWasReplacedByRenaming) {
    step([&] { write("seite.html.tmp", newText); }, 10ms);
    step([&] { rename("seite.html.tmp", "seite.html"); }, 0ms);
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, SeesAFileOfWhichABackupWasMade) {
    step([&] { rename("seite.html", "seite.html~"); }, 900ms);
    step([&] { write("seite.html", ""); }, 900ms);
    step([&] { write("seite.html", newText); }, 0ms);
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, WaitsForAFileThatWasTruncatedFirst) {
    step([&] { write("seite.html", ""); }, 1'500ms);
    EXPECT_TRUE(findings.empty());
    step([&] { write("seite.html", newText); }, 0ms);
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, WaitsForAFileThatWasDeletedFirst) {
    step([&] { remove("seite.html"); }, 1'500ms);
    EXPECT_TRUE(findings.empty());
    step([&] { write("seite.html", newText); }, 0ms);
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, SeesACheckoutOnlyOnceItHasEnded) {
    for (const std::string content : {"<p>zwischen</p>\n", "<p>noch einmal</p>\n", newText.c_str()}) {
        step([&] { remove("seite.html"); }, 50ms);
        step([&] { write("seite.html", content); }, 200ms);
    }
    expectOneChangeTo(newText);
}

TEST_F(OutsideChangesTest, WaitsForAFileThatIsWrittenSlowly) {
    std::string content;
    for (int line = 0; line < 20; ++line) {
        content += "<p>Zeile</p>\n";
        step([&] { write("seite.html", content); }, 300ms);
    }
    EXPECT_TRUE(findings.empty());
    expectOneChangeTo(content);
}

TEST_F(OutsideChangesTest, SaysNothingWhenTheSameContentComesBack) {
    step([&] { remove("seite.html"); }, 1'000ms);
    step([&] { write("seite.html", ""); }, 1'000ms);
    step([&] { write("seite.html", oldText); }, 0ms);
    settle();
    EXPECT_TRUE(findings.empty());
}

TEST_F(OutsideChangesTest, SaysNothingOfTouchesAndModes) {
    step([&] { std::filesystem::last_write_time(page, std::filesystem::file_time_type::clock::now() + 1h); },
         5s);
    step([&] { ::chmod(page.c_str(), 0600); }, 5s);
    step([&] { write("kopie", oldText), rename("kopie", "seite.html"); }, 5s);
    EXPECT_TRUE(findings.empty());
}

TEST_F(OutsideChangesTest, SaysNothingOfTheOwnSaves) {
    step(
        [&] {
            ASSERT_FALSE(SafeFileWriter::write(page, newText));
            changes.setKnown(Fingerprint::of(newText));
        },
        5s);
    EXPECT_TRUE(findings.empty());
    EXPECT_FALSE(changes.lookNow());
}

TEST_F(OutsideChangesTest, ForgetsASuspicionThatTheOwnSaveOvertook) {
    step([&] { write("seite.html", "von jemand anderem"); }, 200ms);
    ASSERT_FALSE(SafeFileWriter::write(page, newText));
    changes.setKnown(Fingerprint::of(newText));
    settle();
    EXPECT_TRUE(findings.empty());
}

TEST_F(OutsideChangesTest, SeesAChangeRightAfterTheOwnSaveThatLeavesSizeAndTime) {
    // Read while it was just written: its status alone proves nothing.
    EXPECT_FALSE(changes.lookNow());
    struct stat before {};
    ASSERT_EQ(::stat(page.c_str(), &before), 0);
    write("seite.html", newText);
    const std::array<timespec, 2> times{before.st_atim, before.st_mtim};
    ::utimensat(AT_FDCWD, page.c_str(), times.data(), 0);
    ASSERT_TRUE(changes.lookNow());
    EXPECT_EQ(changes.lookNow()->bytes, newText);
}

TEST_F(OutsideChangesTest, SaysOnceThatTheFileVanished) {
    step([&] { remove("seite.html"); }, 10s);
    changes.lookSoon();
    settle();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings.front().kind, Kind::vanished);
    step([&] { write("seite.html", newText); }, 10s);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings.back().bytes, newText);
}

TEST_F(OutsideChangesTest, SaysThatAFolderTookThePlaceOfTheFile) {
    step([&] { remove("seite.html"), std::filesystem::create_directory(page); }, 10s);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings.front().kind, Kind::notAFile);
}

TEST_F(OutsideChangesTest, DoesNotHangAtAPipe) {
    remove("seite.html");
    ASSERT_EQ(::mkfifo(page.c_str(), 0600), 0);
    ASSERT_TRUE(changes.lookNow());
    EXPECT_EQ(changes.lookNow()->kind, Kind::notAFile);
}

TEST_F(OutsideChangesTest, FindsAtOnceWhatASaveWouldOverwrite) {
    write("seite.html", newText);
    ASSERT_TRUE(changes.lookNow());
    EXPECT_EQ(changes.lookNow()->bytes, newText);
    changes.setKnown(Fingerprint::of(newText));
    EXPECT_FALSE(changes.lookNow());
}

TEST_F(OutsideChangesTest, ReportsTheNextChangeAfterOneThatWasTakenNoteOf) {
    step([&] { write("seite.html", newText); }, 10s);
    changes.setKnown(Fingerprint::of(newText));
    step([&] { write("seite.html", oldText); }, 10s);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings.back().bytes, oldText);
}

TEST_F(OutsideChangesTest, DoesNotTakeAFailingDiskForAChange) {
    for (int call = 0; call < 5; ++call) {
        operations.failAt(operations.count() + call, EIO);
        step([] {}, 10s);
    }
    EXPECT_TRUE(findings.empty());
}

TEST_F(OutsideChangesTest, DoesNotReadAFileAgainThatHasLongBeenAtRest) {
    const std::array<timespec, 2> times{timespec{1'000, 0}, timespec{1'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, page.c_str(), times.data(), 0), 0);
    // Only the passing of real time makes a status trustworthy.
    struct stat status {};
    timespec now{};
    do {
        ASSERT_EQ(::stat(page.c_str(), &status), 0);
        ::clock_gettime(CLOCK_REALTIME, &now);
    } while ((now.tv_sec - status.st_ctim.tv_sec) * 1'000'000'000 + now.tv_nsec - status.st_ctim.tv_nsec <
             110'000'000);
    EXPECT_FALSE(changes.lookNow());
    const auto reads = std::ranges::count(operations.calls(), "read");
    EXPECT_GT(reads, 0);
    EXPECT_FALSE(changes.lookNow());
    EXPECT_EQ(std::ranges::count(operations.calls(), "read"), reads);
}

TEST_F(OutsideChangesTest, LooksNoMoreOnceItIsGone) {
    {
        OutsideChanges another(operations, queue, page, Fingerprint::of(newText),
                               [this](const auto& finding) { findings.push_back(finding); });
        another.lookSoon();
    }
    settle();
    EXPECT_TRUE(findings.empty());
}

} // namespace
} // namespace corvanta
