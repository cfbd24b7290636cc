#pragma once

#include "Platform/MainQueue.hpp"

#include <algorithm>
#include <map>
#include <utility>

namespace corvanta {

/// A main queue whose time is advanced by hand.
class ManualMainQueue final : public MainQueue {
public:
    Duration now() const override { return now_; }

    void async(Work work) override { enqueue(Duration::zero(), std::move(work)); }

    std::unique_ptr<Handle> after(Duration delay, Work work) override {
        return std::make_unique<Entry>(*this, enqueue(delay, std::move(work)));
    }

    /// Lets `duration` pass: runs what becomes due, in the order of its time, also what is queued meanwhile.
    void advance(Duration duration) {
        const Duration end = now_ + duration;
        while (!pending_.empty() && pending_.begin()->first.first <= end) {
            auto due = pending_.extract(pending_.begin());
            now_ = std::max(now_, due.key().first);
            due.mapped()();
        }
        now_ = end;
    }

    /// Runs what is due now.
    void runPending() { advance(Duration::zero()); }

    std::size_t pendingCount() const { return pending_.size(); }

private:
    /// Due time, then the order of queueing.
    using Key = std::pair<Duration, int>;

    class Entry final : public Handle {
    public:
        Entry(ManualMainQueue& queue, Key key) : queue_(queue), key_(std::move(key)) {}
        ~Entry() override { queue_.pending_.erase(key_); }

    private:
        ManualMainQueue& queue_;
        Key key_;
    };

    Key enqueue(Duration delay, Work work) {
        const Key key{now_ + delay, next_++};
        pending_.emplace(key, std::move(work));
        return key;
    }

    Duration now_{};
    int next_ = 0;
    std::map<Key, Work> pending_;
};

} // namespace corvanta
