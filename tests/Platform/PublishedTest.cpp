#include "Platform/Published.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta {
namespace {

TEST(Published, StartsWithTheGivenValue) {
    const Published<int> number(7);
    const Published<std::string> text;
    EXPECT_EQ(*number, 7);
    EXPECT_TRUE(text->empty());
}

TEST(Published, StoresBeforeItTells) {
    Published<int> number(1);
    int seenInside = 0;
    const Subscription subscription = number.subscribe([&](int) { seenInside = *number; });
    number = 2;
    EXPECT_EQ(seenInside, 2);
}

TEST(Published, TellsOfAnAssignmentThatChangesNothing) {
    Published<int> number(1);
    int calls = 0;
    const Subscription subscription = number.subscribe([&](int) { ++calls; });
    number = 1;
    number = 1;
    EXPECT_EQ(calls, 2);
}

TEST(Published, DoesNotTellOfTheValueThatWasThereBefore) {
    Published<int> number(1);
    int calls = 0;
    const Subscription subscription = number.subscribe([&](int) { ++calls; });
    EXPECT_EQ(calls, 0);
}

TEST(Published, TellsOnceOfAChangeInPlace) {
    Published<std::vector<int>> numbers;
    std::vector<std::size_t> sizes;
    const Subscription subscription =
        numbers.subscribe([&](const std::vector<int>& now) { sizes.push_back(now.size()); });
    numbers.modify([](std::vector<int>& value) {
        value.push_back(1);
        value.push_back(2);
    });
    EXPECT_EQ(sizes, std::vector<std::size_t>{2});
}

TEST(Published, StopsTellingWhenTheSubscriptionIsGone) {
    Published<int> number(1);
    int calls = 0;
    {
        const Subscription subscription = number.subscribe([&](int) { ++calls; });
        number = 2;
    }
    number = 3;
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(*number, 3);
}

TEST(Published, MayBeAssignedByItsObserver) {
    Published<int> number(0);
    std::vector<int> seen;
    const Subscription subscription = number.subscribe([&](int value) {
        seen.push_back(value);
        if (value < 3)
            number = value + 1;
    });
    number = 1;
    EXPECT_EQ(*number, 3);
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3}));
}

TEST(Published, SurvivesAnObserverThatLeavesWhileItIsTold) {
    Published<int> number(0);
    Subscription leaving;
    int leavingCalls = 0;
    int stayingCalls = 0;
    leaving = number.subscribe([&](int) {
        ++leavingCalls;
        leaving = Subscription();
    });
    const Subscription staying = number.subscribe([&](int) { ++stayingCalls; });
    number = 1;
    number = 2;
    EXPECT_EQ(leavingCalls, 1);
    EXPECT_EQ(stayingCalls, 2);
}

} // namespace
} // namespace corvanta
