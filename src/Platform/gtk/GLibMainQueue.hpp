#pragma once

#include "Platform/MainQueue.hpp"

namespace corvanta {

/// The main queue of the GLib main loop.
class GLibMainQueue final : public MainQueue {
public:
    Duration now() const override;
    void async(Work work) override;
    std::unique_ptr<Handle> after(Duration delay, Work work) override;
};

} // namespace corvanta
