#pragma once

#include "Documents/WorkerQueue.hpp"

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace corvanta {

/// One thread that does its work piece by piece. Started with the first piece.
class WorkerThread final : public WorkerQueue {
public:
    WorkerThread() = default;

    void after(Duration delay, Work work) override;

private:
    using Clock = std::chrono::steady_clock;

    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::multimap<Clock::time_point, Work> pending_;
    /// The last member: it ends before what it uses.
    std::jthread thread_;
};

} // namespace corvanta
