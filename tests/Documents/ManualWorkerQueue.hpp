#pragma once

#include "Documents/WorkerQueue.hpp"

#include <algorithm>
#include <map>
#include <utility>

namespace corvanta {

/// A worker that works in the test's thread, when the test lets time pass.
class ManualWorkerQueue final : public WorkerQueue {
public:
    void after(Duration delay, Work work) override { pending_.emplace(now_ + delay, std::move(work)); }

    void advance(Duration duration) {
        const Duration end = now_ + duration;
        while (!pending_.empty() && pending_.begin()->first <= end) {
            auto due = pending_.extract(pending_.begin());
            now_ = std::max(now_, due.key());
            due.mapped()();
        }
        now_ = end;
    }

    std::size_t pendingCount() const { return pending_.size(); }

private:
    Duration now_{};
    std::multimap<Duration, Work> pending_;
};

} // namespace corvanta
