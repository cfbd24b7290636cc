#include "Corvanta/SessionKeeper.hpp"

#include "Documents/ManualWorkerQueue.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class SessionKeeperTest : public testing::Test {
protected:
    void openWindow(const std::string& path) { session.windows.emplace_back().file = path; }

    /// What a process would find that starts now.
    Session kept() {
        return SessionKeeper({operations, queue, worker}, file, [] { return Session(); }).lastSession();
    }

    void pass(MainQueue::Duration duration) {
        queue.advance(duration);
        worker.advance(duration);
    }

    TemporaryFolder folder;
    const std::filesystem::path file = folder / "Sitzung.json";
    PosixFileOperations operations;
    ManualMainQueue queue;
    ManualWorkerQueue worker;
    Session session;
    SessionKeeper keeper{{operations, queue, worker}, file, [this] { return session; }};
};

TEST_F(SessionKeeperTest, KeepsWhatChangedAMomentLater) {
    openWindow("/web/a.html");
    keeper.noteChange();
    pass(999ms);
    EXPECT_EQ(kept(), Session());
    openWindow("/web/b.html");
    keeper.noteChange();
    pass(1ms);
    EXPECT_EQ(kept(), session);
    EXPECT_FALSE(kept().hasEndedWell);
}

TEST_F(SessionKeeperTest, WritesWhileChangesNeverRest) {
    for (int change = 0; change < 30; ++change) {
        openWindow("/web/" + std::to_string(change));
        keeper.noteChange();
        pass(100ms);
    }
    EXPECT_GE(kept().windows.size(), 20U);
}

TEST_F(SessionKeeperTest, DoesNotWriteTheSameAgain) {
    openWindow("/web/a.html");
    keeper.noteChange();
    pass(2s);
    std::filesystem::remove(file);
    keeper.noteChange();
    pass(2s);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(SessionKeeperTest, WritesAtTheEndAndNothingAfterIt) {
    openWindow("/web/a.html");
    keeper.noteChange();
    keeper.end();
    EXPECT_TRUE(kept().hasEndedWell);
    EXPECT_EQ(kept().windows, session.windows);

    session.windows.clear();
    keeper.noteChange();
    pass(2s);
    keeper.end();
    EXPECT_EQ(kept().windows.size(), 1U);
}

TEST_F(SessionKeeperTest, DoesNotLetTheWorkerUndoTheEnd) {
    openWindow("/web/a.html");
    keeper.noteChange();
    queue.advance(1s);
    openWindow("/web/b.html");
    keeper.end();
    worker.advance(1s);
    EXPECT_EQ(kept().windows.size(), 2U);
}

} // namespace
} // namespace corvanta
