#include "Platform/gtk/GLibMainQueue.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

TEST(GLibMainQueue, RunsAsynchronousWorkInALaterTurn) {
    GLibMainQueue queue;
    bool ran = false;
    queue.async([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(GLibMainQueue, RunsDelayedWorkOnceAndNotBeforeItsTime) {
    GLibMainQueue queue;
    int runs = 0;
    const MainQueue::Duration start = queue.now();
    MainQueue::Duration end{};
    const auto handle = queue.after(50ms, [&] {
        ++runs;
        end = queue.now();
    });
    EXPECT_TRUE(waitUntil([&] { return runs > 0; }));
    EXPECT_GE(end - start, 49ms);
    letPass(120ms);
    EXPECT_EQ(runs, 1);
}

TEST(GLibMainQueue, ForgetsDelayedWorkWhoseHandleIsGone) {
    GLibMainQueue queue;
    bool ran = false;
    queue.after(10ms, [&] { ran = true; }).reset();
    letPass(60ms);
    EXPECT_FALSE(ran);
}

TEST(GLibMainQueue, LetsWorkDropItsOwnHandle) {
    GLibMainQueue queue;
    bool ran = false;
    std::unique_ptr<MainQueue::Handle> handle;
    handle = queue.after(1ms, [&] {
        handle.reset();
        ran = true;
    });
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

} // namespace
} // namespace corvanta
