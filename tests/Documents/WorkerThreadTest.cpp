#include "Documents/WorkerThread.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

TEST(WorkerThreadTest, WorksOnAnotherThread) {
    WorkerThread worker;
    std::promise<std::thread::id> done;
    worker.after(0ms, [&] { done.set_value(std::this_thread::get_id()); });
    EXPECT_NE(done.get_future().get(), std::this_thread::get_id());
}

TEST(WorkerThreadTest, WorksInTheOrderOfTheTimesAndNotTooEarly) {
    WorkerThread worker;
    std::vector<int> order;
    std::promise<void> done;
    const auto start = std::chrono::steady_clock::now();
    worker.after(40ms, [&] {
        order.push_back(3);
        done.set_value();
    });
    worker.after(20ms, [&] { order.push_back(2); });
    worker.after(0ms, [&] { order.push_back(1); });
    done.get_future().wait();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 40ms);
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST(WorkerThreadTest, EndsWithoutDoingWhatIsNotDue) {
    bool done = false;
    {
        WorkerThread worker;
        worker.after(1h, [&] { done = true; });
    }
    EXPECT_FALSE(done);
}

TEST(WorkerThreadTest, TakesWorkFromItsOwnWork) {
    WorkerThread worker;
    std::promise<void> done;
    worker.after(0ms, [&] { worker.after(0ms, [&] { done.set_value(); }); });
    done.get_future().wait();
}

} // namespace
} // namespace corvanta
