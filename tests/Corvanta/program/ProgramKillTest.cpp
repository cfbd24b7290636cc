// The whole program, typed into by real keys and killed at random moments. What was on the screen must come
// back.

#include "Documents/WaitingJournal.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "ScreenTypist.hpp"
#include "StartedProgram.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

const std::string pageText = "<html>\n<body>\n\t<p>1234567890</p>\n</body>\n</html>\n";

/// What was inserted into `base`, in one place, to give `text`.
std::string inserted(const std::string& base, const std::string& text) {
    const auto [before, ignored] = std::ranges::mismatch(base, text);
    const auto place = before - base.begin();
    const std::string addition = text.substr(static_cast<std::size_t>(place), text.size() - base.size());
    std::string again = base;
    again.insert(static_cast<std::size_t>(place), addition);
    return again == text ? addition : "(not inserted in one place)";
}

class ProgramKillTest : public testing::Test {
protected:
    struct Life {
        /// How many letters were seen.
        std::size_t shown = 0;
        std::string typed;
    };

    /// Starts the program, types and kills it at a random moment.
    Life liveAndDie(const std::filesystem::path& state, const std::vector<std::string>& arguments) {
        ScreenTypist typist;
        StartedProgram program(state, arguments);
        EXPECT_TRUE(typist.clickIntoTheText());
        const auto life = std::chrono::milliseconds(random() % 1'500);
        Life result;
        result.shown = typist.typeUntil(ScreenTypist::Clock::now() + life);
        EXPECT_EQ(program.end(SIGKILL), 128 + SIGKILL) << "the kill did not hit";
        result.typed = typist.typed();
        return result;
    }

    /// The letters that come back at the next start.
    std::string comesBack(const std::filesystem::path& state, const std::string& base) {
        auto waiting = WaitingJournal::allIn(operations, state / "Corvanta" / "Journale");
        if (waiting.empty())
            return "";
        EXPECT_EQ(waiting.size(), 1U);
        return inserted(base, waiting.front().read().text.value_or(base));
    }

    PosixFileOperations operations;
    std::mt19937 random{1};
};

TEST_F(ProgramKillTest, LosesNoLetterThatWasOnTheScreen) {
    const int cycles = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 6 : 1'000;
    const TemporaryFolder web;
    web.write("seite.html", pageText);
    std::size_t shownInAll = 0;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        SCOPED_TRACE(cycle);
        const TemporaryFolder state;
        const bool isTitled = cycle % 2 == 0;
        const Life life =
            isTitled ? liveAndDie(state.path(), {web / "seite.html"}) : liveAndDie(state.path(), {});
        shownInAll += life.shown;

        const std::string back =
            comesBack(state.path(), isTitled ? pageText : std::string(DocumentTemplate::newHTML));
        EXPECT_GE(back.size(), life.shown);
        EXPECT_TRUE(life.typed.starts_with(back)) << "typed: " << life.typed << " came back: " << back;
    }
    EXPECT_GT(shownInAll, static_cast<std::size_t>(cycles));
    RecordProperty("lettersShown", static_cast<int>(shownInAll));
}

} // namespace
} // namespace corvanta
