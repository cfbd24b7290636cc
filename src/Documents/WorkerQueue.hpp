#pragma once

#include <chrono>
#include <functional>

namespace corvanta {

/// Work for another thread than the main one, so that the main thread does not wait for the disk.
class WorkerQueue {
public:
    using Duration = std::chrono::milliseconds;
    using Work = std::function<void()>;

    WorkerQueue() = default;
    WorkerQueue(const WorkerQueue&) = delete;
    WorkerQueue& operator=(const WorkerQueue&) = delete;
    virtual ~WorkerQueue() = default;

    /// Runs `work` once on the other thread, `delay` from now or as soon as the work before it is done. It
    /// cannot be taken back; what has not begun when the queue ends is not done.
    virtual void after(Duration delay, Work work) = 0;
};

} // namespace corvanta
