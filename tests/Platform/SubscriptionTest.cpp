#include "Platform/Subscription.hpp"

#include <gtest/gtest.h>
#include <sigc++/signal.h>

#include <memory>
#include <optional>
#include <utility>

namespace corvanta {
namespace {

struct CountedSignal {
    Subscription subscribe() {
        return Subscription(signal.connect([this] { ++calls; }));
    }

    sigc::signal<void()> signal;
    int calls = 0;
};

TEST(Subscription, LastsAsLongAsTheObject) {
    CountedSignal counted;
    {
        const Subscription subscription = counted.subscribe();
        counted.signal.emit();
    }
    counted.signal.emit();
    EXPECT_EQ(counted.calls, 1);
}

TEST(Subscription, MovesWithoutADisconnect) {
    CountedSignal counted;
    std::optional<Subscription> first(counted.subscribe());
    const Subscription second(std::move(*first));
    first.reset();
    counted.signal.emit();
    EXPECT_EQ(counted.calls, 1);
}

TEST(Subscription, EndsTheOldConnectionWhenAnotherIsAssigned) {
    CountedSignal before;
    CountedSignal after;
    Subscription subscription = before.subscribe();
    subscription = after.subscribe();
    before.signal.emit();
    after.signal.emit();
    EXPECT_EQ(before.calls, 0);
    EXPECT_EQ(after.calls, 1);
}

TEST(Subscription, EndsWhenAnEmptyOneIsAssigned) {
    CountedSignal counted;
    Subscription subscription = counted.subscribe();
    subscription = Subscription();
    counted.signal.emit();
    EXPECT_EQ(counted.calls, 0);
}

TEST(Subscription, OutlivesItsSignal) {
    auto counted = std::make_unique<CountedSignal>();
    const Subscription subscription = counted->subscribe();
    counted.reset();
}

} // namespace
} // namespace corvanta
