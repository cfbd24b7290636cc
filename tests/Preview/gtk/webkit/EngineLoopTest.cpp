#include "Preview/gtk/webkit/EngineLoop.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class EngineLoopTest : public testing::Test {
protected:
    /// Attaches `source`, which runs `action` as long as that gives true.
    void attach(GSource* source, std::function<bool()> action) {
        auto kept = std::make_unique<std::function<bool()>>(std::move(action));
        g_source_set_callback(
            source, +[](gpointer data) -> gboolean { return (*static_cast<std::function<bool()>*>(data))(); },
            kept.release(), +[](gpointer data) { delete static_cast<std::function<bool()>*>(data); });
        g_source_attach(source, loop.context());
        g_source_unref(source);
    }

    void note(const std::string& word) { said.push_back(word); }

    std::function<bool()> saying(const std::string& word) {
        return [this, word] {
            note(word);
            return false;
        };
    }

    /// Runs the program's loop until that many words were said.
    testing::AssertionResult runUntilSaid(std::size_t words) {
        const auto end = std::chrono::steady_clock::now() + 10s;
        while (said.size() < words) {
            if (std::chrono::steady_clock::now() > end)
                return testing::AssertionFailure() << said.size() << " of " << words << " words";
            if (g_main_context_iteration(nullptr, FALSE) == FALSE)
                std::this_thread::sleep_for(1ms);
        }
        return testing::AssertionSuccess();
    }

    /// How often the program's loop turns in `duration` when it waits for work as it always does.
    static int turnsIn(std::chrono::milliseconds duration) {
        bool isOver = false;
        g_timeout_add(
            static_cast<guint>(duration.count()),
            +[](gpointer over) -> gboolean {
                *static_cast<bool*>(over) = true;
                return G_SOURCE_REMOVE;
            },
            &isOver);
        int turns = 0;
        for (; !isOver; ++turns)
            g_main_context_iteration(nullptr, TRUE);
        return turns;
    }

    EngineLoop loop;
    std::vector<std::string> said;
};

TEST_F(EngineLoopTest, RunsWhatIsAddedToIt) {
    attach(g_idle_source_new(), saying("ein Wort"));
    EXPECT_TRUE(runUntilSaid(1));
}

TEST_F(EngineLoopTest, RunsATimerWhenItIsDueAndNotBefore) {
    const auto begin = std::chrono::steady_clock::now();
    attach(g_timeout_source_new(60), saying("fällig"));
    EXPECT_TRUE(runUntilSaid(1));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 59ms);
}

TEST_F(EngineLoopTest, WakesForATimerThatWasAtRest) {
    GSource* timer = g_source_ref(g_timeout_source_new(1000));
    attach(timer, saying("geweckt"));
    g_source_set_ready_time(timer, -1);
    turnsIn(20ms);
    EXPECT_TRUE(said.empty());
    g_source_set_ready_time(timer, 0);
    EXPECT_TRUE(runUntilSaid(1));
    g_source_unref(timer);
}

TEST_F(EngineLoopTest, HearsOtherThreads) {
    std::thread other([this] {
        std::this_thread::sleep_for(20ms);
        attach(g_idle_source_new(), saying("von drüben"));
    });
    EXPECT_TRUE(runUntilSaid(1));
    other.join();
}

TEST_F(EngineLoopTest, RunsWhatASourceOfItsOwnAdds) {
    attach(g_idle_source_new(), [this] {
        note("außen");
        attach(g_idle_source_new(), saying("innen"));
        return false;
    });
    EXPECT_TRUE(runUntilSaid(2));
}

TEST_F(EngineLoopTest, WaitsForDescriptors) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    GSource* source = g_source_ref(g_timeout_source_new(1000));
    g_source_add_unix_fd(source, ends[0], G_IO_IN);
    attach(source, [this, &ends] {
        char letter = 0;
        if (read(ends[0], &letter, 1) == 1)
            note(std::string(1, letter));
        return true;
    });
    turnsIn(20ms);
    EXPECT_TRUE(said.empty());
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_TRUE(runUntilSaid(1));
    EXPECT_EQ(said, std::vector<std::string>{"x"});
    g_source_destroy(source);
    g_source_unref(source);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(EngineLoopTest, LetsTheProgramHaveItsTurns) {
    attach(g_idle_source_new(), [] { return true; });
    int own = 0;
    g_idle_add_full(
        G_PRIORITY_DEFAULT, +[](gpointer count) -> gboolean { return ++*static_cast<int*>(count) < 100; },
        &own, nullptr);
    for (int turn = 0; turn < 300; ++turn)
        g_main_context_iteration(nullptr, FALSE);
    EXPECT_EQ(own, 100);
}

TEST_F(EngineLoopTest, RestsWhenNothingIsDue) {
    for (int i = 0; i < 500; ++i)
        attach(g_timeout_source_new(3'600'000), saying("nie"));
    turnsIn(20ms);
    EXPECT_LT(turnsIn(100ms), 5);
}

TEST_F(EngineLoopTest, IsNotRunAnyMoreOnceItIsGone) {
    {
        EngineLoop other;
        GSource* source = g_idle_source_new();
        g_source_set_callback(
            source,
            +[](gpointer words) -> gboolean {
                static_cast<std::vector<std::string>*>(words)->emplace_back("zu spät");
                return G_SOURCE_REMOVE;
            },
            &said, nullptr);
        g_source_attach(source, other.context());
        g_source_unref(source);
    }
    turnsIn(20ms);
    EXPECT_TRUE(said.empty());
}

} // namespace
} // namespace corvanta
