#include "EditorCore/RunList.hpp"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace corvanta {
namespace {

using Spans = std::vector<SyntaxSpan>;

constexpr TextRange everything{0, 1'000'000};

SyntaxSpan span(std::int64_t location, std::int64_t length, SyntaxToken token = SyntaxToken::tag) {
    return {{location, length}, token};
}

class RunListTest : public testing::Test {
protected:
    RunListTest() { runs.didInsert(0, 100); }

    RunList runs;
};

TEST_F(RunListTest, KeepsRunsInOrderWhateverOrderTheyComeIn) {
    runs.add(span(50, 3));
    runs.add(span(10, 4));
    runs.add(span(30, 5, SyntaxToken::string));
    EXPECT_EQ(runs.overlapping(everything),
              (Spans{span(10, 4), span(30, 5, SyntaxToken::string), span(50, 3)}));
}

TEST_F(RunListTest, MovesTheRunsBehindAnInsertion) {
    runs.add(span(10, 4));
    runs.add(span(30, 5));
    runs.didInsert(20, 7);
    EXPECT_EQ(runs.overlapping(everything), (Spans{span(10, 4), span(37, 5)}));
}

TEST_F(RunListTest, LengthensARunInsideWhichTextIsInserted) {
    runs.add(span(10, 4));
    runs.didInsert(12, 2);
    EXPECT_EQ(runs.overlapping(everything), Spans{span(10, 6)});
}

TEST_F(RunListTest, DoesNotLengthenARunAtItsEnds) {
    runs.add(span(10, 4));
    runs.didInsert(10, 1);
    runs.didInsert(15, 1);
    EXPECT_EQ(runs.overlapping(everything), Spans{span(11, 4)});
}

TEST_F(RunListTest, CutsTheRunsThatAnErasureReachesInto) {
    runs.add(span(10, 10));
    runs.add(span(22, 2));
    runs.add(span(30, 10, SyntaxToken::comment));
    runs.didErase({15, 20});
    EXPECT_EQ(runs.overlapping(everything), (Spans{span(10, 5), span(15, 5, SyntaxToken::comment)}));
}

TEST_F(RunListTest, SplitsARunThatIsClearedInItsMiddle) {
    runs.add(span(10, 10));
    runs.clear({12, 3});
    EXPECT_EQ(runs.overlapping(everything), (Spans{span(10, 2), span(15, 5)}));
}

TEST_F(RunListTest, AnswersOnlyWhatOverlaps) {
    for (std::int64_t location = 0; location < 90; location += 10)
        runs.add(span(location, 5));
    runs.didInsert(42, 0);
    EXPECT_EQ(runs.overlapping({15, 26}), (Spans{span(20, 5), span(30, 5), span(40, 5)}));
}

class RunListAgainstUnits : public testing::TestWithParam<unsigned> {};

TEST_P(RunListAgainstUnits, AgreesWithAListOfColouredUnits) {
    std::mt19937 random(GetParam());
    const auto below = [&](std::size_t limit) { return static_cast<std::int64_t>(random() % limit); };
    RunList runs;
    // The number of the run that each unit belongs to, 0 for none.
    std::vector<int> units(60, 0);
    runs.didInsert(0, 60);
    int next = 1;
    std::vector<SyntaxToken> tokens{SyntaxToken::tag};
    // What is left of a run behind a part that was taken out of it is a run of its own.
    const auto separate = [&](std::int64_t end) {
        if (end >= static_cast<std::int64_t>(units.size()) || units[static_cast<std::size_t>(end)] == 0)
            return;
        const int whole = units[static_cast<std::size_t>(end)];
        tokens.push_back(tokens[static_cast<std::size_t>(whole)]);
        const int rest = next++;
        for (auto unit = units.begin() + end; unit != units.end() && *unit == whole; ++unit)
            *unit = rest;
    };

    for (int step = 0; step < 300; ++step) {
        const std::int64_t location = below(units.size());
        const std::int64_t length =
            1 + below(std::min<std::size_t>(units.size() - static_cast<std::size_t>(location), 10));
        const auto at = units.begin() + location;
        switch (random() % 4) {
        case 0: {
            const bool inside = location > 0 && *at != 0 && *(at - 1) == *at;
            units.insert(at, static_cast<std::size_t>(length), inside ? *at : 0);
            runs.didInsert(location, length);
            break;
        }
        case 1:
            if (units.size() > 30) {
                units.erase(at, at + length);
                runs.didErase({location, length});
            }
            break;
        case 2:
            separate(location + length);
            std::fill_n(at, length, 0);
            runs.clear({location, length});
            break;
        default:
            separate(location + length);
            tokens.push_back(static_cast<SyntaxToken>(random() % 6));
            std::fill_n(at, length, next++);
            runs.clear({location, length});
            runs.add(span(location, length, tokens.back()));
        }

        std::vector<int> shown(units.size(), 0);
        for (const SyntaxSpan& run : runs.overlapping({0, static_cast<std::int64_t>(units.size())}))
            for (std::int64_t unit = run.range.location; unit < run.range.end(); ++unit)
                shown[static_cast<std::size_t>(unit)] = static_cast<int>(run.token) + 1;
        std::vector<int> meant;
        for (const int unit : units)
            meant.push_back(unit == 0 ? 0 : static_cast<int>(tokens[static_cast<std::size_t>(unit)]) + 1);
        ASSERT_EQ(shown, meant) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RunListAgainstUnits, testing::Range(1U, 41U));

} // namespace
} // namespace corvanta
