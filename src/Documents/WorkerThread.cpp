#include "Documents/WorkerThread.hpp"

#include <utility>

namespace corvanta {

void WorkerThread::after(Duration delay, Work work) {
    const Clock::time_point due = Clock::now() + delay;
    {
        const std::lock_guard lock(mutex_);
        const bool isNext = pending_.empty() || due < pending_.begin()->first;
        pending_.emplace(due, std::move(work));
        if (!thread_.joinable())
            thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
        if (!isNext)
            return;
    }
    // Not while the mutex is held, or the thread would wake up only to wait for it.
    changed_.notify_all();
}

void WorkerThread::run(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (!stop.stop_requested()) {
        if (pending_.empty()) {
            changed_.wait(lock, stop, [this] { return !pending_.empty(); });
            continue;
        }
        const Clock::time_point due = pending_.begin()->first;
        if (due > Clock::now()) {
            // Wakes up for earlier work, too.
            changed_.wait_until(lock, stop, due, [&] { return pending_.begin()->first < due; });
            continue;
        }
        const auto first = pending_.extract(pending_.begin());
        lock.unlock();
        first.mapped()();
        lock.lock();
    }
}

} // namespace corvanta
