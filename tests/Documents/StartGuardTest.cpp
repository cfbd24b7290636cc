#include "Documents/StartGuard.hpp"

#include "Platform/PosixFileOperations.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <chrono>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class StartGuardTest : public testing::Test {
protected:
    /// A start that is killed after `life`; returns whether it was cautious.
    bool start(MainQueue::Duration life) {
        ManualMainQueue queue;
        const StartGuard guard(operations, queue, folder / "start");
        queue.advance(life);
        return guard.isCautious();
    }

    TemporaryFolder folder;
    PosixFileOperations operations;
};

TEST_F(StartGuardTest, IsCautiousAfterTwoStartsThatDiedYoung) {
    EXPECT_FALSE(start(100ms));
    EXPECT_FALSE(start(4'999ms));
    EXPECT_TRUE(start(100ms));
    EXPECT_TRUE(start(6s));
    EXPECT_FALSE(start(6s));
}

TEST_F(StartGuardTest, DoesNotCountAStartThatLived) {
    for (int times = 0; times < 3; ++times) {
        EXPECT_FALSE(start(100ms));
        EXPECT_FALSE(start(5s));
    }
}

TEST_F(StartGuardTest, DoesNotCountAShortLifeThatEndedWell) {
    for (int times = 0; times < 5; ++times) {
        ManualMainQueue queue;
        StartGuard guard(operations, queue, folder / "start");
        EXPECT_FALSE(guard.isCautious());
        guard.endWell();
    }
}

TEST_F(StartGuardTest, StaysCautiousHoweverManyStartsDie) {
    for (int times = 0; times < 20; ++times)
        EXPECT_EQ(start(1ms), times >= 2);
}

TEST_F(StartGuardTest, IsNotCautiousForLackOfAReadableCount) {
    folder.write("start", "viele");
    EXPECT_FALSE(start(1ms));
    ManualMainQueue queue;
    const StartGuard guard(operations, queue, folder / "fehlt" / "start");
    EXPECT_FALSE(guard.isCautious());
}

} // namespace
} // namespace corvanta
