#include "Preview/gtk/PreviewEngine.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace corvanta {
namespace {

std::optional<PreviewEngine::Outcome> outcomeOf(PreviewEngine& engine) {
    std::optional<PreviewEngine::Outcome> result;
    const Subscription known =
        engine.whenKnown([&](const PreviewEngine::Outcome& outcome) { result = outcome; });
    waitUntil([&] { return result.has_value(); });
    return result;
}

TEST(PreviewEngineTest, LoadsTheEngineThatLiesBesideTheProgram) {
    PreviewEngine engine;
    const auto outcome = outcomeOf(engine);
    ASSERT_TRUE(outcome);
    EXPECT_NE(outcome->engine, nullptr);
}

TEST(PreviewEngineTest, AnswersAtOnceAndWithTheSameEngineOnceItIsLoaded) {
    PreviewEngine engine;
    const auto first = outcomeOf(engine);
    ASSERT_TRUE(first);
    const WebEngine* again = nullptr;
    const Subscription known =
        engine.whenKnown([&](const PreviewEngine::Outcome& outcome) { again = outcome.engine; });
    EXPECT_EQ(again, first->engine);
}

TEST(PreviewEngineTest, AnswersEveryoneWhoAskedWhileItWasBeingLoaded) {
    PreviewEngine engine;
    int answers = 0;
    const auto count = [&](const PreviewEngine::Outcome&) { ++answers; };
    const Subscription first = engine.whenKnown(count);
    const Subscription second = engine.whenKnown(count);
    EXPECT_TRUE(waitUntil([&] { return answers == 2; }));
}

TEST(PreviewEngineTest, KeepsNobodyWaitingWhileItIsBeingLoaded) {
    PreviewEngine engine;
    bool isKnown = false;
    const Subscription known = engine.whenKnown([&](const PreviewEngine::Outcome&) { isKnown = true; });
    EXPECT_FALSE(isKnown);
    EXPECT_TRUE(waitUntil([&] { return isKnown; }));
}

TEST(PreviewEngineTest, SaysWhenThereIsNoEngineToLoad) {
    PreviewEngine engine("/gibt/es/nicht.so");
    const auto outcome = outcomeOf(engine);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->engine, nullptr);
    EXPECT_FALSE(outcome->isSandboxMissing);
}

TEST(PreviewEngineTest, SaysTheSameOfALibraryThatIsAnother) {
    PreviewEngine engine("libm.so.6");
    const auto outcome = outcomeOf(engine);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->engine, nullptr);
}

TEST(PreviewEngineTest, MayGoWhileItIsBeingLoaded) {
    int answers = 0;
    {
        PreviewEngine engine;
        const Subscription known = engine.whenKnown([&](const PreviewEngine::Outcome&) { ++answers; });
    }
    // Another one's answer comes after that of the first would have come.
    PreviewEngine later;
    ASSERT_TRUE(outcomeOf(later));
    EXPECT_EQ(answers, 0);
}

} // namespace
} // namespace corvanta
