#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace corvanta {

/// The main thread's queue: time and deferred work as something handed in, so that a delay is an exact test
/// that takes no time. Used on the main thread only.
class MainQueue {
public:
    using Duration = std::chrono::milliseconds;
    using Work = std::function<void()>;

    /// Deferred work that has not run yet. Destroying the handle cancels it.
    class Handle {
    public:
        Handle() = default;
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        virtual ~Handle() = default;
    };

    MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    virtual ~MainQueue() = default;

    /// Time since an arbitrary start; never goes back.
    virtual Duration now() const = 0;

    /// Runs `work` once, in a later turn of the main loop. It cannot be taken back.
    virtual void async(Work work) = 0;

    /// Runs `work` once, `delay` from now, unless the handle is destroyed before.
    [[nodiscard]] virtual std::unique_ptr<Handle> after(Duration delay, Work work) = 0;
};

} // namespace corvanta
